"""The whole journey (journey.py) in each way of working, and in another language."""
from harness.accessibility_driver import AccessibilityDriver
from harness.journey import Journey
from harness.keyboard_driver import KeyboardDriver
from harness.pointer_driver import PointerDriver
from harness.translations import translations


class PointerJourney(Journey):
    driver_class = PointerDriver

    def test_journey_by_pointer_from_first_start_to_restart(self):
        self.start_desktop(panel="fake", panel_options=("--bar=dock",))
        self.run_journey()


class KeyboardJourney(Journey):
    driver_class = KeyboardDriver
    has_cloud = True

    def test_journey_by_keyboard_alone_from_first_start_to_restart(self):
        self.start_desktop(panel="fake")
        self.run_journey()


class AccessibleJourney(Journey):
    driver_class = AccessibilityDriver
    has_cloud = True

    def test_journey_through_the_accessible_tree_alone_from_first_start_to_restart(self):
        self.start_desktop(panel="fake")
        self.run_journey()


class GermanJourney(Journey):
    driver_class = AccessibilityDriver
    words = translations("de")
    environment = {"LANG": "de_DE.UTF-8"}

    def test_journey_in_german_shows_german_texts_and_stores_the_same_list(self):
        self.assertEqual(self.words["Cancel"], "Abbrechen")
        self.start_desktop(panel="fake")
        self.run_journey()
