#!/usr/bin/env python3
"""Rows of text in a camera frame. usage: frame_rows.py FRAME COLS ROWS   (NV21, without padding)"""
# prints: 15 rows, the first of 48 letters
from __future__ import annotations

import sys

import numpy as np
from numpy.typing import NDArray

import orvex_991 as orvex


def text_rows(frame: NDArray[np.uint8], rows: int, cols: int) -> list[NDArray[np.int32]]:
    """Rectangles (x, y, width, height) of letters, row by row; dark print on light paper."""
    grey = orvex.bgr2gray(orvex.yuv2bgr(frame, rows, cols))
    _, binary = orvex.threshold(grey, type=8 | 1)  # Otsu, dark becomes 255
    components = orvex.connectdComponent(binary)
    heights = components[:, 3]
    letters = components[(heights > 4) & (heights < rows // 20)]  # neither specks nor the desk around
    return orvex.divideComponentsToRows(letters)


if __name__ == "__main__":
    text = text_rows(np.fromfile(sys.argv[1], np.uint8), cols=int(sys.argv[2]), rows=int(sys.argv[3]))
    print(f"{len(text)} rows, the first of {len(text[0])} letters")
