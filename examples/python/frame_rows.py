#!/usr/bin/env python3
"""From a camera frame in NV21 to the rows of text on it. usage: frame_rows.py FRAME.nv21 COLUMNS ROWS"""
# prints: 1280 x 720, 22 rows
import sys

import numpy as np

import orvex_991 as orvex

cols, rows = int(sys.argv[2]), int(sys.argv[3])
frame = np.fromfile(sys.argv[1], np.uint8)
grey = orvex.bgr2gray(orvex.yuv2bgr(frame, rows, cols))

ink = orvex.adaptiveThreshold(grey, block_size=31, std_ratio=-0.2, inverse=True)
joined = orvex.closeBinary(ink, (15, 1))  # letters of a word touch
words = orvex.connectdComponent(joined)  # x, y, width, height
words = words[(words[:, 3] >= 8) & (words[:, 3] <= 60) & (words[:, 2] < cols // 2)]

text = orvex.divideComponentsToRows(words)
print(f"{cols} x {rows}, {len(text)} rows")
for row in text:
    left, top = row[:, 0].min(), row[:, 1].min()
    print(f"at {left}, {top}: {len(row)} words")
