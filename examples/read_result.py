#!/usr/bin/env python3
"""Cuts each row of text out of page.png. usage: read_result.py FOLDER, the one that docprep has written to"""
import json
import sys
from pathlib import Path

from PIL import Image

folder = Path(sys.argv[1])
result = json.loads((folder / "result.json").read_text(encoding="utf-8"))
page = Image.open(folder / "page.png")
for number, row in enumerate(result["rows"], 1):
    rect = row["rect"]
    box = (rect["x"], rect["y"], rect["x"] + rect["width"], rect["y"] + rect["height"])
    page.crop(box).save(folder / f"row_{number:02}.png")
    left, top = row["photo"]["corners"][0]  # where the row begins on the photograph
    print(f"row {number}: {len(row['components'])} letters, at {left}, {top} on the photograph")
