# SPDX-License-Identifier: Apache-2.0
"""Chooses what each page of a set is like, for make_pages.py.

What makes a page hard to read is dealt out like cards, so that even a small set holds all of it, each as
often as its share below says; how strong it is on a page is drawn from that page's own seed.
"""
import numpy as np

from page_layout import MONO, SANS, SERIF

KINDS = (("letter", 0.24), ("article", 0.20), ("columns", 0.17), ("table", 0.16), ("receipt", 0.13),
         ("card", 0.10))
# What a sheet lies on; it may also fill the photograph, or have been scanned.
GROUNDS = (("dark wood", 0.19), ("light wood", 0.17), ("plain", 0.21), ("filled", 0.25), ("scan", 0.18))
# By how many degrees the stored picture has to be turned clockwise, and whether its EXIF orientation says so.
TURNS = (((0, False), 0.62), ((0, True), 0.04), ((90, True), 0.06), ((90, False), 0.06), ((180, True), 0.05),
         ((180, False), 0.05), ((270, True), 0.06), ((270, False), 0.06))
LIGHTS = (("even", 0.14), ("linear", 0.34), ("radial", 0.26), ("lamp", 0.26))
SIZES = (((800, 600), 0.10), ((1024, 768), 0.14), ((1280, 960), 0.20), ((1600, 1200), 0.24),
         ((2048, 1536), 0.18), ((2400, 1800), 0.08), ((3000, 2200), 0.06))
FOCUS = (("sharp", 0.45), ("soft", 0.30), ("defocused", 0.25))
HEADINGS = (("print", 0.70), ("red", 0.30))
SHARES = {"tilted": 0.40, "bent": 0.24, "seal": 0.22, "shadow": 0.34, "bleed": 0.16, "folded": 0.24,
          "moire": 0.13, "cast": 0.55}


def dealt(rng, count, shares):
    """Returns `count` values in random order, each as often as its share says."""
    ends = np.cumsum([share for _, share in shares])
    picks = np.searchsorted(ends, (np.arange(count) + 0.5) / count * ends[-1])
    return [shares[pick][0] for pick in rng.permutation(picks)]


def between(rng, low, high):
    """Returns a number of that range, short enough to be read in pages.json."""
    return round(float(rng.uniform(low, high)), 4)


def chosen_pages(seed, count, longest):
    """Returns the parameters of every page of the set, to be written to pages.json."""
    rng = np.random.default_rng(seed)
    decks = {"kind": KINDS, "ground": GROUNDS, "turn": TURNS, "light": LIGHTS, "size": SIZES, "focus": FOCUS,
             "heading": HEADINGS}
    decks.update({name: ((True, share), (False, 1 - share)) for name, share in SHARES.items()})
    hands = {name: dealt(rng, count, shares) for name, shares in decks.items()}
    return [chosen_page([seed, index], {name: hand[index] for name, hand in hands.items()}, longest)
            for index in range(count)]


def chosen_page(seed, has, longest):
    """Returns the parameters of one page: what it was dealt (`has`), and how much of each.

    Lengths are in heights of the sheet or fractions of the photograph's longer side, angles in degrees.
    """
    rng = np.random.default_rng(seed)
    page = {"name": f"page_{seed[1] + 1:02}_{has['kind']}", "seed": seed, "kind": has["kind"],
            "ground": has["ground"]}
    if has["kind"] == "receipt" and has["ground"] == "filled":
        page["ground"] = "plain"                        # a narrow strip cannot fill a photograph
    scan = has["ground"] == "scan"

    long, short = has["size"]
    # Room for a line that cannot be broken, or for a few words at least.
    least = {"columns": (1600, 1200), "table": (1024, 768), "receipt": (1024, 768)}
    long, short = max((long, short), least.get(has["kind"], (0, 0)))
    if longest:
        long, short = longest, round(longest * short / long)
    upright = has["kind"] == "receipt" or has["kind"] != "card" and rng.random() < 0.85
    width, height = (short, long) if upright else (long, short)
    page["size"] = [width, height]
    page["aspect"] = {"receipt": between(rng, 0.40, 0.52), "card": between(rng, 1.5, 1.7)}.get(
        has["kind"], between(rng, 0.70, 0.80) if upright else between(rng, 1.25, 1.4))
    # Letters of one width suit receipts, but no table here: all points of its figures would make a column.
    odds = {"receipt": (0.2, 0.2, 0.6), "table": (0.5, 0.5, 0)}.get(has["kind"], (0.5, 0.4, 0.1))
    faces = (SERIF, SANS, MONO)[rng.choice(3, p=odds)]
    page["family"] = list(faces)[rng.integers(len(faces))]
    letters = {"columns": (62, 85), "table": (50, 80), "receipt": (26, 30), "card": (36, 46)}
    page["letters"] = between(rng, *letters.get(has["kind"], (36, 80)))     # about so many in a line
    page["leading"] = between(rng, 1.28, 1.6)
    page["heading"] = "print" if has["seal"] else has["heading"]
    page["print_ink"] = int(rng.integers(15, 75))
    page["paper"] = [round(float(c)) for c in np.array((246, 243, 236)) + rng.uniform(-10, 6, 3)]

    page["turn"], page["exif"] = has["turn"]
    page["skew"] = between(rng, -8, 8) if rng.random() < 0.75 else between(rng, -1, 1)
    tilted = has["tilted"] and not scan
    page["tilt"] = between(rng, 7, 17) if tilted else 0 if scan else between(rng, 0, 1.5)
    page["tilt_towards"] = between(rng, 0, 360)
    page["distance"] = 1e5 if scan else between(rng, 1.6, 2.6)
    page["bend"] = between(rng, 0.03, 0.07) if has["bent"] and not scan else 0
    folds = [[axis, between(rng, 0.3, 0.7)] for axis in "xy" if rng.random() < 0.7]
    page["folds"] = folds if has["folded"] else []
    page["seal"] = has["seal"]
    page["bleed"] = between(rng, 0.05, 0.13) if has["bleed"] else 0

    page["light"] = {"kind": "even" if scan else has["light"], "strength": between(rng, 0.25, 0.6),
                     "direction": between(rng, 0, 360),
                     "x": between(rng, 0.1, 0.9), "y": between(rng, 0.1, 0.9),
                     "level": between(rng, 0.9, 1.02) if scan else between(rng, 0.72, 1.06)}
    page["vignette"] = 0 if scan else between(rng, 0, 0.25)
    page["shadow"] = None
    if has["shadow"] and not scan:
        page["shadow"] = {"at": between(rng, 0.25, 0.75), "direction": between(rng, 0, 360),
                          "depth": between(rng, 0.25, 0.5), "softness": between(rng, 0.002, 0.02),
                          "bow": between(rng, -0.1, 0.1)}
    warmth = between(rng, -0.08, 0.10) if has["cast"] else 0
    page["tone"] = [round(1 + warmth, 4), round(1 + (between(rng, -0.04, 0.03) if has["cast"] else 0), 4),
                    round(1 - warmth, 4)]
    page["moire"] = between(rng, 0.02, 0.05) if has["moire"] else 0
    page["focus"] = has["focus"]
    # In pixels when sharp, otherwise in heights of the small letters: whoever looks can still read it.
    page["blur"] = between(rng, 0.4, 0.75) if has["focus"] == "sharp" else between(rng, 0.06, 0.1)
    page["noise"] = between(rng, 0.5, 1.2) if scan else between(rng, 0.7, 3.0)
    png = not page["exif"] and width * height <= 2_000_000 and rng.random() < 0.3
    page["quality"] = None if png else int(rng.integers(60, 93))
    return page
