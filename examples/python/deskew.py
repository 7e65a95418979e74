#!/usr/bin/env python3
"""Levels a page: the angle of its longest line of text, then one warp."""
# prints: lines rise by 4.0 degrees, then by 0.0
from __future__ import annotations

import numpy as np
from numpy.typing import NDArray

import orvex_991 as orvex


def rise_of_lines(binary: NDArray[np.uint8]) -> float:
    """By how many degrees the longest line of text rises to the right. Print is 255, paper 0."""
    lines = orvex.closeBinary(binary, (25, 3))  # the letters of a line grow together
    _, pixels = orvex.connectdComponent(lines, points=True)  # larger rectangles come first
    box = orvex.minAreaRect(pixels[0])
    side = 0 if box.width > box.height else 1  # the longer one begins at this corner
    degrees = orvex.calcLineDegree(box.pts[side], box.pts[side + 1])
    return degrees - 180 if degrees > 90 else degrees


def turned(image: NDArray[np.uint8], degrees: float) -> NDArray[np.uint8]:
    rows, cols = image.shape
    matrix = orvex.getRotationMatrix2D(((cols - 1) / 2, (rows - 1) / 2), degrees, 1)
    return orvex.warpAffine(image, matrix, (cols, rows))


if __name__ == "__main__":
    page = np.zeros((400, 600), np.uint8)
    for top in range(80, 320, 40):  # six lines of letters
        for left in range(80, 520, 16):
            page[top:top + 14, left:left + 10] = 255
    page = turned(page, 4)
    rise = rise_of_lines(page)
    print(f"lines rise by {rise:.1f} degrees, then by {abs(rise_of_lines(turned(page, -rise))):.1f}")
