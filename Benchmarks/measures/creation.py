"""The pane's creation, rights granted without a prompt, against a host that opens the same nib alone."""
from .figures import Figure

ROUNDS = 5


def measure(bench):
    yield Figure("creation", "a pane", "its nib alone", [one_round(bench) for _ in range(ROUNDS)], unit="ms")


def one_round(bench):
    times = []
    for mode in ["create", "open"]:
        bench.fresh()
        times.append(bench.measured(mode)["seconds"] * 1000)
    return tuple(times)
