"""What `orvex_991.prepare` returns: its pictures, and docprep's result.json as frozen dataclasses.

Names and meanings are those of docs/result.schema.json. x grows to the right and y downward, from the middle of the
top left pixel, which is (0, 0). What comes of a stage that did not run is None.
"""

from __future__ import annotations

import json
from collections.abc import Callable, Sequence
from dataclasses import dataclass, fields, is_dataclass
from functools import cache
from typing import Any, Optional, Union, get_args, get_origin, get_type_hints

import numpy as np
from numpy.typing import NDArray

from ._types import Point, Point32f, Rect

# Evaluated by _reader, hence Optional, which every supported Python knows.
_Picture = Optional[NDArray[np.uint8]]


@dataclass(frozen=True)
class Input:
    """The photograph as it was given."""

    file: str
    """Its path or name; bytes that are not UTF-8 are U+FFFD."""
    format: str
    """What it was."""
    width: int
    """Columns as stored."""
    height: int
    """Rows as stored."""
    orientation: int
    """EXIF orientation; 1: stored upright."""


@dataclass(frozen=True)
class Alignment:
    """Pairs of neighbouring letters that stand on one line."""

    feet: int
    """Pairs whose lower edges agree."""
    heads: int
    """Pairs whose upper edges agree."""


@dataclass(frozen=True)
class Turn:
    """How the upright photograph was turned further."""

    degrees: int
    """Clockwise: 0, 90, 180 or 270."""
    how: str
    """"exif": not, the orientation had it upright; "auto": as its text says; "given": as `turn` said."""
    width: int
    """Columns after the turn."""
    height: int
    """Rows after the turn."""
    sure: Optional[bool] = None
    """Whether there was text enough to tell. None, like the next three, when the turn was given."""
    confidence: Optional[float] = None
    """How clearly the text told; 0.5 is a coin's toss, 0: no letters side by side."""
    level: Optional[Alignment] = None
    """Letters as the photograph lay."""
    sideways: Optional[Alignment] = None
    """The same, had it been turned clockwise by 90 degrees."""


@dataclass(frozen=True)
class Sharpness:
    """Whether the photograph is in focus."""

    value: float
    """The median over letters; higher is sharper, 0 without text."""
    verdict: str
    """"sharp", "blurred" or "no text"."""
    sharp_from: float
    """The least value that is called sharp."""


@dataclass(frozen=True)
class Binarise:
    """How print was parted from paper."""

    method: str
    """"adaptive" or "otsu"."""
    threshold: Optional[int] = None
    """Otsu: the brightest level that counts as print."""
    block: Optional[int] = None
    """Adaptive: side of the square of surroundings in pixels."""
    contrast: Optional[float] = None
    """Adaptive: levels that print is darker than the mean of its surroundings at least."""


@dataclass(frozen=True)
class Deskew:
    """How the turned photograph became a level page."""

    degrees: float
    """It was turned anticlockwise by so many."""
    matrix: tuple[float, ...]
    """Six numbers: (x, y) on the turned photograph is (m0 x + m1 y + m2, m3 x + m4 y + m5) on the page, but for the
    shift of a straightened one."""
    straightened: bool
    """Whether bent lines were made straight."""
    width: int
    """Columns of the page."""
    height: int
    """Rows of the page."""


@dataclass(frozen=True)
class Paper:
    """The sheet of paper."""

    outline: tuple[Point, ...]
    """Corners of its convex hull, in pixels of the turned photograph."""


@dataclass(frozen=True)
class Page:
    """The page for a recogniser, `pictures.page`."""

    kind: str
    """"soft", "binary" or "gray"."""
    dots_per_inch: int
    """The resolution that its text height suggests: to be stated where the page is stored."""
    ink: Optional[int] = None
    """Of a soft or grey page: a tenth of the print is darker."""
    paper_from: Optional[int] = None
    """Of a soft or grey page: what is lighter is paper, wherever it lies."""


@dataclass(frozen=True)
class Dropped:
    """Components that are no text, by why."""

    border: int
    """They touch the page's border."""
    tall: int
    """Taller than 3 text heights."""
    wide: int
    """Wider than 20 text heights."""
    speck: int
    """Smaller than half of a text height."""


@dataclass(frozen=True)
class Components:
    """Connected marks of the page's print."""

    found: int
    """All of them."""
    text: int
    """Those that can be letters or words."""
    text_height: int
    """In pixels; 0 without any that does not touch the border."""
    dropped: Dropped
    """The others."""


@dataclass(frozen=True)
class Marks:
    """What the library's detector marked of seals."""

    pixels: int
    rects: tuple[Rect, ...]


@dataclass(frozen=True)
class Seals:
    """Red seals, in pixels of the turned photograph."""

    pixels: int
    """That they cover."""
    rects: tuple[Rect, ...]
    """One for each, larger ones first."""
    outlines: tuple[tuple[Point, ...], ...]
    """Corners of the convex hull of each."""
    marks: Marks


