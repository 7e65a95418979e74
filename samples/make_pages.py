#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Makes a set of photographs of printed pages with their text, to measure how well they can be read.

usage: make_pages.py FOLDER [--seed N] [--count N] [--longest PIXELS] [--clean]

For each page it writes STEM.jpg or STEM.png, STEM.gt.txt (the printed text in reading order, one printed line
a line) and, where a seal lies, STEM.sealmask.png; and pages.json with every page's parameters. README.md says
what the pages are like. A seed gives the same bytes each time, with the same package versions.

What each page is like is chosen first (page_choice.py). The page is set (page_layout.py), drawn flat, seen by
a camera (turned askew, tilted, bent), and only then lit, softened and given noise, as it happens to a real
sheet.
"""
import argparse
import json
import math
import pathlib

import numpy as np
from PIL import Image, ImageDraw, ImageFilter

from drawing import (Seal, draw_wood, fold_light, mapped, plane_map, sample, sensor_noise, shadow_on,
                     sheet_cover, smooth_noise, stamp, to_image)
from page_choice import between, chosen_pages
from page_layout import LAYOUTS, Page
from page_text import SEAL_TEXTS, Words

DRAW = 1.5                          # drawing pixels of the sheet to a pixel of the photograph
EXIF_ORIENTATION = 0x0112
ORIENTATIONS = {0: 1, 90: 6, 180: 3, 270: 8}        # of a picture to be turned clockwise by that many degrees


class Camera:
    """Sees the sheet: from its plane, in heights of the sheet about its middle, to the photograph's pixels.

    A bent sheet rises from that plane like a cylinder, highest along its middle.
    """

    def __init__(self, page):
        self.width, self.height = page["size"]
        self.aspect = page["aspect"]
        self.bend = page["bend"]
        self.distance = page["distance"]
        roll, tilt = math.radians(page["skew"]), math.radians(page["tilt"])
        towards = math.radians(page["tilt_towards"])
        axis = turn_about(2, towards)
        self.pose = turn_about(2, roll) @ axis.T @ turn_about(0, tilt) @ axis

    def rise(self, x):
        """How far a bent sheet comes up from its plane, and the slope there."""
        wave = math.pi / self.aspect
        return self.bend * np.cos(wave * x), -self.bend * wave * np.sin(wave * x)

    def seen(self, x, y, rise):
        """Where a point of the sheet is seen, before the picture is scaled and moved into its frame."""
        points = self.pose @ np.stack([x, y, -rise])
        scale = self.distance / (points[2] + self.distance)
        return points[0] * scale, points[1] * scale

    def frame(self, box, margin, jitter):
        """Scales and moves what is seen, so that `box` (left, top, right, bottom) lies in the photograph."""
        along = np.linspace(0, 1, 41)
        left, top, right, bottom = box
        x = np.concatenate([left + (right - left) * along] * 2 + [np.full(41, left), np.full(41, right)])
        y = np.concatenate([np.full(41, top), np.full(41, bottom)] + [top + (bottom - top) * along] * 2)
        across, down = self.seen(x, y, self.rise(x)[0])
        spans = np.ptp(across), np.ptp(down)
        self.scale = min(self.width / spans[0], self.height / spans[1]) * (1 - 2 * margin)
        free = np.array([self.width - self.scale * spans[0], self.height - self.scale * spans[1]])
        self.shift = free * (0.5 + jitter) - self.scale * np.array([across.min(), down.min()])

    def sheet_coordinates(self):
        """Returns (u, v, slope): which point of the sheet, as fractions, each pixel shows, and its slope."""
        corners = np.array([[-1, -1], [1, -1], [1, 1], [-1, 1]]) * (self.aspect / 2, 0.5)
        seen = np.stack(self.seen(corners[:, 0], corners[:, 1], np.zeros(4)), axis=1)
        x = (np.arange(self.width, dtype=np.float32) + 0.5)[None, :]
        y = (np.arange(self.height, dtype=np.float32) + 0.5)[:, None]
        x, y = mapped(plane_map(seen * self.scale + self.shift, corners).tolist(), x, y)
        if not self.bend:
            return x / self.aspect + 0.5, y + 0.5, None
        # The line of sight meets the raised sheet between the plane's point and the eye.
        eye = -self.pose.T @ (0, 0, self.distance)
        half = self.aspect / 2
        met_x = x
        for _ in range(4):
            rise = self.rise(np.clip(met_x, -half, half))[0] / -eye[2]
            met_x = x + (eye[0] - x) * rise
        met_y = y + (eye[1] - y) * rise
        steps = np.linspace(-half, half, 2001)
        length = np.cumsum(np.sqrt(1 + self.rise(steps)[1] ** 2))
        along = np.interp(met_x, steps, (length - length[0]) / (length[-1] - length[0]))
        beyond = met_x - np.clip(met_x, -half, half)
        slope = np.where(beyond == 0, self.rise(met_x)[1], 0)
        return (along + beyond / self.aspect).astype(np.float32), (met_y + 0.5).astype(np.float32), slope


def turn_about(axis, angle):
    """Returns the matrix that turns space about one of its axes."""
    matrix = np.eye(3)
    a, b = [k for k in range(3) if k != axis]
    matrix[a, a] = matrix[b, b] = math.cos(angle)
    matrix[a, b], matrix[b, a] = -math.sin(angle), math.sin(angle)
    return matrix


def margins(page):
    """Returns the printed box's left, top, right and bottom as fractions of the sheet."""
    side = {"receipt": 0.07, "card": 0.08}.get(page["kind"], 0.09)
    return side, side * min(1, page["aspect"]), 1 - side, 1 - side * min(1, page["aspect"])


