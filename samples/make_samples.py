# SPDX-License-Identifier: Apache-2.0
"""Draws the sample pictures that lie beside this file.

usage: make_samples.py [FOLDER]        (FOLDER: where to write; without it, the folder of this file)

Writes page.jpg, page.gt.txt, page.seal.png and frame_1280x720.nv21.gz; README.md says what each one is.
Needs Debian's python3-numpy, python3-pil, fontconfig, fonts-liberation2 and fonts-urw-base35.

The page is drawn flat, warped onto a desk, and only then lit, softened and given noise: the same order in
which a real sheet reaches a camera's sensor. Warping is done at twice the photograph's size and reduced
afterwards, so that edges come out smooth without any special filter. Lengths below are in pixels of the
photograph unless a comment says otherwise; SCALE turns them into pixels of the larger drawing.
"""
import gzip
import math
import os
import subprocess
import sys

import numpy as np
from PIL import Image, ImageDraw, ImageFilter, ImageFont

SEED = 20817
SCALE = 2

PHOTO_SIZE = (1600, 1200)
PAGE_SIZE = (1480, 1100)
# Where the sheet's corners lie in the photograph: top left, top right, bottom right, bottom left. The top is
# narrower, as when the camera leans forward, and nearly level, so that every printed line stays nearly level.
PAGE_CORNERS = ((84, 57), (1521, 46), (1562, 1150), (39, 1157))
BEND = 3.0                      # how far the sheet bows up and down across its width
FOLD = 0.505                    # where, across its width, the sheet was once folded

HEADING = "Quillmoor Toy Workshop"
REFERENCE = "Delivery note No. 2817, written on Monday, 14 October 2024"
BODY = (
    "Dear friends at the harbour school,",
    "Thank you for your order of 26 September. Today we are sending you three crates by",
    "the morning boat, and each of them carries a blue label with its own number.",
    "Crate 1 holds 24 wooden trains, 48 wagons and 6 boxes of straight and curved track.",
    "Crate 2 holds 15 spinning tops, 30 kites with 40 metres of cord, and 12 small drums.",
    "Crate 3 holds the puppet stage. Please open it with two people, as it weighs 37 kg.",
    "All the paint is made from plants and chalk, and it has dried for at least 21 days.",
    "If a wheel should ever come loose, warm the axle in your hand and press it back on.",
    "We have added a bag of 50 spare pegs and a tin of beeswax, which cost you nothing.",
    "The price of everything is 418.50, of which you have already paid us 200.00.",
    "There is no hurry about the rest: the end of November will suit us very well.",
    "The old rocking horse is back on our bench, and we hope to return it before winter.",
    "Please give our best wishes to the children, and tell them to write to us again.",
)
SIGN_OFF = ("With kind regards,", "The bench team at Quillmoor")

HEADING_FONT = ("C059", "Bold")
BODY_FONT = ("Liberation Sans", "Regular")
SEAL_FONT = ("Nimbus Sans", "Bold")
HEADING_SIZE = 46
BODY_SIZE = 30
LEFT_MARGIN = 156
LINE_STEP = 50                  # about 1.7 times the size of the letters
# Baselines on the sheet. The camera frame cuts the heading off above; it keeps all other lines and the seal.
HEADING_BASELINE = 86
REFERENCE_BASELINE = 144
BODY_BASELINE = 206
SIGN_OFF_BASELINE = 888

PRINT_INK = (30, 30, 36)
PAPER = (247, 244, 236)
DESK = (74, 80, 90)              # not a reddish wood, which a search for red seals could not tell from ink

SEAL_CENTRE = (1206, 910)       # on the sheet: lower right, beside the sign-off and below the body
SEAL_RADIUS = 84
SEAL_TURN = 11                  # degrees; nobody stamps quite upright
SEAL_INK = (200, 30, 44)
SEAL_TOP_TEXT = "QUILLMOOR TOYS"
SEAL_BOTTOM_TEXT = "CHECKED TWICE"

LIGHT_TONE = (1.03, 1.015, 0.98)  # a warm lamp
LENS_BLUR = 0.75
JPEG_QUALITY = 88

FRAME_SIZE = (1280, 720)


def load_font(name, size):
    """Returns a font of `size` drawing pixels; stops if fontconfig would quietly put another in its place."""
    family, style = name
    answer = subprocess.check_output(
        ["fc-match", "-f", "%{family[0]}\n%{file}", f"{family}:style={style}"], text=True)
    found, path = answer.split("\n")
    if found != family:
        sys.exit(f"font {family} is missing: install fonts-liberation2 and fonts-urw-base35")
    # The basic layout engine is always built in, so the letters fall alike wherever this runs.
    return ImageFont.truetype(path, size, layout_engine=ImageFont.Layout.BASIC)


