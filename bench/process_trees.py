"""What a program with all its processes takes of the machine, read from /proc."""

import os
import re
from pathlib import Path

# A variable in the environment of a program: processes that leave its tree still have it.
MARK = "QUENDO_BENCH_PROGRAM"
_TICK = 1 / os.sysconf("SC_CLK_TCK")
# Threads in which Mesa draws by processor. Programs that only try OpenGL have them, too, and leave them idle.
_SOFTWARE_THREADS = "llvmpipe-"
_SOFTWARE_LEAST = 0.05
_CARDS = ("/dev/dri/", "/dev/nvidia")


def descendants(pid, parents):
    """`pid` and all below it. `parents`: process -> its parent."""
    found = {pid}
    grown = True
    while grown:
        below = {one for one, parent in parents.items() if parent in found} - found
        found |= below
        grown = bool(below)
    return found


def parse_stat(text):
    """(parent, ticks) of a line of /proc/PID/stat. The ticks are those of the process and of its children that have
    ended, in user and system mode."""
    # The name is in parentheses and may contain both blanks and parentheses.
    fields = text.rpartition(")")[2].split()
    return int(fields[1]), sum(int(one) for one in fields[11:15])


def parse_proportional(text):
    """Bytes of the line Pss of smaps_rollup."""
    return int(re.search(r"^Pss:\s+(\d+) kB", text, re.M)[1]) * 1024


def parse_private(text, page):
    """Bytes that a process shares with no other, of a line of /proc/PID/statm."""
    _size, resident, shared, *_rest = text.split()
    return (int(resident) - int(shared)) * page


def drawn_by(thread_seconds, maps):
    """What a program draws with. `thread_seconds`: (name, processor time) of its threads; `maps`: what its processes
    have mapped into their memory."""
    if sum(time for name, time in thread_seconds if name.startswith(_SOFTWARE_THREADS)) > _SOFTWARE_LEAST:
        return "OpenGL in software"
    return "card" if any(card in one for card in _CARDS for one in maps) else "processor"


def _read(pid, name):
    """None if the process has ended."""
    try:
        return Path("/proc", str(pid), name).read_bytes().decode("utf-8", "replace")
    except (FileNotFoundError, ProcessLookupError):
        return None


def _readable(pid, name):
    """None also if it is another user's or hides itself."""
    try:
        return _read(pid, name)
    except PermissionError:
        return None


def _memory(pid):
    rollup = _readable(pid, "smaps_rollup")
    if rollup:
        return parse_proportional(rollup)
    # Of a process that hides itself the private part is all there is to know.
    return parse_private(_read(pid, "statm") or "0 0 0", os.sysconf("SC_PAGE_SIZE"))


class ProcessTree:
    """The processes of a program that was started with `mark` as the value of MARK."""

    def __init__(self, pid, mark):
        self._pid = pid
        self._mark = f"{MARK}={mark}"

    def pids(self):
        stats = {int(one): _read(one, "stat") for one in os.listdir("/proc") if one.isdigit()}
        parents = {pid: parse_stat(stat)[0] for pid, stat in stats.items() if stat}
        marked = {pid for pid in parents if self._mark in (_readable(pid, "environ") or "").split("\0")}
        return set().union(*(descendants(pid, parents) for pid in marked | {self._pid}))

    def processor_seconds(self):
        stats = (_read(pid, "stat") for pid in self.pids())
        return sum(parse_stat(stat)[1] for stat in stats if stat) * _TICK

    def proportional_bytes(self):
        """Memory in which what several processes share is counted once."""
        return sum(_memory(pid) for pid in self.pids())

    def drawn_by(self):
        pids = self.pids()
        threads = (thread for pid in pids for thread in Path(f"/proc/{pid}/task").glob("*"))
        times = [(_read(one, "comm"), _read(one, "schedstat")) for one in threads]
        return drawn_by([(name, int(time.split()[0]) / 1e9) for name, time in times if name and time],
                        [_readable(pid, "maps") or "" for pid in pids])
