"""The workloads of bench/models, each beside the program that was written for it by hand."""

import dataclasses
import re

from programs import BUILT, ROOT, model_usage, usage_of


@dataclasses.dataclass(frozen=True)
class Workload:
    name: str
    model: str
    limit: list  # the hand-written program with its arguments; SIZE stands for the size
    pattern: str  # the text in the model whose number is the size
    size: int
    short_size: int

    def limit_command(self, size):
        program, *arguments = self.limit
        return [BUILT / program, *(str(size) if word == "SIZE" else word for word in arguments)]

    def model_text(self, size):
        text = (ROOT / "bench" / "models" / f"{self.model}.tbsmx").read_text()
        if self.pattern not in text:
            raise SystemExit(f"bench/run: {self.pattern} is not in {self.model}.tbsmx")
        return text.replace(self.pattern, re.sub(r"\d+", str(size), self.pattern))


WORKLOADS = [
    Workload("W1", "w1", ["cycle", "2", "10", "1", "SIZE", "1"], "TotInst>=100000", 100000, 1000),
    Workload("W1L", "w1l", ["cycle", "20", "100", "10", "SIZE", "1"], "TotInst>=100000", 100000, 1000),
    Workload("W2", "w2", ["servers", "SIZE"], "TotInst>=200000", 200000, 1000),
    Workload("W3", "w3", ["cycle", "2", "10", "1", "500", "SIZE"], "MULTISIM 1000", 1000, 5),
    Workload("W4", "w4", [], "TotInst>=5000", 50000, 1000),
]


def instances_of(text):
    """The activity instances of a run of timbersim-run; of many replications, the average."""
    return sum(float(count) for count in re.findall(r'"\w+\.TotInst":([0-9.]+)', text))


def workload_row(workload, folder, short):
    """The cells of a workload. The two programs take turns, so that both meet the same moods of the machine."""
    size = workload.short_size if short else workload.size
    ours, theirs = [], []
    for _ in range(1 if short else 5):
        if workload.limit:
            theirs.append(usage_of(workload.limit_command(size)))
        ours.append(model_usage(folder, workload.model_text(size)))
    instances = instances_of(ours[0].text) * (size if "MULTISIM" in workload.pattern else 1)
    rate = instances / min(usage.seconds for usage in ours)
    memory = f"{max(usage.kilobytes for usage in ours) / 1024:.1f}"
    if not theirs:
        return [workload.name, "", f"{rate:,.0f}", "", memory]
    counted = int(re.search(r"(\d+) instances until", theirs[0].text).group(1))
    limit = counted / min(usage.seconds for usage in theirs)
    return [workload.name, f"{limit:,.0f}", f"{rate:,.0f}", f"{rate / limit:.3f}", memory]