def framed(page, rng):
    """Returns (camera, size of the sheet in drawing pixels), the sheet in the camera's frame.

    All of it is, or of a sheet that fills the photograph the print alone. The page gets its letters' height.
    """
    camera = Camera(page)
    left, top, right, bottom = margins(page) if page["ground"] in ("filled", "scan") else (0, 0, 1, 1)
    box = (left - 0.5) * page["aspect"], top - 0.5, (right - 0.5) * page["aspect"], bottom - 0.5
    camera.frame(box, between(rng, 0.02, 0.06), rng.uniform(-0.3, 0.3, 2))
    # Between 12 and 40 pixels of the photograph; a line of N letters is about N of their heights wide.
    left, _, right, _ = margins(page)
    width = (right - left) * page["aspect"] * camera.scale
    page["x_height"] = round(min(40, max(12, width / page["letters"])), 2)
    return camera, (round(camera.scale * page["aspect"] * DRAW), round(camera.scale * DRAW))


def set_page(page, rng, size, border):
    """Returns the page set on a sheet of that many drawing pixels, with more paper round it."""
    w, h = size
    left, top, right, bottom = margins(page)
    box = (left * w + border, top * h + border, right * w + border, bottom * h + border)
    sheet = Page(Words(rng), box, page["family"], page["x_height"] * DRAW, page["leading"])
    LAYOUTS[page["kind"]](sheet, page["heading"])
    return sheet


def draw_ink(sheet, size, ink):
    """Returns a picture of what is printed in one ink, its rules included."""
    layer = Image.new("L", size, 0)
    pen = ImageDraw.Draw(layer)
    for line in sheet.lines:
        if line.ink == ink:
            for text, x in line.pieces:
                pen.text((round(x), round(line.baseline)), text, font=line.font, fill=255, anchor="ls")
    if ink == "print":
        for x0, y0, x1, y1, width in sheet.rules:
            pen.line([round(x0), round(y0), round(x1), round(y1)], fill=255, width=width)
    return layer


def draw_sheet(page, rng, size, border):
    """Returns (colours, seal's disc or None, the page as set) of the flat sheet in a border of bare paper."""
    sheet = set_page(page, rng, size, border)
    verso = set_page(page, rng, size, border)
    size = (size[0] + 2 * border, size[1] + 2 * border)
    fibre = (smooth_noise(rng, size, (3, 3)) * 0.45 + smooth_noise(rng, size, (11, 7)) * 0.25
             + smooth_noise(rng, size, (140, 140)) * 0.30)
    paper = np.array(page["paper"], np.float32) + ((fibre - 0.5) * 16)[..., None]
    if page["bleed"]:
        back = draw_ink(verso, size, "print").transpose(Image.FLIP_LEFT_RIGHT)
        soft = np.asarray(back.filter(ImageFilter.GaussianBlur(2.0)), np.float32) / 255
        paper *= 1 - page["bleed"] * soft[..., None]
    grey = page["print_ink"]
    evenness = 0.86 + 0.14 * np.clip(smooth_noise(rng, size, (4, 4)) * 1.6, 0, 1)
    for ink, colour in (("print", (grey, grey, grey + 6)), ("red", (186, 30, 40))):
        cover = (np.asarray(draw_ink(sheet, size, ink), np.float32) / 255 * evenness)[..., None]
        paper += cover * (np.array(colour, np.float32) - paper)
    disc = None
    if page["seal"]:
        disc = stamp_seal(rng, sheet, paper)
    for axis, place in page["folds"]:
        extent = size["xy".index(axis)]
        across = (np.arange(extent, dtype=np.float32) + 0.5 - border) / (extent - 2 * border)
        light = (1 + 1.5 * fold_light(across, place)).astype(np.float32)
        paper *= light[None, :, None] if axis == "x" else light[:, None, None]
    return paper, disc, sheet


