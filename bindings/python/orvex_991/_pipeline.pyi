from collections.abc import Iterable
from os import PathLike

import numpy as np
from numpy.typing import NDArray

from ._prepare import Stage

STAGES: tuple[Stage, ...]

def run(
    image: NDArray[np.uint8],
    *,
    stages: Iterable[str],
    turn: str | int,
    min_sharpness: float | None,
    require_text: bool,
    binarise: str,
    page: str,
    crop: bool,
    keep_skew: bool,
    pictures: bool,
    orientation: int,
    file: str | PathLike[str],
    format: str,
) -> tuple[dict[str, NDArray[np.uint8]], dict[str, float], bytes]: ...
