"""The table of figures: each row is printed when it is known, and all of them at the end as
docs/numbers.md shows them."""
import statistics


class Table:
    """What was measured, what it is held against, the ratio, and the goal for the ratio."""

    def __init__(self):
        self._rows, self.met = [], True

    def add(self, figure, measured, against="", ratio="", goal="", met=True):
        """A row of texts; `met` is False where the goal is missed."""
        self.met = self.met and met
        row = (figure, measured, against, ratio, goal if met else f"{goal}, **not met**")
        self._rows.append(row)
        print(" | ".join(text for text in row if text), flush=True)

    def compare(self, figure, measured, base, against, goal=None, unit="ms"):
        """A row with the ratio of two medians, which may be at most `goal`. `against` says what the
        second one is."""
        ours, other = statistics.median(measured), statistics.median(base)
        ratio = ours / other
        self.add(figure, f"{ours:.1f} {unit}", f"{other:.1f} {unit}, {against}", f"{ratio:.2f}",
                 f"at most {goal:g}" if goal else "", goal is None or ratio <= goal)

    def limit(self, figure, measured, most, against, unit="ms"):
        """A row with the ratio of a figure to the most that it may be."""
        self.add(figure, f"{measured:.1f} {unit}", f"{most:.1f} {unit}, {against}",
                 f"{measured / most:.2f}", "at most 1", measured <= most)

    def finish(self):
        """Prints the whole; the exit status that says whether all goals were met."""
        print("\n| figure | Kestrel | held against | ratio | goal |\n|---|---|---|---|---|")
        for row in self._rows:
            print("| " + " | ".join(row) + " |")
        print("\nall goals met" if self.met else "\nnot all goals met")
        return 0 if self.met else 1
