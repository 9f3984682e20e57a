"""That what shares one pointer or one place of the machine runs alone: a property that stands behind another keyword of
the function that lists the tests is dropped without a word."""
import json
import os
import subprocess
import unittest

# The suites, as prefixes of the tests' names.
ALONE = ("Pointer.", "PointerAtThePrompt.", "MarkerFile.", "AuthorizationPanel.", "TrackingArea.")


class Serial(unittest.TestCase):
    def test_these_suites_run_alone(self):
        listed = subprocess.run(
            ["ctest", "--test-dir", os.environ["VANT_BUILD"], "--show-only=json-v1"],
            check=True, capture_output=True, text=True)
        found = set()
        for test in json.loads(listed.stdout)["tests"]:
            suite = next((suite for suite in ALONE if test["name"].startswith(suite)), None)
            if suite is None:
                continue
            found.add(suite)
            alone = any(entry["name"] == "RUN_SERIAL" and entry["value"] for entry in test["properties"])
            self.assertTrue(alone, f"{test['name']} may run beside others")
        self.assertEqual(found, set(ALONE))


if __name__ == "__main__":
    unittest.main()
