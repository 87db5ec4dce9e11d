"""How the cost of one event, and the start of a run, grow with a model."""

import dataclasses
import typing

from programs import model_usage

SIZES = [1, 10, 100, 1000, 10000, 100000, 1000000]
FEW_EVENTS = 100


def pending_model(size, events):
    """`size` instances pending at any time."""
    return f"""GENTYPE Part;
QUEUE Parts Part;
COMBI Work;
DRAWLINK L1 Parts Work;
RELEASELINK L2 Work Parts;
DURATION Work Uniform(1,9);
TBINITIALCONTENT Parts {size};
/<CODE>
SIMULATECONDITION Work.TotInst>={size + events};
/<CODE>
"""


def queue_model(size, events, kind):
    """`size` resources waiting in a queue, from which one is taken and given back at a time."""
    return f"""{kind} Part;
GENTYPE Hand;
QUEUE Parts Part;
QUEUE Hands Hand;
COMBI Work;
DRAWLINK L1 Parts Work;
DRAWLINK L2 Hands Work;
RELEASELINK L3 Work Parts;
RELEASELINK L4 Work Hands;
DURATION Work Uniform(1,9);
TBINITIALCONTENT Parts {size};
TBINITIALCONTENT Hands 1;
/<CODE>
SIMULATECONDITION Work.TotInst>={events};
/<CODE>
"""


def idle_combis_model(size, events):
    """`size` Combis at a queue that stays empty, beside the one that starts."""
    idle = "".join(f"COMBI C{i};\nDRAWLINK D{i} None C{i};\n" for i in range(size))
    return f"GENTYPE None;\nQUEUE None None;\n{idle}" + queue_model(1, events, "GENTYPE")


def sharing_combis_model(size, events):
    """`size` Combis at the queue that each event fills and empties; only one has what else it needs."""
    idle = "".join(
        f"QUEUE N{i} None;\nCOMBI C{i};\nDRAWLINK D{i} Hands C{i};\nDRAWLINK E{i} N{i} C{i};\n" for i in range(size)
    )
    head, tail = queue_model(1, events, "GENTYPE").split("COMBI Work", 1)
    return f"GENTYPE None;\n{head}{idle}COMBI Work{tail}"


def links_model(size, events):
    """`size` links out of the one activity, and all release at each end of it."""
    sinks = "".join(f"QUEUE S{i} Part;\nRELEASELINK R{i} Work S{i};\n" for i in range(size))
    head, tail = queue_model(1, events, "GENTYPE").split("DURATION", 1)
    return f"{head}{sinks}DURATION{tail}"


@dataclasses.dataclass(frozen=True)
class Series:
    name: str
    model: typing.Callable  # the text of a model, by size and number of events
    largest: int
    short_largest: int = 1000


SERIES = [
    Series("instances pending", pending_model, 1000000),
    Series("queue length, amounts", lambda size, events: queue_model(size, events, "GENTYPE"), 1000000),
    Series("queue length, instances", lambda size, events: queue_model(size, events, "COMPTYPE"), 1000000),
    Series("Combis that wait elsewhere", idle_combis_model, 10000),
    Series("Combis that share the queue", sharing_combis_model, 10000, 100),
    Series("links per node", links_model, 1000, 100),
]


@dataclasses.dataclass(frozen=True)
class Cost:
    event: float  # seconds for one more event
    start: float  # seconds of a run without events


class Measurement:
    """Finds the cost of one event of a model as the difference of runs with few and with many events.

    The noise of a run goes with its length, and the start of a large model is most of a short run. So there are as many
    events between the runs as make the long one last at least twice the start; runs take turns, and the least of each
    counts.
    """

    enough = 0.2  # seconds of events, where the start is shorter
    patience = 12.0  # seconds that one size may take once both numbers of events are known

    def __init__(self, model, folder):
        self.model = model
        self.folder = folder

    def seconds(self, events):
        return model_usage(self.folder, self.model(events)).seconds

    def take(self, guess):
        """@param guess: about what an event costs; takes a twentieth of the events for it first, for it may be low."""
        few = self.seconds(FEW_EVENTS)
        goal = max(self.enough, few)
        events = max(1000, int(goal / guess / 20))
        many = self.seconds(FEW_EVENTS + events)
        while many - few < 0.7 * goal:
            events = int(events * min(20.0, max(1.5, 1.1 * goal / max(many - few, 1e-6))))
            many = self.seconds(FEW_EVENTS + events)
        return self.repeat(events, few, many)

    def repeat(self, events, few, many):
        spent = 0.0
        for _ in range(4):
            if spent + few + many > self.patience:
                break
            spent += few + many
            few = min(few, self.seconds(FEW_EVENTS))
            many = min(many, self.seconds(FEW_EVENTS + events))
        event = (many - few) / events
        return Cost(event, few - FEW_EVENTS * event)


def costs_of(series, folder, short):
    """What a series costs, by size. The short form runs once each and its figures mean nothing."""
    costs = {}
    guess = 1e-6
    for size in [size for size in SIZES if size <= (series.short_largest if short else series.largest)]:
        measurement = Measurement(lambda events, size=size: series.model(size, events), folder)
        if short:
            few, many = measurement.seconds(FEW_EVENTS), measurement.seconds(2 * FEW_EVENTS)
            costs[size] = Cost((many - few) / FEW_EVENTS, few)
        else:
            costs[size] = measurement.take(guess)
            guess = costs[size].event
    return costs
