"""Scrolling through the table of components, against a table of plain text."""
from .figures import Figure


def measure(bench):
    bench.fresh()
    run = bench.measured("table", program=bench.build / "Benchmarks/LooksBench")
    yield Figure("table", f"a scrolled step of {run['rows']:,.0f} rows", "plain text",
                 [(run["table"] * 1000, run["plain"] * 1000)], unit="ms")
