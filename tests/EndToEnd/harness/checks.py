"""What the test says while it runs, and how it waits."""

import time

LIMIT = 10.0
PAUSE = 0.03


class CheckFailed(Exception):
    """The console or the service did something else than it should."""


def check(what, holds, detail=""):
    """Prints what holds; ends the test when it does not."""
    if not holds:
        raise CheckFailed(f"{what}\n{detail}".rstrip())
    print(f"  ok  {what}", flush=True)


def check_equal(what, seen, expected):
    check(what, seen == expected, f"  expected: {expected!r}\n  found:    {seen!r}")


def check_texts(what, seen, expected):
    """Two lists of texts, compared one by one, so that the message names the first difference."""
    for index, (found, wanted) in enumerate(zip(seen, expected)):
        if found != wanted:
            raise CheckFailed(
                f"{what}: text {index + 1} of {len(expected)} differs\n"
                f"  expected: {wanted!r}\n  found:    {found!r}\n"
                f"  before:   {expected[max(0, index - 3):index]!r}")
    if len(seen) != len(expected):
        odd = list(seen[len(expected):]) or list(expected[len(seen):])
        raise CheckFailed(f"{what}: {len(seen)} texts in place of {len(expected)}, "
                          f"{'more' if len(seen) > len(expected) else 'missing'}: {odd[:5]!r}")
    check(f"{what} ({len(seen)} texts)", True)


def chapter(title):
    print(f"{title}", flush=True)


def wait_until(what, probe, limit=LIMIT, detail=None):
    """The first true value of probe(); the test ends when there is none within limit seconds.

    detail: called for more words in that case.
    """
    end = time.monotonic() + limit
    while True:
        value = probe()
        if value:
            return value
        if time.monotonic() > end:
            more = f"\n{detail()}" if detail else ""
            raise CheckFailed(f"waited {limit:g} s in vain: {what}{more}")
        time.sleep(PAUSE)
