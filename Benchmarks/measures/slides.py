"""A slide change with all that it looks up, against loading and drawing its image alone."""
from .figures import Figure


def measure(bench):
    bench.fresh()
    run = bench.measured("slides", program=bench.build / "Benchmarks/LooksBench")
    yield Figure("slides", "a change", "its image alone", [(run["change"] * 1000, run["image"] * 1000)], unit="ms")
