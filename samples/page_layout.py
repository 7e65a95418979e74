# SPDX-License-Identifier: Apache-2.0
"""Sets the printed lines of a page for make_pages.py: letters, articles, tables, receipts and cards.

A layout fills a box (left, top, right, bottom) in drawing pixels with lines in reading order, and drops what
no longer fits. Lines are kept as pieces of text with their places, so that the truth is what was printed.
"""
import dataclasses

from drawing import load_font
from page_text import FIRMS, GOODS, LAST_NAMES, STREETS, SUBTITLES, TASKS, TITLES, TOWNS, TRADES

# Upright styles of each family: regular and bold.
SERIF = {"Liberation Serif": ("Regular", "Bold"), "DejaVu Serif": ("Book", "Bold"), "C059": ("Roman", "Bold"),
         "P052": ("Roman", "Bold"), "Nimbus Roman": ("Regular", "Bold"), "URW Bookman": ("Light", "Demi")}
SANS = {"Liberation Sans": ("Regular", "Bold"), "DejaVu Sans": ("Book", "Bold"),
        "Nimbus Sans": ("Regular", "Bold")}
MONO = {"Liberation Mono": ("Regular", "Bold"), "DejaVu Sans Mono": ("Book", "Bold")}
FACES = {**SERIF, **SANS, **MONO}


@dataclasses.dataclass
class Line:
    """One printed line: its pieces of text, each with the x where it starts, on one baseline."""
    pieces: list
    baseline: float
    font: object
    ink: str = "print"

    def text(self):
        return " ".join(text for text, _ in self.pieces)


def font_of_height(family, bold, x_height):
    """Returns the family's font whose small letters are `x_height` drawing pixels high."""
    name = (family, FACES[family][1 if bold else 0])
    probe = load_font(name, 400)
    _, top, _, _ = probe.getbbox("x", anchor="ls")
    return load_font(name, max(6, round(400 * x_height / -top)))


class Page:
    """A page being set from top to bottom inside its box."""

    def __init__(self, words, box, family, x_height, leading):
        self.words = words
        self.left, self.top, self.right, self.bottom = box
        self.y = self.top
        self.family = family
        self.x_height = x_height
        self.leading = leading
        self.body = font_of_height(family, False, x_height)
        self.bold = font_of_height(family, True, x_height)
        self.step = self.body.size * leading
        self.lines = []
        self.rules = []                 # (x0, y0, x1, y1, width)

    def width(self):
        return self.right - self.left

    def room(self, lines):
        """Whether that many lines of the body still fit."""
        return self.y + lines * self.step <= self.bottom

    def skip(self, share):
        """Leaves a share of a line free."""
        self.y += share * self.step

    def put(self, pieces, font=None, ink="print"):
        """Sets one line; returns whether there was room for it."""
        font = font or self.body
        step = font.size * self.leading
        if self.y + step > self.bottom:
            return False
        self.lines.append(Line(pieces, self.y + 0.5 * step + 0.3 * font.size, font, ink))
        self.y += step
        return True

    def put_aligned(self, text, align, font=None, ink="print"):
        font = font or self.body
        free = self.width() - font.getlength(text)
        return self.put([(text, self.left + free * {"left": 0, "centre": 0.5, "right": 1}[align])], font, ink)

    def wrapped(self, text, font, width):
        """Returns the text broken into lines that are no wider than `width`."""
        lines, line = [], ""
        for word in text.split():
            longer = f"{line} {word}".strip()
            if line and font.getlength(longer) > width:
                lines.append(line)
                line = word
            else:
                line = longer
        return lines + [line]

    def justified(self, text, font):
        """Returns the words of a line spread over the page's width; of a short line, as they are."""
        words = text.split()
        free = self.width() - sum(font.getlength(word) for word in words)
        gap = free / max(1, len(words) - 1)
        if gap > 2.2 * font.getlength(" "):
            return [(text, self.left)]
        pieces, x = [], self.left
        for word in words:
            pieces.append((word, x))
            x += font.getlength(word) + gap
        return pieces

    def paragraph(self, text, font=None, justify=False, indent=0.0):
        """Sets as many of the paragraph's lines as fit; returns whether all did."""
        font = font or self.body
        lines = self.wrapped(text, font, self.width() - indent)
        for line in lines:
            full = justify and line is not lines[-1]
            if not self.put(self.justified(line, font) if full else [(line, self.left + indent)], font):
                return False
        return True

    def heading(self, text, enlarged, align, ink="print"):
        """Sets a bold heading `enlarged` times as high as the body, in as many lines as it needs."""
        font = font_of_height(self.family, True, self.x_height * enlarged)
        for line in self.wrapped(text, font, self.width()):
            self.put_aligned(line, align, font, ink)
        self.skip(0.4)

    def fill(self, justify):
        """Sets paragraphs, now and then under a small heading, until the page is full."""
        while self.room(2):
            if self.words.rng.random() < 0.25 and self.room(4):
                self.skip(0.3)
                self.put_aligned(self.words.one_of(SUBTITLES), "left", self.bold)
            if not self.paragraph(self.words.paragraph(), justify=justify):
                return
            self.skip(0.5)


