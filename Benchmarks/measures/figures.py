"""Figures and how they are told."""
import dataclasses
import statistics


def best(rounds):
    """The best time of each side, which other work on the machine disturbs the least."""
    return tuple(min(side) for side in zip(*rounds))


def middle(rounds):
    """The round whose ratio is the middle one: its parts belong together."""
    ordered = sorted(rounds, key=lambda pair: pair[0] / pair[1])
    return ordered[len(ordered) // 2]


def share(ours, theirs):
    return ours / theirs


@dataclasses.dataclass
class Figure:
    """One comparison. A round is a pair, ours and the reference's, in one unit; all rounds are kept."""
    benchmark: str
    what: str
    reference: str
    rounds: list
    unit: str = "s"
    notes: dict = dataclasses.field(default_factory=dict)
    choose: object = best    # which figures stand for all rounds
    compare: object = share  # what is said of the two

    @property
    def chosen(self):
        return self.choose(self.rounds)

    @property
    def ratio(self):
        return self.compare(*self.chosen)

    def record(self):
        """The figure for JSON, every round included."""
        ours, theirs = self.chosen
        return {
            "benchmark": self.benchmark, "what": self.what, "reference": self.reference, "unit": self.unit, "ours": ours,
            "theirs": theirs, "ratio": self.ratio, "median ratio": statistics.median(self._ratios()),
            "rounds": [{"ours": mine, "theirs": other} for mine, other in self.rounds], "notes": self.notes}

    def row(self):
        ours, theirs = self.chosen
        ratios = self._ratios()
        span = f"{min(ratios):.2f} to {max(ratios):.2f}" if len(ratios) > 1 else ""
        notes = ", ".join(f"{name} {number:.4g}" for name, number in self.notes.items())
        return [self.benchmark, self.what, f"{ours:.4g} {self.unit}", self.reference, f"{theirs:.4g} {self.unit}",
                f"{self.ratio:.2f}", str(len(self.rounds)), span, notes]

    def _ratios(self):
        return [self.compare(*pair) for pair in self.rounds]


HEAD = ["benchmark", "what", "ours", "against", "theirs", "ratio", "rounds", "of the rounds", "also"]


def table(found):
    """The figures in columns."""
    rows = [HEAD, *(figure.row() for figure in found)]
    widths = [max(len(row[column]) for row in rows) for column in range(len(HEAD))]
    return "\n".join("  ".join(cell.ljust(width) for cell, width in zip(row, widths)).rstrip() for row in rows)
