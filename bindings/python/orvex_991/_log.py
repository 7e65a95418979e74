"""What the library prints, as lists of lines."""

from __future__ import annotations

from collections.abc import Iterator
from contextlib import contextmanager
from contextvars import ContextVar

current: ContextVar[list[str] | None] = ContextVar("orvex_991.log", default=None)


@contextmanager
def log() -> Iterator[list[str]]:
    """Lines that the library prints while the block runs, in a list that grows with every call.

    The library reports failed checks and its own running times by lines that a C++ program sees on
    standard output. In Python they are silent, except inside such a block:

        with orvex_991.log() as lines:
            orvex_991.bgr2gray(frame)
        print(lines)

    The list gets the lines of calls in the block's own context (contextvars): those of its thread, or
    of its asyncio task and of tasks that it starts. Of nested blocks the innermost gets them. Each entry
    is a line without its end, byte for byte what C++ prints.
    """
    lines: list[str] = []
    token = current.set(lines)
    try:
        yield lines
    finally:
        current.reset(token)