def letter(page, heading_ink):
    """A letter: heading, place and date, greeting, sometimes a list, paragraphs and a sign-off."""
    words = page.words
    page.heading(words.one_of(TITLES), 1.5, words.one_of(("left", "centre")), heading_ink)
    page.put_aligned(f"{words.one_of(TOWNS)}, {words.date()}", "left")
    page.skip(0.6)
    page.put_aligned(f"Dear {words.name()},", "left")
    page.skip(0.4)
    bottom = page.bottom
    page.bottom -= 3.2 * page.step                      # kept for the sign-off
    # Numbers of a list in letters of one width stand in a column of their own to a recogniser.
    if words.rng.random() < 0.5 and page.family not in MONO:
        page.paragraph(words.paragraph())
        page.skip(0.5)
        numbered_list(page, words.number(3, 5))
    while page.room(2) and page.paragraph(words.paragraph()):
        page.skip(0.5)
    page.bottom = bottom
    page.skip(0.4)
    page.put_aligned("With kind regards,", "left")
    page.put_aligned(words.name(), "left")


def numbered_list(page, count):
    for number, task in enumerate(page.words.rng.permutation(len(TASKS))[:count], 1):
        page.put_aligned(f"{number}. {TASKS[task]}", "left")
    page.skip(0.5)


def article(page, heading_ink):
    """One column of paragraphs under a heading."""
    page.heading(page.words.one_of(TITLES), 1.6, page.words.one_of(("left", "centre")), heading_ink)
    page.fill(justify=page.words.rng.random() < 0.5)


def two_columns(page, heading_ink):
    """A heading over two columns, to be read one after the other."""
    page.heading(page.words.one_of(TITLES), 1.7, "left", heading_ink)
    page.skip(0.5)
    left, right, top = page.left, page.right, page.y
    gutter = 5 * page.x_height
    column = (right - left - gutter) / 2
    justify = page.words.rng.random() < 0.5
    for start in (left, right - column):
        page.left, page.right, page.y = start, start + column, top
        page.fill(justify)


def table(page, heading_ink):
    """A bill: heading, two lines, a table with rules, its total, and paragraphs below."""
    words = page.words
    page.heading(f"{words.one_of(TOWNS)} {words.one_of(FIRMS)}", 1.5, "left", heading_ink)
    page.put_aligned(f"Bill No. {words.number(1000, 9999)} of {words.date()}", "left")
    page.put_aligned(f"For {words.name()}, {words.number(2, 98)} {words.one_of(STREETS)}", "left")
    page.skip(0.8)
    rows, total = [], 0
    for item in words.rng.permutation(len(GOODS))[:words.number(5, 9)]:
        count, cents = words.number(2, 40), words.number(110, 9900)
        total += count * cents
        rows.append((GOODS[item], str(count), money(cents), money(count * cents)))
    every_row = bool(words.rng.random() < 0.5)
    head = ("Article", "Count", "Price", "Amount")
    foot = ("Total of all the articles above", "", "", money(total))
    set_table(page, [head, *rows, foot], every_row)
    page.skip(1.0)
    page.fill(justify=False)


