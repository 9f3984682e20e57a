"""That what shares one place of the machine runs alone, and that what moves a pointer does so on a display of its own: a
property that stands behind another keyword of the function that lists the tests is dropped without a word. And that each
test is listed once."""
import json
import os
import subprocess
import unittest

# The suites, as prefixes of the tests' names.
ALONE = ("MarkerFile.",)
OWN_DISPLAY = ("Pointer.", "PointerAtThePrompt.", "AuthorizationPanel.", "TrackingArea.")


class Serial(unittest.TestCase):
    def setUp(self):
        listed = subprocess.run(
            ["ctest", "--test-dir", os.environ["VANT_BUILD"], "--show-only=json-v1"],
            check=True, capture_output=True, text=True)
        self.tests = json.loads(listed.stdout)["tests"]

    def test_what_shares_a_place_runs_alone(self):
        for test in self.of(ALONE):
            alone = any(entry["name"] == "RUN_SERIAL" and entry["value"] for entry in test["properties"])
            self.assertTrue(alone, f"{test['name']} may run beside others")

    def test_what_moves_a_pointer_has_a_display_of_its_own(self):
        for test in self.of(OWN_DISPLAY):
            self.assertIn("/Tests/with-display --alone ", " ".join(test["command"]), test["name"])

    def test_no_test_is_listed_twice(self):
        names = [test["name"] for test in self.tests]
        self.assertEqual([name for name in set(names) if names.count(name) > 1], [])

    def of(self, suites):
        """The tests of these suites, none of which is empty."""
        found = [test for test in self.tests if test["name"].startswith(suites)]
        self.assertEqual({suite for suite in suites for test in found if test["name"].startswith(suite)}, set(suites))
        return found


if __name__ == "__main__":
    unittest.main()
