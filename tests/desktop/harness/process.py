"""Processes, read from /proc."""

import os
import signal
import time


def children(pid):
    """Descendants of `pid`, without itself."""
    parents = {}
    for entry in os.listdir("/proc"):
        if entry.isdigit():
            parent = _parent(int(entry))
            if parent:
                parents.setdefault(parent, []).append(int(entry))
    found, open_ends = [], [pid]
    while open_ends:
        below = parents.get(open_ends.pop(), [])
        found += below
        open_ends += below
    return found


def name(pid):
    """The short name of a process (first 15 letters); empty if it is gone."""
    try:
        with open(f"/proc/{pid}/comm", encoding="utf-8", errors="replace") as file:
            return file.read().strip()
    except OSError:
        return ""


def alive(pid):
    """Whether a process exists and is not a zombie."""
    return _state(pid) not in ("", "Z", "X")


def blocked_signals(pid):
    """The signals that a process blocks; none when it is gone."""
    try:
        with open(f"/proc/{pid}/status", encoding="utf-8", errors="replace") as file:
            mask = next(int(line.split()[1], 16) for line in file if line.startswith("SigBlk:"))
    except OSError:
        return set()
    return {one for one in signal.Signals if mask >> (one - 1) & 1}


def kill(pid, which=signal.SIGKILL):
    """Sends a signal; ignores a process that is gone."""
    try:
        os.kill(pid, which)
    except ProcessLookupError:
        pass


def end_all(pids, grace=2.0):
    """Ends exactly these processes: waits `grace` seconds for them to exit, then kills them."""
    end = time.monotonic() + grace
    while any(alive(pid) for pid in pids) and time.monotonic() < end:
        time.sleep(0.02)
    for pid in pids:
        if alive(pid):
            kill(pid)


def resident_bytes(pid):
    """Resident memory of a process."""
    with open(f"/proc/{pid}/statm", encoding="ascii") as file:
        return int(file.read().split()[1]) * os.sysconf("SC_PAGE_SIZE")


def _fields(pid):
    try:
        with open(f"/proc/{pid}/stat", encoding="utf-8", errors="replace") as file:
            # The name is in parentheses and may contain spaces and parentheses itself.
            return file.read().rpartition(")")[2].split()
    except OSError:
        return []


def _state(pid):
    fields = _fields(pid)
    return fields[0] if fields else ""


def _parent(pid):
    fields = _fields(pid)
    return int(fields[1]) if fields else 0
