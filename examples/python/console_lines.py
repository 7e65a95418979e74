#!/usr/bin/env python3
"""What the library prints, and what it raises."""
# prints: bgr2gray, thresholdSeg
# prints: code 1: input error 1 == src.channels
# prints: a failed check prints 3 lines
import numpy as np

import orvex_991 as orvex

photo = np.zeros((480, 640, 3), np.uint8)
orvex.bgr2gray(photo)  # silent

with orvex.log() as lines:
    grey = orvex.bgr2gray(photo)
    orvex.thresholdSeg(grey, 128)
# D cv_imgproc.cpp:108] bgr2gray cost time: 0.153421ms
print(", ".join(line.split("] ")[1].split(" ")[0] for line in lines))

try:
    orvex.otsu(photo)
except orvex.Error as error:
    print(error)
    print("a failed check prints", len(error.lines), "lines")  # there is error.code, too, and error.message
