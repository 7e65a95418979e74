# SPDX-License-Identifier: Apache-2.0
"""What make_samples.py and make_pages.py draw with: fonts, noise, seals, wood, and sheets laid into a scene.

Sizes are (width, height). Pictures that are computed with are float32 arrays of rows: colours 0..255, how
much of something a pixel holds 0..1. Needs Debian's python3-numpy, python3-pil and fontconfig.
"""
import dataclasses
import functools
import math
import subprocess
import sys

import numpy as np
from PIL import Image, ImageDraw, ImageFilter, ImageFont


@functools.lru_cache(maxsize=None)
def font_path(family, style):
    """Returns a font's file; stops if fontconfig would quietly put another font in its place."""
    answer = subprocess.check_output(
        ["fc-match", "-f", "%{family[0]}\n%{file}", f"{family}:style={style}"], text=True)
    found, path = answer.split("\n")
    if found != family:
        sys.exit(f"font {family} is missing: samples/README.md says which packages to install")
    return path


@functools.lru_cache(maxsize=None)
def load_font(name, size):
    """Returns the font `name` = (family, style), `size` drawing pixels high."""
    # The basic layout engine is always built in, so the letters fall alike wherever this runs.
    return ImageFont.truetype(font_path(*name), size, layout_engine=ImageFont.Layout.BASIC)


