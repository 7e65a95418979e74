"""docprep's pipeline as one call."""

from __future__ import annotations

from collections.abc import Iterable
from os import PathLike
from typing import Literal

import numpy as np
from numpy.typing import NDArray

from . import _pipeline
from .result import Prepared, prepared

Stage = Literal["sharpness", "binarise", "page", "components", "rows", "seal", "saliency"]


def prepare(
    image: NDArray[np.uint8],
    *,
    stages: Iterable[Stage] = _pipeline.STAGES,
    turn: Literal["auto", 0, 90, 180, 270] = "auto",
    min_sharpness: float | None = None,
    require_text: bool = False,
    binarise: Literal["adaptive", "otsu"] = "adaptive",
    page: Literal["soft", "binary", "gray"] = "soft",
    crop: bool = False,
    keep_skew: bool = False,
    pictures: bool = True,
    orientation: int = 1,
    file: str | PathLike[str] = "array",
    format: str = "array",
) -> Prepared:
    """From a photograph to a level page for a recogniser, its rows of text, its seals and its saliency.

    Does what the program docprep does with the same pixels, to the byte; docs/docprep.md says how it works.

    image: uint8, H x W (grey) or H x W x 3 (B, G, R), of any strides; at most 256 Mi pixels. Never written; its
        pixels are copied once.
    stages: what to compute; what a stage builds on is computed, too.
    turn: degrees clockwise by which the photograph is turned first; "auto": as its text says.
    min_sharpness: a photograph that is less sharp is refused; a finite number above 0.
    require_text: a photograph without rows of text is refused.
    binarise: how print is parted from paper, in pictures.binary and on a binary page. "adaptive": it is darker
        than its surroundings; "otsu": one threshold for the whole.
    page: "soft": lit evenly, strokes with soft edges; "binary": black on white; "gray": as photographed.
    crop: cuts the page to its paper.
    keep_skew: leaves rows as askew and as bent as they are.
    pictures: False: nothing but the page is drawn.
    orientation: how the camera was held, 1 .. 8 as EXIF has it; the photograph is brought upright by it first.
    file, format: what the result and errors call the photograph and its kind.

    Returns orvex_991.result.Prepared.
    Raises Refused (by min_sharpness, require_text), Failed (noise that would take too much memory), Error,
    MemoryError, TypeError and ValueError, which name the argument.

    The interpreter's lock is released; calls on several threads run side by side. The library's lines go to
    `orvex_991.log`.
    """
    return prepared(
        *_pipeline.run(
            image,
            stages=stages,
            turn=turn,
            min_sharpness=min_sharpness,
            require_text=require_text,
            binarise=binarise,
            page=page,
            crop=crop,
            keep_skew=keep_skew,
            pictures=pictures,
            orientation=orientation,
            file=file,
            format=format,
        )
    )
