"""What the terminal says of a run that has ended."""
import errno
import io
import pathlib
import types

from flow_case import FlowCase, flow, report

GOOD = {"name": "Driver.pkg", "component": "Print Driver", "outcome": "PIPE END", "installed": True, "exitStatus": 0,
        "messages": [], "installedFiles": 40}
BAD = GOOD | {"name": "Fax.pkg", "component": "Fax", "installed": False, "exitStatus": 1,
              "messages": ["installer: cut short"], "installedFiles": 0}
KILLED = BAD | {"name": "Scan.pkg", "exitStatus": 137, "messages": []}
UNTOUCHED = BAD | {"name": "Manual.pkg", "outcome": None, "exitStatus": None, "messages": []}


def ended(status, *packages, reason="", **changes):
    summary = {"packages": list(packages), "notExpanded": [], "setAside": [], "installedFiles": 40, "seconds": 1.0,
               "status": "Installing Fax..."}
    return flow.Result(status, reason, summary | changes, types.SimpleNamespace(out=pathlib.Path("out/media")))


def written(result):
    out, err = io.StringIO(), io.StringIO()
    report.write(result, out, err)
    return out.getvalue(), err.getvalue()


class Report(FlowCase):

    def test_names_each_package_and_what_became_of_it(self):
        out, err = written(ended(3, GOOD, BAD, KILLED, UNTOUCHED, setAside=["Extra"],
                                 notExpanded=[{"archive": "Web.zip", "words": "no zip"}]))
        lines = [" ".join(line.split()) for line in out.splitlines()]
        self.assertEqual(lines[:4], [
            "installed Driver.pkg (Print Driver), 40 files", "failed Fax.pkg (Fax): installer: cut short",
            "failed Scan.pkg (Fax): its installer died of signal 9", "not installed Manual.pkg (Fax)"])
        self.assertEqual(lines[4], "not expanded Web.zip: no zip")
        self.assertIn("set aside Extra", lines[5])
        self.assertEqual(err, "run: the pane went on, but not everything is installed: "
                              "Fax.pkg, Scan.pkg, Manual.pkg, Web.zip, Extra\n")

    def test_explains_the_outcome_that_says_nothing(self):
        self.assertIn("PIPE END", written(ended(3, GOOD, BAD))[0])
        self.assertNotIn("PIPE END", written(ended(0, GOOD))[0])

    def test_says_which_way_a_run_stopped_and_where_to_read(self):
        _, err = written(ended(1, UNTOUCHED, reason="no end after 6 s"))
        self.assertEqual(err, 'run: no end after 6 s; the last status was "Installing Fax..."; see out/media/host.log\n')

    def test_a_whole_run_has_no_complaint(self):
        self.assertEqual(written(ended(0, GOOD))[1], "")

    def test_problems_of_the_system_take_one_line(self):
        self.assertEqual(report.problem(OSError(errno.ENOSPC, "No space left on device", "out/host.log")),
                         "out/host.log: No space left on device")
        self.assertEqual(report.problem(OSError("odd")), "odd")
