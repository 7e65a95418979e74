#!/usr/bin/env python3
"""Prepares a camera frame as a notebook would; each "# %%" begins a cell. usage: notebook.py FRAME.nv21 COLUMNS ROWS"""
# prints: <Prepared 'frame.nv21': 1280 x 720, turned by 0, sharp, 16 rows>
# prints: row 1: 626 x 23, 44 letters, at 186, 13 on the photograph
import sys
from pathlib import Path

import numpy as np

import orvex_991 as orvex

# %% A photograph
cols, rows = int(sys.argv[2]), int(sys.argv[3])
frame = np.fromfile(sys.argv[1], np.uint8)
prepared = orvex.prepare(orvex.yuv2bgr(frame, rows, cols), file=sys.argv[1], format="NV21", crop=True)

# %% The page, its rows in colours and a table of facts, as a notebook shows them
prepared  # elsewhere it is one line:
print(prepared)

# %% What was measured
if prepared.sharpness and prepared.components:
    print(f"sharpness {prepared.sharpness.value}, letters {prepared.components.text_height} pixels high")

# %% Rows of text, cut out of the page
page = prepared.pictures.page
for number, row in enumerate(prepared.rows or (), 1):
    x, y, width, height = row.rect
    left, top = row.photo.corners[0]
    print(f"row {number}: {width} x {height}, {len(row.components)} letters, at {left}, {top} on the photograph")
    if page is not None:
        Path(f"row_{number:02}.pgm").write_bytes(b"P5 %d %d 255\n" % (width, height)
                                                 + page[y:y + height, x:x + width].tobytes())
