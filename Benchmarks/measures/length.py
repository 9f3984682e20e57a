"""A whole media run of few and of many packages, with its table in a window and by the reference host, against a shell loop
over the same tool."""
import os
import pathlib
import plistlib

from . import bench as tools
from .chain import LOOP
from .figures import Figure

LINES = {"VANT_BENCH_LINES": "100"}
ROUNDS = {40: 5, 1000: 3, 4000: 3}
ENDS = {"InstallNextCDComponent", "CDInstallComplete"}


def measure(bench):
    for count, times in ROUNDS.items():
        yield window_figure([window_round(bench, count) for _ in range(times)])
    for count in [min(ROUNDS), max(ROUNDS)]:
        yield host_figure([host_round(bench, count)])


def loop(bench, packages):
    return tools.spent("bash", "-ec", LOOP, "bash", bench.installer, packages, env=os.environ | LINES)


def window_round(bench, count):
    bench.fresh()
    run = bench.measured("run", count, program=bench.build / "Benchmarks/LengthBench", **LINES)
    shell = loop(bench, int(run["packages"]))
    return run | {"loop": shell.seconds, "loop_cpu": shell.cpu}


def window_figure(rounds):
    packages = int(rounds[0]["packages"])
    wall = [(run["seconds"] - run["loop"]) * 1000 / packages for run in rounds]
    cpu = [(run["cpu"] + run["tools_cpu"] - run["loop_cpu"]) * 1000 / packages for run in rounds]
    notes = {
        "ms a package beyond the loop, least": min(wall), "most": max(wall),
        "ms of CPU beyond it, least": min(cpu), "the most": max(cpu),
        "ms of CPU without the tools": max(run["cpu"] for run in rounds) * 1000 / packages,
    }
    return Figure("length", f"{packages:,} packages in the window", "shell loop",
                  [(run["seconds"], run["loop"]) for run in rounds], notes=notes | memory(packages, rounds))


def memory(packages, rounds):
    """What the process holds in the round in which it is the most."""
    most = {key: max(run[key] for run in rounds) for key in rounds[0] if key.endswith("_kb")}
    told = {f"MiB {when}": most[f"{key}_kb"] / 1024
            for when, key in [("before", "before"), ("after 100", "after_100"), ("after 1,000", "after_1000"),
                              ("at the end", "end"), ("at the peak", "peak")] if most[f"{key}_kb"]}
    grown = max(run["end_kb"] - run["before_kb"] for run in rounds)
    return told | {"KiB that a package adds": grown / packages}


def host_round(bench, count):
    """The time from the first package's end to the last one's, and what the host holds at its peak."""
    bench.fresh()
    places = {name: bench.jail / name for name in ["media", "out"]}
    for place in places.values():
        place.mkdir()
    entries = [{"TYPE": {"text": "Print Driver"}, "LOCATION": {"text": f"/packages/Package {number}.pkg"}}
               for number in range(count)]
    (places["media"] / "SelectedInput.plist").write_bytes(plistlib.dumps(entries))
    peak = tools.peak_of([bench.build / "VantHost.app/VantHost", "-Media", places["media"], "-Output", places["out"],
                          "-Bundle", bench.build / "VantInstallation.bundle", "-Linger", "0"],
                         places["out"] / "log", os.environ | bench.environment() | LINES)
    ends = package_ends(places["out"] / "timeline.txt")
    if len(ends) != count + 1:
        raise SystemExit(f"run: the host ended {len(ends)} of {count + 1} packages")
    return {"packages": len(ends) - 1, "seconds": ends[-1] - ends[0], "loop": loop(bench, len(ends) - 1).seconds,
            "peak": peak}


def package_ends(timeline: pathlib.Path):
    words = [line.split() for line in timeline.read_text().splitlines()]
    return [float(line[0]) for line in words if line[2] == "notification" and line[3] in ENDS]


def host_figure(rounds):
    packages = rounds[0]["packages"]
    return Figure("length", f"{packages:,} packages by the reference host", "shell loop",
                  [(run["seconds"], run["loop"]) for run in rounds],
                  notes={"ms a package beyond the loop": (rounds[0]["seconds"] - rounds[0]["loop"]) * 1000 / packages,
                         "MiB at the peak": rounds[0]["peak"]})
