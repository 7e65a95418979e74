"""The values that operations take and return, beside numpy arrays."""

from __future__ import annotations

from enum import IntEnum
from typing import NamedTuple


class Point(NamedTuple):
    """Pixel position: x is the column, y the row."""

    x: int
    y: int


class Point32f(NamedTuple):
    """Sub-pixel position: x is the column, y the row."""

    x: float
    y: float


class Size(NamedTuple):
    """Extent in columns and rows."""

    width: int
    height: int


class Rect(NamedTuple):
    """Columns x .. x + width - 1 and rows y .. y + height - 1."""

    x: int
    y: int
    width: int
    height: int


class RotatedRect(NamedTuple):
    """Rotated rectangle; without corners when none was found."""

    pts: tuple[Point32f, ...]
    """Corners in order around it: 4, or none."""
    center: Point32f
    """Mean of the corners."""
    width: int
    """Length of the side from corner 0 to corner 1, truncated."""
    height: int
    """Length of the side from corner 1 to corner 2, truncated."""
    angle: float
    """Direction of the side from corner 0 to corner 1 in radians, y pointing up."""


class INTERP_TYPE(IntEnum):
    """How warps and resizes sample; any other number is legal and gives an all-zero output."""

    INTERP_LINEAR = 0


class MORPH_TYPE(IntEnum):
    """Operations of morphologyBinary."""

    MORPH_DILATE = 0
    MORPH_ERODE = 1
    MORPH_OPEN = 2
    MORPH_CLOSE = 3


_MEANINGS = {
    1: "an input check failed",
    2: "the operation failed",
    3: "no memory for pixels, or an image without the pixels that it needs",
    4: "out of range",
}
_WARNING = "[warn] input error "


class Error(Exception):
    """What the library throws.

    code: 1 an input check failed; 2 an operation failed, or a detector found nothing; 3 memory for
    pixels could not be had, or an image is too small for what is read or written; 4 an index is out
    of range, or more components than can be numbered.
    message: empty, or what the operation's documentation quotes.
    lines: what the library printed during the call; of a failed check, the condition that had to hold.
    """

    code: int
    message: str
    lines: tuple[str, ...]

    def __init__(self, code: int, message: str = "", lines: tuple[str, ...] = ()) -> None:
        super().__init__(code, message, lines)
        self.code = code
        self.message = message
        self.lines = lines

    def __str__(self) -> str:
        for line in self.lines:
            _, warning, condition = line.partition(_WARNING)
            if warning:
                return f"code {self.code}: input error {condition.rstrip()}"
        return f"code {self.code}: {self.message or _MEANINGS.get(self.code, 'unknown')}"