def set_table(page, rows, every_row):
    """Sets rows of cells, the first column left-aligned and the others right-aligned, with level rules.

    No upright rules: recognisers like to read them as letters. And never no rules at all: then they like to
    read column by column.
    """
    pad = 1.0 * page.x_height
    # The last row's name reaches over the columns beside it, which also ties them together for a recogniser.
    widths = [max(page.bold.getlength(cell) for cell in column) + 2 * pad for column in zip(*rows[:-1])]
    reach = page.bold.getlength(rows[-1][0]) + page.bold.getlength(rows[-1][-1]) + 4 * pad
    widths[0] += max(0, reach - sum(widths))
    edges = [page.left]
    for width in widths:
        edges.append(edges[-1] + width)
    rule = max(1, round(page.x_height / 9))
    rule_at = [page.y]
    step = page.step
    page.step *= 1.1
    for number, row in enumerate(rows):
        font = page.bold if number in (0, len(rows) - 1) else page.body
        pieces = []
        for column, cell in enumerate(row):
            if cell:
                start = edges[column] + pad
                if column:
                    start = edges[column + 1] - pad - font.getlength(cell)
                pieces.append((cell, start))
        if not page.put(pieces, font):
            break
        rule_at.append(page.y)
    page.step = step
    if not every_row:
        rule_at = [rule_at[0], rule_at[1], rule_at[-2], rule_at[-1]]
    page.rules += [(edges[0], y, edges[-1], y, rule) for y in rule_at]


def money(cents):
    return f"{cents // 100}.{cents % 100:02}"


def receipt(page, heading_ink):
    """A till's strip: shop, address, goods with their prices, total and thanks."""
    words = page.words
    page.heading(f"{words.one_of(TOWNS)} {words.one_of(FIRMS)}", 1.2, "centre", heading_ink)
    page.put_aligned(f"{words.number(2, 98)} {words.one_of(STREETS)}", "centre")
    page.put_aligned(words.date(), "centre")
    page.skip(0.7)
    rows, total, lines = [], 0, 6
    for item in words.rng.permutation(len(GOODS)):
        if not page.room(lines + 2):
            break
        count, cents = words.number(1, 9), words.number(85, 990)
        total += count * cents
        detail = words.one_of(("{} pieces at {} each", "{} of them, {} apiece", "{} times {} today")).format(
            count, money(cents))
        rows.append((GOODS[item], money(count * cents), detail if count > 1 else None))
        lines += 1 + (count > 1)
    ends = [("Total", money(total), None), ("Cash", money(total), None)]
    # Prices close to the names, and unequal lines that bridge the gap, off the grid of letters of one width:
    # otherwise prices, or what follows their points, would be columns of their own to a recogniser.
    indent = 0.6 * page.x_height
    edge = page.left + 2.5 * page.x_height + sum(
        max(page.bold.getlength(row[column]) for row in rows + ends) for column in (0, 1))
    for name, price, detail in rows + ends:
        font = page.bold if name == "Total" else page.body
        page.put([(name, page.left), (price, edge - font.getlength(price))], font)
        if detail and indent + page.body.getlength(detail) <= page.width():
            page.put([(detail, page.left + indent)])
    page.skip(0.7)
    page.put_aligned(words.one_of(("Thank you", "Please come again", "Have a nice day")), "centre")


def card(page, heading_ink):
    """A visiting card: name, trade, firm and how to be reached."""
    words = page.words
    surname = words.one_of(LAST_NAMES)
    page.skip(words.rng.random() * 0.5)
    page.heading(words.name(), 1.5, "left", heading_ink)
    page.put_aligned(words.one_of(TRADES), "left")
    page.skip(0.7)
    page.put_aligned(f"{surname} and Sons", "left", page.bold)
    page.put_aligned(f"{words.number(2, 98)} {words.one_of(STREETS)}, {words.one_of(TOWNS)}", "left")
    page.put_aligned(f"Telephone {words.number(200, 999)} {words.number(1000, 9999)}", "left")
    page.put_aligned("Open from Monday to Friday", "left")


LAYOUTS = {"letter": letter, "article": article, "columns": two_columns, "table": table, "receipt": receipt,
           "card": card}
