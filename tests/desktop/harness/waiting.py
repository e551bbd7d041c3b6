"""Waiting for conditions instead of for time."""

import time

POLL_INTERVAL = 0.02


def wait_until(condition, timeout=6.0, what=None):
    """The first true answer of `condition`; fails after `timeout` seconds."""
    deadline = time.monotonic() + timeout
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > deadline:
            raise AssertionError(f"not within {timeout:g} s: {what or condition.__doc__ or 'the condition'}")
        time.sleep(POLL_INTERVAL)


def assert_holds(condition, duration, what=None):
    """Fails as soon as `condition` does not hold during `duration` seconds."""
    deadline = time.monotonic() + duration
    while time.monotonic() < deadline:
        assert condition(), what or "the condition did not hold"
        time.sleep(POLL_INTERVAL)


def settled(read, timeout=6.0, rounds=4):
    """What `read` answers once it has answered the same several times running."""
    answers = []

    def is_settled():
        answers.append(read())
        last = answers[-rounds:]
        return len(last) == rounds and all(answer == last[0] for answer in last)

    wait_until(is_settled, timeout, "the value settles")
    return answers[-1]