def stamp_seal(rng, sheet, paper):
    """Stamps a seal into the lower right of the printed box, partly over print; returns its disc."""
    width, height = sheet.right - sheet.left, sheet.bottom - sheet.top
    radius = round(min(rng.uniform(6, 9) * sheet.x_height, 0.19 * min(width, height)) / DRAW)
    top_text, bottom_text = SEAL_TEXTS[rng.integers(len(SEAL_TEXTS))]
    turn = between(rng, -20, 20)
    seal = Seal(radius, top_text, bottom_text, turn, ink=(205, int(rng.integers(20, 60)), 50))
    centre = [sheet.left + rng.uniform(0.55, 1) * width, sheet.top + rng.uniform(0.55, 1) * height]
    reach = (radius + 7) * DRAW
    centre = [min(max(at, reach), extent - reach) for at, extent in zip(centre, paper.shape[1::-1])]
    return stamp(rng, paper, seal, centre, DRAW)


def ground(page, rng):
    """Returns what the sheet lies on."""
    size = page["size"]
    scale = max(size) / 1600
    if "wood" in page["ground"]:
        colours = {"dark wood": ((74, 52, 38), (60, 62, 68), (92, 66, 48)),
                   "light wood": ((190, 160, 122), (206, 184, 150), (172, 150, 124))}[page["ground"]]
        return draw_wood(rng, size, colours[rng.integers(3)], scale)
    colours = ((52, 60, 72), (120, 122, 124), (70, 96, 84), (150, 140, 128), (30, 32, 36))
    weave, folds = smooth_noise(rng, size, (2, 2)), smooth_noise(rng, size, (300 * scale, 300 * scale))
    cloth = weave * 10 + folds * 16 - 13
    return np.array(colours[rng.integers(len(colours))], np.float32) + cloth[..., None]


def turned_axes(x, y, direction):
    """Returns (along, beside): how far each pixel lies in a direction, and at right angles to it."""
    a = math.radians(direction)
    return x * math.cos(a) + y * math.sin(a), y * math.cos(a) - x * math.sin(a)


def room_light(page):
    """Returns the light at each pixel: a gradient or a lamp, darker corners, a shadow, interference."""
    light = page["light"]
    w, h = page["size"]
    long = max(w, h)
    x = ((np.arange(w, dtype=np.float32) + 0.5 - w / 2) / long)[None, :]
    y = ((np.arange(h, dtype=np.float32) + 0.5 - h / 2) / long)[:, None]
    strength = light["strength"]
    along, _ = turned_axes(x, y, light["direction"])
    lamp = np.hypot(x - (light["x"] - 0.5) * w / long, y - (light["y"] - 0.5) * h / long)
    gain = {"even": lambda: np.ones((h, w), np.float32),
            "linear": lambda: 1.0 - strength * (along + 0.5),
            "radial": lambda: 1.05 - strength * np.minimum(lamp, 1) ** 1.3,
            "lamp": lambda: 0.72 + 1.05 * strength * np.exp(-(lamp / 0.33) ** 2)}[light["kind"]]()
    gain = gain * light["level"] * (1 - page["vignette"] * (x ** 2 + y ** 2) / 0.4)
    shadow = page["shadow"]
    if shadow:
        along, beside = turned_axes(x, y, shadow["direction"])
        edge = along - (shadow["at"] - 0.5) * 0.7 + shadow["bow"] * np.sin(6 * beside)
        gain *= 1 - shadow["depth"] * (0.5 + 0.5 * np.tanh(edge / shadow["softness"]))
    if page["moire"]:
        along, beside = turned_axes(x, y, light["direction"] + 20)
        fine = np.sin(along * long * 0.9 + 3 * np.sin(beside * 9))
        slow = np.sin((along + 0.3 * beside) * 60 + 2 * np.sin(beside * 14))
        gain *= 1 + page["moire"] * (slow + 0.6 * fine * slow)
    return gain


def defocused(picture, radius):
    """Returns a float picture seen through a lens out of focus: each pixel the mean over a disc."""
    reach = math.ceil(radius)
    side = 2 * reach + 1
    fine = (np.arange(side * 8) + 0.5) / 8 - side / 2   # eighths of a pixel, from the disc's middle
    disc = (fine[:, None] ** 2 + fine[None, :] ** 2 <= radius ** 2).reshape(side, 8, side, 8)
    weights = disc.mean(axis=(1, 3)) / disc.mean(axis=(1, 3)).sum()
    h, w = picture.shape[:2]
    wide = np.pad(picture, ((reach, reach), (reach, reach), (0, 0)), mode="edge")
    total = np.zeros_like(picture)
    for row in range(side):
        for column in range(side):
            if weights[row, column]:
                total += float(weights[row, column]) * wide[row:row + h, column:column + w]
    return total


