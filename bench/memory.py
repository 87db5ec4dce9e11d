"""What waiting resources and many replications take of memory."""

from growth import queue_model
from programs import model_usage


def bytes_per_resource(count, folder):
    """Net of what the program takes for a queue of one."""
    base, full = (model_usage(folder, queue_model(size, 1, "COMPTYPE")).kilobytes for size in (1, count))
    return (full - base) * 1024 / count


def replications_megabytes(count, folder):
    """The most that is in memory in `count` replications of a tiny model."""
    return model_usage(folder, queue_model(1, 10, "GENTYPE"), "--replications", str(count)).kilobytes / 1024


def memory_rows(folder, short):
    for count in [1000, 10000] if short else [10000, 100000, 1000000]:
        yield [f"{count:,} resources wait in a queue", f"{bytes_per_resource(count, folder):.0f} bytes each"]
    for count in [10, 100] if short else [1000, 10000, 100000]:
        yield [f"{count:,} replications of a tiny model", f"{replications_megabytes(count, folder):.2f} MB in all"]
