#!/usr/bin/env python3
"""What the library prints, and what it raises. usage: console_lines.py"""
# prints: silent
# prints: logged 2 lines
# prints: code 1: input error 1 == src.channels
# prints: [warn]
import numpy as np

import orvex_991 as orvex

photo = np.zeros((480, 640, 3), np.uint8)
orvex.bgr2gray(photo)
print("silent")

with orvex.log() as lines:
    grey = orvex.bgr2gray(photo)
    orvex.thresholdSeg(grey, 128)
print("logged", len(lines), "lines")

with orvex.log() as lines:
    try:
        orvex.otsu(photo)
    except orvex.Error as error:
        print(error)  # also has .code, .message and .lines
print(lines[1].split("file")[0])