def through_the_lens(page, scene):
    """Returns the scene softened as much as the page's letters bear."""
    if page["focus"] == "defocused":
        return defocused(scene, max(1.0, 1.6 * page["blur"] * page["x_height"]))
    radius = page["blur"] if page["focus"] == "sharp" else max(0.8, page["blur"] * page["x_height"])
    return np.asarray(to_image(scene).filter(ImageFilter.GaussianBlur(radius)), np.float32)


def take_photograph(page):
    """Returns (photograph, seal mask or None, text), as the camera stores them."""
    rng = np.random.default_rng(page["seed"] + [1])
    camera, size = framed(page, rng)
    u, v, slope = camera.sheet_coordinates()
    u, v = u * size[0], v * size[1]
    border = 0
    if page["ground"] in ("filled", "scan"):            # paper wherever the photograph looks
        border = max(0, math.ceil(max(-u.min(), u.max() - size[0], -v.min(), v.max() - size[1])) + 2)
    paper, disc, sheet = draw_sheet(page, rng, size, border)
    scene = sample(paper, u + border, v + border)
    if slope is not None:
        scene *= (1 + 0.6 * slope)[..., None]
    if page["ground"] not in ("filled", "scan"):
        cover = sheet_cover(u / DRAW, v / DRAW, (size[0] / DRAW, size[1] / DRAW))
        desk = ground(page, rng)
        shadow_on(desk, cover, max(page["size"]) / 1600)
        scene = desk + (scene - desk) * cover[..., None]
    scene = scene * room_light(page)[..., None] * np.array(page["tone"], np.float32)
    soft = through_the_lens(page, scene)
    photo = to_image(sensor_noise(rng, soft, page["noise"]))
    mask = None
    if disc is not None:
        seen = sample(disc, u + border, v + border) >= 0.5
        mask = as_stored(page, Image.fromarray(np.where(seen, 255, 0).astype(np.uint8)))
    return as_stored(page, photo), mask, text_of(sheet)


def text_of(sheet):
    return "".join(line.text() + "\n" for line in sheet.lines)


def as_stored(page, picture):
    """Returns the picture turned so that it has to be turned clockwise by page["turn"] to be read."""
    return Image.fromarray(np.rot90(np.asarray(picture), page["turn"] // 90).copy())


def clean_page(page):
    """Returns (picture, None, text) of the same page as it was set: level, black and red on white."""
    rng = np.random.default_rng(page["seed"] + [1])
    _, size = framed(page, rng)
    sheet = set_page(page, rng, size, 0)
    picture = Image.new("RGB", size, "white")
    for ink, colour in (("print", "black"), ("red", (186, 30, 40))):
        picture.paste(colour, mask=draw_ink(sheet, size, ink))
    return picture.resize((round(size[0] / DRAW), round(size[1] / DRAW)), Image.LANCZOS), None, text_of(sheet)


def write_page(page, folder, clean):
    photo, mask, text = clean_page(page) if clean else take_photograph(page)
    stem = folder / page["name"]
    if clean or page["quality"] is None:
        photo.save(stem.with_suffix(".png"))
    else:
        exif = Image.Exif()
        if page["exif"]:
            exif[EXIF_ORIENTATION] = ORIENTATIONS[page["turn"]]
        photo.save(stem.with_suffix(".jpg"), quality=page["quality"], exif=exif)
    if mask:
        mask.save(stem.with_suffix(".sealmask.png"), optimize=True)
    with open(stem.with_suffix(".gt.txt"), "w", encoding="ascii", newline="\n") as file:
        file.write(text)


def main():
    parser = argparse.ArgumentParser(description="Makes photographs of printed pages, with their text.")
    parser.add_argument("folder", type=pathlib.Path, help="where to write; made if need be")
    parser.add_argument("--seed", type=int, default=1, help="another seed, another set (default: 1)")
    parser.add_argument("--count", type=int, default=24, help="how many pages (default: 24)")
    parser.add_argument("--longest", type=int, metavar="PIXELS",
                        help="the longer side of all pages (default: 800 to 3000)")
    parser.add_argument("--clean", action="store_true",
                        help="the pages as they were set: level, sharp, evenly lit")
    arguments = parser.parse_args()
    arguments.folder.mkdir(parents=True, exist_ok=True)
    pages = chosen_pages(arguments.seed, arguments.count, arguments.longest)
    for page in pages:
        write_page(page, arguments.folder, arguments.clean)
    with open(arguments.folder / "pages.json", "w", encoding="ascii", newline="\n") as file:
        json.dump(pages, file, indent=1)
        file.write("\n")


if __name__ == "__main__":
    main()
