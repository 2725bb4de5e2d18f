"""The whole journey (journey.py) in each way of working."""
from hands import AccessibleHands, KeyboardHands, PointerHands
from journey import Journey


class PointerJourney(Journey):
    hands_class = PointerHands

    def test_journey_by_pointer_from_first_start_to_restart(self):
        self.start_desktop(panel="fake", panel_options=("--bar=dock",))
        self.travel()


class KeyboardJourney(Journey):
    hands_class = KeyboardHands
    has_cloud = True

    def test_journey_by_keyboard_alone_from_first_start_to_restart(self):
        self.start_desktop(panel="fake")
        self.travel()


class AccessibleJourney(Journey):
    hands_class = AccessibleHands
    has_cloud = True

    def test_journey_through_the_accessible_tree_alone_from_first_start_to_restart(self):
        self.start_desktop(panel="fake")
        self.travel()
