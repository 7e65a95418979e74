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
import sys

import numpy as np
from PIL import Image, ImageDraw, ImageFilter

from drawing import (Seal, draw_wood, fold_light, load_font, mapped, plane_map, sample, sensor_noise,
                     shadow_on, sheet_cover, smooth_noise, stamp, to_image)

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
SEAL = Seal(radius=84, top_text="QUILLMOOR TOYS", bottom_text="CHECKED TWICE", turn=11)

LIGHT_TONE = (1.03, 1.015, 0.98)  # a warm lamp
LENS_BLUR = 0.75
NOISE = 1.0
JPEG_QUALITY = 88

FRAME_SIZE = (1280, 720)


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


def draw_page(rng):
    """Returns the flat sheet as (colours 0..255, seal's disc 0..1)."""
    size = (PAGE_SIZE[0] * SCALE, PAGE_SIZE[1] * SCALE)
    fibre = (smooth_noise(rng, size, (4, 4)) * 0.45 + smooth_noise(rng, size, (14, 9)) * 0.25
             + smooth_noise(rng, size, (190, 190)) * 0.30)
    page = np.array(PAPER, np.float32) + ((fibre - 0.5) * 20)[..., None]

    seal = stamp(rng, page, SEAL, (SEAL_CENTRE[0] * SCALE, SEAL_CENTRE[1] * SCALE), SCALE)
    cover = draw_print(rng)[..., None]
    return page * (1 - cover) + np.array(PRINT_INK, np.float32) * cover, seal


def page_coordinates():
    """Returns (u, v): which point of the flat sheet, in drawing pixels, each pixel of the scene shows."""
    w, h = PAGE_SIZE
    x = (np.arange(PHOTO_SIZE[0] * SCALE) + 0.5)[None, :] / SCALE
    y = (np.arange(PHOTO_SIZE[1] * SCALE) + 0.5)[:, None] / SCALE
    u, v = mapped(plane_map(PAGE_CORNERS, ((0, 0), (w, 0), (w, h), (0, h))), x, y)
    v = v + BEND * np.sin(bend_angle(u / w))            # paper that has been rolled or folded never lies flat
    return u * SCALE, v * SCALE


def bend_angle(across):
    """Returns where in its wave the sheet's bow is, `across` being 0 at the left edge and 1 at the right."""
    return (across * 1.25 + 0.15) * math.pi


def sheet_light(u):
    """Returns how the sheet's own shape brightens or dims it: a slope facing the lamp catches more light."""
    across = u / (PAGE_SIZE[0] * SCALE)
    bow = 0.035 * np.cos(bend_angle(across))
    return (1 + bow + fold_light(across, FOLD)).astype(np.float32)


def reduced(array):
    """Returns `array` at the photograph's size, each pixel the mean of SCALE x SCALE drawing pixels."""
    h, w = array.shape[0] // SCALE, array.shape[1] // SCALE
    return array.reshape(h, SCALE, w, SCALE, -1).mean(axis=(1, 3))


def lay_page_on_desk(rng):
    """Returns (scene 0..255 in even light, seal's disc 0..1), both at the photograph's size."""
    page, seal = draw_page(rng)
    u, v = page_coordinates()
    sheet = sample(page, u, v) * sheet_light(u)[..., None]
    cover = sheet_cover(u, v, (PAGE_SIZE[0] * SCALE, PAGE_SIZE[1] * SCALE))
    desk = draw_wood(rng, (PHOTO_SIZE[0] * SCALE, PHOTO_SIZE[1] * SCALE), DESK, SCALE)
    shadow_on(desk, cover, SCALE)
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


def take_photograph(rng):
    """Returns (photograph as an 8-bit picture, seal mask as an 8-bit picture of 0 and 255)."""
    scene, disc = lay_page_on_desk(rng)
    lit = scene * room_light()[..., None] * np.array(LIGHT_TONE, np.float32)
    soft = np.asarray(to_image(lit).filter(ImageFilter.GaussianBlur(LENS_BLUR)), np.float32)
    photo = to_image(sensor_noise(rng, soft, NOISE))
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
