"""Reading a million lines of an installer's output, against mawk splitting them and grep counting in them."""
from . import google
from .figures import Figure


def measure(bench):
    runs = {run["name"].split("/")[0]: run for run in google.runs(bench, "InstallerOutputBench")}
    pane = runs["pane"]
    for reference in ["mawk", "grep"]:
        yield Figure("output", "a million lines", reference, [(pane["real_time"], runs[reference]["real_time"])],
                     unit=pane["time_unit"], notes={"allocations a line": pane["allocations_a_line"]})
