"""Image processing for reading documents on phones: the operations of orvex_991 on numpy arrays.

Images are uint8 arrays, H x W (grey, binary) or H x W x 3 (B, G, R). Results are returned, inputs are never
written, and the bytes are those of the C++ library on every processor.
"""

from ._core import __version__, bgr2gray, otsu
from ._log import log
from ._types import INTERP_TYPE, MORPH_TYPE, Error, Point, Point32f, Rect, RotatedRect, Size

__all__ = [
    "INTERP_TYPE",
    "MORPH_TYPE",
    "Error",
    "Point",
    "Point32f",
    "Rect",
    "RotatedRect",
    "Size",
    "__version__",
    "bgr2gray",
    "log",
    "otsu",
]
