"""The files on offer for browsers, as a test changes them."""

import re

from harness.checks import check_equal


def change(file, old, new):
    """old: an expression for what is there once, which new takes the place of."""
    text, count = re.subn(old, lambda _: new, file.read_text(encoding="utf-8"))
    check_equal(f"how often {old!r} is in {file.name}", count, 1)
    replace(file, text)


def replace(file, text):
    file.write_text(text, encoding="utf-8")
    for packed in file.parent.glob(f"{file.name}.*"):
        packed.unlink()
