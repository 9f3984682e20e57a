"""The main thread's share of 10,000 progress lines in a second, beyond what it has to do with ten of them."""
from .figures import Figure


def measure(bench):
    busy, quiet = (run_of(bench, lines) for lines in [10_000, 10])
    yield Figure("chatty", "main thread busy with 10,000 lines", "ten lines", [(percent(busy), percent(quiet))], unit="%",
                 compare=lambda ours, theirs: (ours - theirs) / 100, notes={"late frames": busy["late"]})


def run_of(bench, lines):
    bench.fresh()
    return bench.measured("chatty", program=bench.build / "Benchmarks/LooksBench",
                          VANT_BENCH_LINES=str(lines), VANT_BENCH_SECONDS="1")


def percent(run):
    return run["busy"] / run["seconds"] * 100