def smooth_noise(rng, size, cell):
    """Returns noise of about 0..1 over `size`, its blobs `cell` large; both are (width, height)."""
    (w, h), (cell_w, cell_h) = size, (max(1, round(extent)) for extent in cell)
    coarse = rng.random((h // cell_h + 2, w // cell_w + 2), dtype=np.float32)
    return np.asarray(Image.fromarray(coarse).resize((w, h), Image.BICUBIC))


def to_image(array):
    """Returns a float array of 0..255 as an 8-bit picture, rounded rather than cut."""
    return Image.fromarray(np.clip(array + 0.5, 0, 255).astype(np.uint8))


def blurred(array, radius):
    """Returns a float array of 0..1 softened by a Gaussian; 8 bits are enough for shadows."""
    soft = to_image(array * 255).filter(ImageFilter.GaussianBlur(radius))
    return np.asarray(soft, np.float32) / 255


@dataclasses.dataclass
class Seal:
    """A round stamp: two rings, a star in the middle and two texts between the rings."""
    radius: int
    top_text: str
    bottom_text: str
    turn: float                     # degrees; nobody stamps quite upright
    ink: tuple = (200, 30, 44)
    font: tuple = ("Nimbus Sans", "Bold")


def draw_letter(ink, letter, font, place, turn):
    """Adds one letter to the picture `ink`, its middle at `place`, turned anticlockwise by `turn` degrees."""
    side = 2 * font.size
    tile = Image.new("L", (side, side), 0)
    # Half a capital's height below the middle, for every letter: centred by their own boxes they would jump.
    baseline = side / 2 + 0.36 * font.size
    ImageDraw.Draw(tile).text((side / 2, baseline), letter, font=font, fill=255, anchor="ms")
    tile = tile.rotate(turn, Image.BICUBIC)
    ink.paste(255, (round(place[0] - side / 2), round(place[1] - side / 2)), tile)


def draw_rim_text(ink, text, font, radius, upright_at_top):
    """Sets `text` round the middle of `ink`, along the upper arc (read clockwise) or the lower one."""
    middle = ink.width / 2
    spacing = 0.15 * font.size
    widths = [font.getlength(letter) + spacing for letter in text]
    sense = 1 if upright_at_top else -1
    travelled = -sum(widths) / 2
    for letter, width in zip(text, widths):
        angle = (travelled + width / 2) / radius        # from the arc's middle, in reading direction
        travelled += width
        place = (middle + radius * math.sin(angle), middle - sense * radius * math.cos(angle))
        draw_letter(ink, letter, font, place, -sense * math.degrees(angle))


def draw_seal(rng, seal, scale):
    """Returns (ink, disc) of the seal, square arrays of 0..1: what the stamp prints, and all it covers."""
    big = scale * 3                                     # drawn larger and reduced: turned letters stay smooth
    r = seal.radius * big
    side = round(2 * (seal.radius + 6) * big)
    c = side / 2
    ink = Image.new("L", (side, side), 0)
    pen = ImageDraw.Draw(ink)
    for radius, width in ((1.0, 0.09), (0.58, 0.05)):
        pen.ellipse([c - r * radius, c - r * radius, c + r * radius, c + r * radius],
                    outline=255, width=round(r * width))
    points = []
    for k in range(10):                                 # a five-pointed star
        reach = r * (0.46 if k % 2 == 0 else 0.18)
        points.append((c + reach * math.sin(k * math.pi / 5), c - reach * math.cos(k * math.pi / 5)))
    pen.polygon(points, fill=255)
    font = load_font(seal.font, round(r * 0.20))
    draw_rim_text(ink, seal.top_text, font, r * 0.775, True)
    draw_rim_text(ink, seal.bottom_text, font, r * 0.775, False)
    for turn in (-1, 1):                                # a dot either side parts the two texts
        x, y, dot = c + turn * r * 0.775, c + r * 0.03, r * 0.035
        pen.ellipse([x - dot, y - dot, x + dot, y + dot], fill=255)
    disc = Image.new("L", (side, side), 0)
    ImageDraw.Draw(disc).ellipse([c - r, c - r, c + r, c + r], fill=255)

    size = (side // 3, side // 3)
    ink = ink.rotate(seal.turn, Image.BICUBIC).resize(size, Image.BOX)
    disc = disc.resize(size, Image.BOX)
    # Wear: fine specks where the paper took no ink, and larger weak places where the stamp lay lightly.
    specks = smooth_noise(rng, size, (4, 4)) * 0.55 + smooth_noise(rng, size, (44, 44)) * 0.45
    hold = np.clip((specks - 0.24) / 0.20, 0.12, 1)
    lean = np.linspace(0.80, 1.0, size[0], dtype=np.float32)
    strength = 0.92 * hold * lean[None, :]
    return np.asarray(ink, np.float32) / 255 * strength, np.asarray(disc, np.float32) / 255


def stamp(rng, page, seal, centre, scale):
    """Stamps the seal on the page, its middle at `centre`; returns its disc (0..1) over the whole page."""
    ink, disc = draw_seal(rng, seal, scale)
    side = ink.shape[0]
    x, y = (round(at - side / 2) for at in centre)
    view = page[y:y + side, x:x + side]                 # stamp ink is a stain: it multiplies what is below it
    view *= 1 - ink[..., None] * (1 - np.array(seal.ink, np.float32) / 255)
    covered = np.zeros(page.shape[:2], np.float32)
    covered[y:y + side, x:x + side] = disc
    return covered


def draw_wood(rng, size, colour, scale):
    """Returns boards stained in `colour`, their grain running across; `scale` sets how coarse it is."""
    w, h = size
    grain = np.zeros((h, w), np.float32)
    for cell, weight in (((1300, 2.5), 16), ((900, 7), 22), ((1500, 35), 26), ((45, 1.5), 9)):
        grain += (smooth_noise(rng, size, (cell[0] * scale, cell[1] * scale)) - 0.5) * weight
    # Real grain is never ruled straight.
    wander = (smooth_noise(rng, size, (450 * scale, 130 * scale)) - 0.5) * 55 * scale
    rows = np.clip(np.arange(h)[:, None] + wander, 0, h - 1).astype(np.intp)
    grain = np.take_along_axis(grain, rows, axis=0)
    y = np.arange(h, dtype=np.float32)
    for seam, tint in ((0.31, -9), (0.77, 13)):         # where a board ends, and how the next one differs
        grain[y > seam * h] += tint
        grain -= 46 * np.exp(-((y - seam * h) / (2.0 * scale)) ** 2)[:, None]
    return np.clip(np.array(colour, np.float32) * (1 + grain / 90)[..., None], 8, 255)


def plane_map(points, images):
    """Returns the eight coefficients of the perspective map that takes four points to their images."""
    equations, values = [], []
    for (x, y), (u, v) in zip(points, images):
        equations.append([x, y, 1, 0, 0, 0, -u * x, -u * y])
        equations.append([0, 0, 0, x, y, 1, -v * x, -v * y])
        values += [u, v]
    return np.linalg.solve(np.array(equations, np.float64), np.array(values, np.float64))


def mapped(coefficients, x, y):
    """Returns where a perspective map takes (x, y)."""
    a, b, c, d, e, f, g, k = coefficients
    bottom = g * x + k * y + 1
    return (a * x + b * y + c) / bottom, (d * x + e * y + f) / bottom


def fold_light(across, fold):
    """Returns what a pressed-out fold does to the light: the paper tips a little on either side, and the
    ridge is a fine darker line. Both arguments are fractions of the sheet's extent."""
    tip = -0.022 * np.tanh((across - fold) / 0.004) * np.exp(-np.abs(across - fold) / 0.09)
    ridge = -0.05 * np.exp(-((across - fold) / 0.0010) ** 2)
    return tip + ridge


def sheet_cover(u, v, size):
    """Returns how much (0..1) of each pixel the sheet covers: in part at its edges, to keep them smooth."""
    w, h = size
    inward = np.minimum(np.minimum(u, w - u), np.minimum(v, h - v))
    return np.clip(inward + 0.5, 0, 1).astype(np.float32)


def sample(array, u, v):
    """Returns `array` (one or three channels) read at (u, v) with linear interpolation; its rim goes on."""
    h, w = array.shape[:2]
    u, v = u - 0.5, v - 0.5                             # a pixel's value belongs to its middle
    left = np.clip(np.floor(u).astype(np.intp), 0, w - 2)
    top = np.clip(np.floor(v).astype(np.intp), 0, h - 2)
    fx, fy = np.clip(u - left, 0, 1).astype(np.float32), np.clip(v - top, 0, 1).astype(np.float32)
    if array.ndim == 3:
        fx, fy = fx[..., None], fy[..., None]
    upper = array[top, left] * (1 - fx) + array[top, left + 1] * fx
    lower = array[top + 1, left] * (1 - fx) + array[top + 1, left + 1] * fx
    return upper * (1 - fy) + lower * fy


def shadow_on(desk, cover, scale):
    """Darkens the desk beside the sheet: a narrow dark shadow touches it, a wide faint one goes on."""
    for shift, radius, depth in ((4, 5, 0.45), (16, 26, 0.40)):     # the lamp stands to the upper left
        fallen = np.roll(cover, (round(shift * scale), round(shift * scale)), axis=(0, 1))
        desk *= 1 - depth * blurred(fallen, radius * scale)[..., None]


def sensor_noise(rng, picture, strength):
    """Returns `picture` with a sensor's noise: more in bright places, its colour part in soft blots."""
    h, w = picture.shape[:2]
    sigma = (1.0 + 0.9 * np.sqrt(np.clip(picture.mean(axis=2), 0, 255) / 255)) * strength
    grain = rng.standard_normal((h, w), dtype=np.float32) * sigma
    blots = np.stack([smooth_noise(rng, (w, h), (3, 3)) - 0.5 for _ in range(3)], axis=-1) * (5 * strength)
    return picture + grain[..., None] + blots
