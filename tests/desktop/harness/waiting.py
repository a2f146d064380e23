"""Waiting for what another process does, without guessing how long it takes."""

import time


class Timeout(AssertionError):
    """What was waited for did not happen in time."""


def wait_until(condition, timeout=10.0, what="the condition", interval=0.02):
    """Returns the first true value of `condition()`; raises Timeout after `timeout` seconds."""
    end = time.monotonic() + timeout
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() >= end:
            raise Timeout(f"waited {timeout:g} s for {what}")
        time.sleep(interval)


def stays(condition, duration=0.5, what="the condition", interval=0.02):
    """Fails as soon as `condition()` is false within `duration` seconds. For what must not happen."""
    end = time.monotonic() + duration
    while time.monotonic() < end:
        assert condition(), f"{what} did not last {duration:g} s"
        time.sleep(interval)
