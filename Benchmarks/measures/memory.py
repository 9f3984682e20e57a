"""The peak memory of a media run, against a host that opens the nib alone."""
from .figures import Figure


def measure(bench):
    bench.fresh()
    run = bench.measured("chain", 40)["peak_kb"] / 1024
    bench.fresh()
    bare = bench.measured("open")["peak_kb"] / 1024
    yield Figure("memory", "a media run", "bare host", [(run, bare)], unit="MiB", notes={"MiB more": run - bare})
