"""A media run of packages whose installer prints 2,000 lines, against a shell loop over the same tool."""
from . import bench as tools
from .figures import Figure

COUNTS = [40, 1000]
LOOP = r"""
for ((i = 0; i < $2; i++)); do
    "$1" -verboseR -pkg "/packages/Package $i.pkg" -target / | cat >/dev/null
done
"""


def measure(bench):
    for count in COUNTS:
        bench.fresh()
        run = bench.measured("chain", count)
        packages = int(run["packages"])
        loop = tools.shell(LOOP, bench.installer, packages)
        yield Figure("chain", f"{packages} packages of 2,000 lines", "shell loop", [(run["seconds"], loop)], notes={
            "ms a package beyond the loop": (run["seconds"] - loop) * 1000 / packages,
            "descriptors left": run["descriptors"], "children left": run["zombies"]})
