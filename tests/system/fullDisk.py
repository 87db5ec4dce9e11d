"""A disk with little room, for one program under test: it goes when the program ends, and nobody else sees it."""

import pathlib
import subprocess

DISK = "/mnt"  # where the program finds it

# Where the program has a view of its own of what is mounted, it may mount without being root.
PRIVATE = ["unshare", "--user", "--map-root-user", "--mount"]
FILL = """
mount -t tmpfs -o size="$1" disk "$2" && cp "$3" "$2" || exit 125
head -c "$1" /dev/zero >"$2/filling" 2>/dev/null
truncate -s -"$4" "$2/filling"
shift 4
exec "$@"
"""


def on_small_disk(test, model, size, room):
    """The beginning of a command that runs on a disk of `size` bytes; `model` is on it, and room for `room` bytes."""
    tried = subprocess.run([*PRIVATE, "mount", "-t", "tmpfs", "disk", DISK], capture_output=True, text=True, check=False)
    if tried.returncode != 0:
        test.fail("no small disk can be mounted here: this test needs user namespaces, or root with the right to mount; "
                  + tried.stderr)
    return [*PRIVATE, "sh", "-c", FILL, "sh", str(size), DISK, str(model), str(room)]


def seen_by(process, folder):
    """A folder as the process sees it."""
    return pathlib.Path(f"/proc/{process.pid}/root{folder}")