@dataclass(frozen=True)
class LeastRect:
    """The rectangle of least area round a row."""

    corners: tuple[Point32f, ...]
    """Four, in order around it."""
    width: int
    """Of the side from the first corner to the second, truncated."""
    height: int
    """Of the next side, truncated."""


@dataclass(frozen=True)
class Place:
    """Where a row lies on the photograph before it was turned, clipped into it."""

    corners: tuple[Point, ...]
    """Top left, top right, bottom right, bottom left as read."""
    rect: Rect
    """Upright round them."""


@dataclass(frozen=True)
class Row:
    """A row of text; all but photo is in pixels of the page."""

    rect: Rect
    baseline: tuple[Point32f, ...]
    """What its letters stand on, from left to right."""
    hull: tuple[Point, ...]
    """Corners of the convex hull."""
    min_area_rect: Optional[LeastRect]
    """None where the hull has no area."""
    photo: Place
    components: tuple[Rect, ...]
    """Of its letters, from left to right."""


@dataclass(frozen=True, eq=False, repr=False)
class Pictures:
    """uint8 arrays that nothing else holds, H x W (grey) or H x W x 3 (B, G, R); None: not computed."""

    page: _Picture = None
    """The page for a recogniser: upright, level, lines straight, lit evenly, nothing but paper, no seals."""
    binary: _Picture = None
    """The photograph's dark print as white on black, before it is deskewed."""
    rows: _Picture = None
    """The page as photographed, the letters of each row of text in a colour of their own."""
    seal: _Picture = None
    """The photograph's red seals in colour, the rest in pale grey; None without any."""
    saliency: _Picture = None
    """The saliency of the photograph's grey levels."""

    def __repr__(self) -> str:
        shapes = {member.name: getattr(self, member.name) for member in fields(self)}
        shown = (f"{name}: {picture.shape}" for name, picture in shapes.items() if picture is not None)
        return f"<Pictures {', '.join(shown)}>"


@dataclass(frozen=True, eq=False, repr=False)
class Prepared:
    """What `orvex_991.prepare` made of a photograph, and what it measured. A notebook shows it as a page."""

    pictures: Pictures
    milliseconds: dict[str, float]
    """How long each step took, in the order in which they ended."""
    docprep: str
    """The version."""
    input: Input
    width: int
    """Columns of the photograph, upright by its orientation."""
    height: int
    """Its rows."""
    turn: Turn
    sharpness: Optional[Sharpness] = None
    binarise: Optional[Binarise] = None
    deskew: Optional[Deskew] = None
    paper: Optional[Paper] = None
    page: Optional[Page] = None
    components: Optional[Components] = None
    seal: Optional[Seals] = None
    """None also where there are none."""
    rows: Optional[tuple[Row, ...]] = None
    """From top to bottom."""
    _json: bytes = b""

    def to_json(self, files: Sequence[str] = ()) -> bytes:
        """result.json as docprep writes it, to the byte.

        files: the names of those that are to stand beside it, such as "page.png".
        """
        names = json.dumps(list(files), ensure_ascii=False, separators=(",", ":"))
        return self._json.replace(b'"files": []', b'"files": ' + names.encode(), 1)

    def __repr__(self) -> str:
        facts = [f"{self.width} x {self.height}", f"turned by {self.turn.degrees}"]
        if self.sharpness:
            facts.append(self.sharpness.verdict)
        if self.rows is not None:
            facts.append("1 row" if len(self.rows) == 1 else f"{len(self.rows)} rows")
        return f"<Prepared {self.input.file!r}: {', '.join(facts)}>"

    def _repr_html_(self) -> str:
        from ._notebook import html

        return html(self)


def prepared(pictures: dict[str, NDArray[np.uint8]], milliseconds: dict[str, float], result: bytes) -> Prepared:
    """A result of what the compiled module returns."""
    members: dict[str, Any] = json.loads(result)
    del members["files"]
    read = {name: _members(Prepared)[name](value) for name, value in members.items()}
    return Prepared(Pictures(**pictures), milliseconds, _json=result, **read)


@cache
def _members(kind: type) -> dict[str, Callable[[Any], Any]]:
    """What reads the members of a dataclass from JSON, by their names."""
    types = get_type_hints(kind)
    return {member.name: _reader(types[member.name]) for member in fields(kind)}


def _reader(kind: Any) -> Callable[[Any], Any]:
    """What turns a value of result.json into one of the type."""
    if get_origin(kind) is Union:  # Optional
        some = _reader(get_args(kind)[0])
        return lambda value: None if value is None else some(value)
    if get_origin(kind) is tuple:
        element = _reader(get_args(kind)[0])
        return lambda values: tuple(map(element, values))
    if is_dataclass(kind):
        members = _members(kind)
        return lambda value: kind(**{name: members[name](of) for name, of in value.items()})
    if kind is Rect:
        return lambda value: Rect(value["x"], value["y"], value["width"], value["height"])
    if kind in (Point, Point32f):
        return lambda value: kind(*value)
    return lambda value: value
