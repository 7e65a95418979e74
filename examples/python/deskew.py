#!/usr/bin/env python3
"""Turns a page upright by the angle of its ink. usage: deskew.py"""
# prints: leans by 5 degrees
# prints: upright: True
import math

import numpy as np

import orvex_991 as orvex

page = np.full((300, 400), 230, np.uint8)
page[100:200, 60:340] = 40  # one block of ink
turn = orvex.getRotationMatrix2D((200, 150), 5, 1)
photo = orvex.warpAffine(page, turn, (400, 300))

_, ink = orvex.threshold(photo, type=9)  # 8 finds the level, 1 makes the ink white
rect = orvex.minAreaRect(ink)
leans = math.degrees(orvex.getRotatedRectAngle(rect)) - 90
print(f"leans by {leans:.0f} degrees")

back = orvex.getRotationMatrix2D(rect.center, -leans, 1)
upright = orvex.warpAffine(photo, back, orvex.Size(400, 300))
_, ink = orvex.threshold(upright, type=9)
_, _, width, height = orvex.connectdComponent(ink)[0]  # larger areas first
print("upright:", abs(width - 280) < 5 and abs(height - 100) < 5)
