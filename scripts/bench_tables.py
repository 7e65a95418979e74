"""Reads the tables of bench/results/, for scripts/bench_results and scripts/bench_chart."""
import re
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
RESULTS = ROOT / "bench" / "results"


class Row:
    """A line of orvex_bench: our milliseconds, the ratio to memcpy, and {other: (milliseconds, ours / theirs)}."""

    def __init__(self, cells):
        self.name, self.ms, self.memcpy = cells[0], cells[1], cells[3]
        self.others = {name: (ms, float(ratio)) for name, ms, ratio in
                       re.findall(r"(\S[^()]*?) ([\d.]+) \(([\d.e+-]+)\)", cells[5])}

    def best(self):
        """(library, milliseconds, ours / theirs) of the fastest other library; None where there is none."""
        peers = [(name, *figures) for name, figures in self.others.items() if name not in ("scalar loop", "reference")]
        return min(peers, key=lambda peer: float(peer[1]), default=None)


def head(text):
    """{"machine": ..., "compiler": ..., "commit": ..., "command": ...} from the lines under a file's title."""
    return dict(re.findall(r"^- (machine|compiler|commit|command): (.*)$", text, re.MULTILINE))


def cells_of(text):
    """The cells of every line of every table, without heads."""
    lines = [line for line in text.splitlines() if line.startswith("|")]
    inner = [[cell.strip() for cell in line.split("|")[1:-1]] for line in lines]
    return [cells for cells, after in zip(inner, inner[1:] + [[""]])
            if not re.match(r":?-+:?$", cells[0]) and not re.match(r":?-+:?$", after[0])]


def benchmark(text):
    """{"1920 x 1080": [Row, ...], ...} of what orvex_bench printed."""
    parts = re.split(r"^## (\d+ x \d+)$", text, flags=re.MULTILINE)
    return {size: [Row(cells) for cells in cells_of(part)] for size, part in zip(parts[1::2], parts[2::2])}
