"""Ordering and filtering the web list, against building that list."""
from . import google
from .figures import Figure


def measure(bench):
    for run in google.runs(bench, "OrderBench"):
        if run["run_type"] != "iteration":
            continue
        size = int(run["name"].split("/")[1])
        theirs = run["real_time"] / run["ratio_to_building"]
        yield Figure("order", f"{size:,} records", "building the list", [(run["real_time"], theirs)],
                     unit=run["time_unit"])
