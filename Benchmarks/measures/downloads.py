"""Downloads through the layer side by side, against curl --parallel from the same server on this machine."""
import os
import resource
import subprocess
import time

from . import nginx
from .figures import Figure

ROUNDS = int(os.environ.get("ROUNDS", "5"))
CURL = ["curl", "--silent", "--parallel", "--parallel-immediate", "--parallel-max", "100"]
MIB = 1024 * 1024


def measure(bench):
    work = bench.folder_in_memory()
    work.chmod(0o755)
    for name in ["site", "ours", "curl"]:
        (work / name).mkdir()
    write_random(work / "site", {f"large{number}": 64 * MIB for number in range(1, 9)})
    write_random(work / "site", {f"small{number}": 10 * 1024 for number in range(1, 101)})
    with nginx.serve(work / "site", work / "nginx") as address:
        for count in [8, 4, 1]:
            yield from compare(bench, work, address, f"{count} x 64 MiB", ROUNDS, [f"large{n + 1}" for n in range(count)])
        yield from compare(bench, work, address, "100 x 10 KiB", 4 * ROUNDS, [f"small{n + 1}" for n in range(100)])
        for folder in ["site", "ours", "curl"]:
            empty(work / folder)
        yield peak_memory(bench, work, address)


def write_random(folder, sizes):
    for name, size in sizes.items():
        (folder / name).write_bytes(os.urandom(size))
        (folder / name).chmod(0o644)


def empty(folder):
    for file in folder.iterdir():
        file.unlink()


def compare(bench, work, address, what, rounds, files):
    """Neither side's start counts: ours leaves it out itself, and curl's is what curl takes to tell its version."""
    ours, theirs, starts = [], [], []
    for _ in range(rounds):
        ours.append(layer(bench, work, [f"{address}/{file}" for file in files])[:2])
        theirs.append(costs(*CURL, *(word for file in files for word in (f"{address}/{file}", "-o", work / "curl" / file))))
        starts.append(costs("curl", "--version"))
    for column, quantity in enumerate(["time", "CPU"]):
        start = min(cost[column] for cost in starts)
        pairs = [(mine[column], other[column] - start) for mine, other in zip(ours, theirs)]
        yield Figure("downloads", f"{what}, {quantity}", "curl --parallel", pairs)


def layer(bench, work, addresses):
    """Seconds, the CPU's seconds and the peak in KiB of the layer's own downloads."""
    words = subprocess.run([bench.build / "Benchmarks/DownloadBench", work / "ours", *addresses],
                           check=True, stdout=subprocess.PIPE, text=True).stdout.split()
    return float(words[0]), float(words[1]), int(words[2])


def costs(*command):
    """Seconds and the CPU's seconds of a whole command."""
    before, start = resource.getrusage(resource.RUSAGE_CHILDREN), time.perf_counter()
    # Side by side, curl shows its progress even when told to be silent.
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    elapsed, after = time.perf_counter() - start, resource.getrusage(resource.RUSAGE_CHILDREN)
    return elapsed, after.ru_utime - before.ru_utime + after.ru_stime - before.ru_stime


def peak_memory(bench, work, address):
    write_random(work / "site", {"one": MIB})
    with (work / "site" / "thousand").open("wb") as file:
        file.truncate(1024 * MIB)
    (work / "site" / "thousand").chmod(0o644)
    one, thousand = (layer(bench, work, [f"{address}/{name}"])[2] / 1024 for name in ["one", "thousand"])
    return Figure("downloads", "peak memory, 1 GiB", "1 MiB", [(thousand, one)], unit="MiB",
                  notes={"MiB more": thousand - one})
