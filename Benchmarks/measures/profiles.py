"""Copying colour profiles to a staging folder and to the user's library, against cp doing the same."""
import os
import shutil

from . import bench as tools
from .figures import Figure

COUNT = 2000
PROFILE = "/usr/share/color/icc/sRGB.icc"
COPIES = 'mkdir "$2" "$3" && cp "$1"/*.icc "$2" && cp "$2"/*.icc "$3"'


def measure(bench):
    source = bench.folder()
    for number in range(COUNT):
        shutil.copy(os.environ.get("VANT_BENCH_PROFILE", PROFILE), source / f"profile {number}.icc")
    bench.fresh()
    pane = bench.measured("profiles", f"{source}/")["seconds"]
    copies = tools.shell(COPIES, source, bench.jail / "staging", bench.jail / "target")
    yield Figure("profiles", f"{COUNT:,} profiles", "cp twice", [(pane, copies)])