def smooth_noise(rng, size, cell):
    """Returns noise of about 0..1 over `size`, its blobs `cell` large; both are (width, height)."""
    (w, h), (cell_w, cell_h) = size, cell
    coarse = rng.random((h // cell_h + 2, w // cell_w + 2), dtype=np.float32)
    return np.asarray(Image.fromarray(coarse).resize((w, h), Image.BICUBIC))


def to_image(array):
    """Returns a float array of 0..255 as an 8-bit picture, rounded rather than cut."""
    return Image.fromarray(np.clip(array + 0.5, 0, 255).astype(np.uint8))


def blurred(array, radius):
    """Returns a float array of 0..1 softened by a Gaussian; 8 bits are enough for shadows."""
    soft = to_image(array * 255).filter(ImageFilter.GaussianBlur(radius))
    return np.asarray(soft, np.float32) / 255


def printed_lines():
    """Returns (text, baseline, font name, size) of every printed line, in reading order."""
    lines = [(HEADING, HEADING_BASELINE, HEADING_FONT, HEADING_SIZE),
             (REFERENCE, REFERENCE_BASELINE, BODY_FONT, BODY_SIZE)]
    for first, texts in ((BODY_BASELINE, BODY), (SIGN_OFF_BASELINE, SIGN_OFF)):
        lines += [(text, first + k * LINE_STEP, BODY_FONT, BODY_SIZE) for k, text in enumerate(texts)]
    return lines


def draw_print(rng):
    """Returns how much ink (0..1) the printed text leaves at each pixel of the sheet."""
    size = (PAGE_SIZE[0] * SCALE, PAGE_SIZE[1] * SCALE)
    layer = Image.new("L", size, 0)
    pen = ImageDraw.Draw(layer)
    for text, baseline, name, points in printed_lines():
        font = load_font(name, points * SCALE)
        pen.text((LEFT_MARGIN * SCALE, baseline * SCALE), text, font=font, fill=255, anchor="ls")
    # A printer never lays its ink down quite evenly.
    evenness = 0.86 + 0.14 * np.clip(smooth_noise(rng, size, (5, 5)) * 1.6, 0, 1)
    return np.asarray(layer, np.float32) / 255 * evenness


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


def draw_seal(rng):
    """Returns (ink, disc) of the seal, square arrays of 0..1: what the stamp prints, and all it covers."""
    big = SCALE * 3                                     # drawn larger and reduced: turned letters stay smooth
    r = SEAL_RADIUS * big
    side = 2 * (SEAL_RADIUS + 6) * big
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
    font = load_font(SEAL_FONT, round(r * 0.20))
    draw_rim_text(ink, SEAL_TOP_TEXT, font, r * 0.775, True)
    draw_rim_text(ink, SEAL_BOTTOM_TEXT, font, r * 0.775, False)
    for turn in (-1, 1):                                # a dot either side parts the two texts
        x, y, dot = c + turn * r * 0.775, c + r * 0.03, r * 0.035
        pen.ellipse([x - dot, y - dot, x + dot, y + dot], fill=255)
    disc = Image.new("L", (side, side), 0)
    ImageDraw.Draw(disc).ellipse([c - r, c - r, c + r, c + r], fill=255)

    size = (side // 3, side // 3)
    ink = ink.rotate(SEAL_TURN, Image.BICUBIC).resize(size, Image.BOX)
    disc = disc.resize(size, Image.BOX)
    # Wear: fine specks where the paper took no ink, and larger weak places where the stamp lay lightly.
    specks = smooth_noise(rng, size, (4, 4)) * 0.55 + smooth_noise(rng, size, (44, 44)) * 0.45
    hold = np.clip((specks - 0.24) / 0.20, 0.12, 1)
    lean = np.linspace(0.80, 1.0, size[0], dtype=np.float32)
    strength = 0.92 * hold * lean[None, :]
    return np.asarray(ink, np.float32) / 255 * strength, np.asarray(disc, np.float32) / 255


def draw_page(rng):
    """Returns the flat sheet as (colours 0..255, seal's disc 0..1)."""
    size = (PAGE_SIZE[0] * SCALE, PAGE_SIZE[1] * SCALE)
    fibre = (smooth_noise(rng, size, (4, 4)) * 0.45 + smooth_noise(rng, size, (14, 9)) * 0.25
             + smooth_noise(rng, size, (190, 190)) * 0.30)
    page = np.array(PAPER, np.float32) + ((fibre - 0.5) * 20)[..., None]

    ink, disc = draw_seal(rng)
    side = ink.shape[0]
    x, y = (round(at * SCALE - side / 2) for at in SEAL_CENTRE)
    view = page[y:y + side, x:x + side]                 # stamp ink is a stain: it multiplies what is below it
    view *= 1 - ink[..., None] * (1 - np.array(SEAL_INK, np.float32) / 255)
    seal = np.zeros(page.shape[:2], np.float32)
    seal[y:y + side, x:x + side] = disc

    cover = draw_print(rng)[..., None]
    return page * (1 - cover) + np.array(PRINT_INK, np.float32) * cover, seal


def draw_desk(rng):
    """Returns the bare desk, at drawing size: boards stained slate blue, their grain running across."""
    size = w, h = PHOTO_SIZE[0] * SCALE, PHOTO_SIZE[1] * SCALE
    grain = np.zeros((h, w), np.float32)
    for cell, weight in (((2600, 5), 16), ((1800, 14), 22), ((3000, 70), 26), ((90, 3), 9)):
        grain += (smooth_noise(rng, size, cell) - 0.5) * weight
    wander = (smooth_noise(rng, size, (900, 260)) - 0.5) * 110      # real grain is never ruled straight
    rows = np.clip(np.arange(h)[:, None] + wander, 0, h - 1).astype(np.intp)
    grain = np.take_along_axis(grain, rows, axis=0)
    y = np.arange(h, dtype=np.float32)
    for seam, tint in ((0.31, -9), (0.77, 13)):         # where a board ends, and how the next one differs
        grain[y > seam * h] += tint
        grain -= 46 * np.exp(-((y - seam * h) / 4.0) ** 2)[:, None]
    return np.clip(np.array(DESK, np.float32) * (1 + grain / 90)[..., None], 8, 255)


def page_coordinates():
    """Returns (u, v): which point of the flat sheet, in drawing pixels, each pixel of the scene shows."""
    w, h = PAGE_SIZE
    equations, values = [], []
    for (x, y), (u, v) in zip(PAGE_CORNERS, ((0, 0), (w, 0), (w, h), (0, h))):
        equations.append([x, y, 1, 0, 0, 0, -u * x, -u * y])
        equations.append([0, 0, 0, x, y, 1, -v * x, -v * y])
        values += [u, v]
    a, b, c, d, e, f, g, k = np.linalg.solve(np.array(equations, np.float64), np.array(values, np.float64))
    x = (np.arange(PHOTO_SIZE[0] * SCALE) + 0.5)[None, :] / SCALE
    y = (np.arange(PHOTO_SIZE[1] * SCALE) + 0.5)[:, None] / SCALE
    bottom = g * x + k * y + 1
    u, v = (a * x + b * y + c) / bottom, (d * x + e * y + f) / bottom
    v = v + BEND * np.sin(bend_angle(u / w))            # paper that has been rolled or folded never lies flat
    return u * SCALE, v * SCALE


def bend_angle(across):
    """Returns where in its wave the sheet's bow is, `across` being 0 at the left edge and 1 at the right."""
    return (across * 1.25 + 0.15) * math.pi


def sheet_light(u):
    """Returns how the sheet's own shape brightens or dims it: a slope facing the lamp catches more light."""
    across = u / (PAGE_SIZE[0] * SCALE)
    bow = 0.035 * np.cos(bend_angle(across))
    # A pressed-out fold still tips the paper a little on either side, and its ridge is a fine darker line.
    tip = -0.022 * np.tanh((across - FOLD) / 0.004) * np.exp(-np.abs(across - FOLD) / 0.09)
    ridge = -0.05 * np.exp(-((across - FOLD) / 0.0010) ** 2)
    return (1 + bow + tip + ridge).astype(np.float32)


def sheet_cover(u, v):
    """Returns how much (0..1) of each pixel the sheet covers: in part at its edges, to keep them smooth."""
    w, h = PAGE_SIZE[0] * SCALE, PAGE_SIZE[1] * SCALE
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


def reduced(array):
    """Returns `array` at the photograph's size, each pixel the mean of SCALE x SCALE drawing pixels."""
    h, w = array.shape[0] // SCALE, array.shape[1] // SCALE
    return array.reshape(h, SCALE, w, SCALE, -1).mean(axis=(1, 3))


def lay_page_on_desk(rng):
    """Returns (scene 0..255 in even light, seal's disc 0..1), both at the photograph's size."""
    page, seal = draw_page(rng)
    u, v = page_coordinates()
    sheet = sample(page, u, v) * sheet_light(u)[..., None]
    cover = sheet_cover(u, v)
    # The lamp stands to the upper left: a narrow dark shadow touches the sheet, a wide faint one goes on.
    desk = draw_desk(rng)
    for shift, radius, depth in ((4, 5, 0.45), (16, 26, 0.40)):
        fallen = np.roll(cover, (shift * SCALE, shift * SCALE), axis=(0, 1))
        desk *= 1 - depth * blurred(fallen, radius * SCALE)[..., None]
    cover = cover[..., None]
    return reduced(desk * (1 - cover) + sheet * cover), reduced(sample(seal, u, v))[..., 0]


def room_light():
    """Returns the light at each pixel of the photograph: a lamp's falloff, a soft shadow, darker corners.

    Its least value on the sheet leaves the paper well above the ink in the brightest place, so that one
    threshold can part the two over the whole picture.
    """
    w, h = PHOTO_SIZE
    x = ((np.arange(w, dtype=np.float32) + 0.5) / w)[None, :]
    y = ((np.arange(h, dtype=np.float32) + 0.5) / h)[:, None]
    falloff = 1.0 - 0.17 * (0.75 * x + 0.66 * y)
    # The photographer's arm: a shadow with a soft, slightly curved edge over the right side.
    edge = x - 0.80 + 0.26 * (y - 0.5) + 0.05 * np.sin(5.0 * y)
    shadow = 1 - 0.15 * (0.5 + 0.5 * np.tanh(edge / 0.075))
    corners = 1 - 0.15 * ((x - 0.5) ** 2 + (y - 0.5) ** 2 * (h / w) ** 2) / 0.39
    return falloff * shadow * corners


def sensor_noise(rng, picture):
    """Returns `picture` with a small sensor's noise: more in bright places, its colour part in soft blots."""
    h, w = picture.shape[:2]
    sigma = 1.0 + 0.9 * np.sqrt(np.clip(picture.mean(axis=2), 0, 255) / 255)
    grain = rng.standard_normal((h, w), dtype=np.float32) * sigma
    blots = np.stack([smooth_noise(rng, (w, h), (3, 3)) - 0.5 for _ in range(3)], axis=-1) * 5
    return picture + grain[..., None] + blots


def take_photograph(rng):
    """Returns (photograph as an 8-bit picture, seal mask as an 8-bit picture of 0 and 255)."""
    scene, disc = lay_page_on_desk(rng)
    lit = scene * room_light()[..., None] * np.array(LIGHT_TONE, np.float32)
    soft = np.asarray(to_image(lit).filter(ImageFilter.GaussianBlur(LENS_BLUR)), np.float32)
    photo = to_image(sensor_noise(rng, soft))
    return photo, Image.fromarray(np.where(disc >= 0.5, 255, 0).astype(np.uint8))


def nv21_frame(photo):
    """Returns one NV21 camera frame cut from the middle of `photo`: luma rows, then rows of V,U pairs."""
    fw, fh = FRAME_SIZE
    kept = photo.width * fh // fw
    top = (photo.height - kept) // 2
    frame = photo.crop((0, top, photo.width, top + kept)).resize(FRAME_SIZE, Image.LANCZOS)
    red, green, blue = (np.asarray(channel, np.int32) for channel in frame.split())
    # Video-range BT.601 in the integers that phones use.
    luma = 16 + ((66 * red + 129 * green + 25 * blue + 128) >> 8)
    u = 128 + ((-38 * red - 74 * green + 112 * blue + 128) >> 8)
    v = 128 + ((112 * red - 94 * green - 18 * blue + 128) >> 8)
    pairs = np.stack([block_mean(v), block_mean(u)], axis=-1)
    return luma.astype(np.uint8).tobytes() + pairs.astype(np.uint8).tobytes()


def block_mean(plane):
    """Returns the rounded mean of every 2 x 2 block of an integer plane."""
    return (plane[0::2, 0::2] + plane[0::2, 1::2] + plane[1::2, 0::2] + plane[1::2, 1::2] + 2) >> 2


def write_gzip(path, data):
    """Writes `data` compressed, without the time and file name that would make each run's bytes differ."""
    with open(path, "wb") as raw:
        with gzip.GzipFile(filename="", mode="wb", compresslevel=9, fileobj=raw, mtime=0) as packed:
            packed.write(data)


def main():
    """Writes all samples into the folder given, or into this file's own."""
    folder = sys.argv[1] if len(sys.argv) > 1 else os.path.dirname(os.path.abspath(__file__))
    photo, seal = take_photograph(np.random.default_rng(SEED))
    page_path = os.path.join(folder, "page.jpg")
    photo.save(page_path, quality=JPEG_QUALITY)
    seal.save(os.path.join(folder, "page.seal.png"), optimize=True)
    with open(os.path.join(folder, "page.gt.txt"), "w", encoding="ascii", newline="\n") as text:
        text.write("".join(line[0] + "\n" for line in printed_lines()))
    # From the file rather than from the picture in memory: the frame then shows just what page.jpg shows.
    with Image.open(page_path) as saved:
        write_gzip(os.path.join(folder, "frame_1280x720.nv21.gz"), nv21_frame(saved.convert("RGB")))


if __name__ == "__main__":
    main()
