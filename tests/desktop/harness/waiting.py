"""Waiting for other processes without guessing how long they take."""

import time


class Timeout(AssertionError):
    """The awaited condition did not come true in time."""


def wait_until(condition, timeout=10.0, what="the condition", interval=0.02):
    """Polls `condition()` and returns its first true value; raises Timeout after `timeout` seconds."""
    end = time.monotonic() + timeout
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() >= end:
            raise Timeout(f"waited {timeout:g} s for {what}")
        time.sleep(interval)


def stays(condition, duration=0.5, what="the condition", interval=0.02):
    """Fails as soon as `condition()` is false within `duration` seconds. For things that must not happen; to wait for
    something, use wait_until."""
    end = time.monotonic() + duration
    while time.monotonic() < end:
        assert condition(), f"{what} did not last {duration:g} s"
        time.sleep(interval)
