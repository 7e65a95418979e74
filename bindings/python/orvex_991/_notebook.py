"""How a notebook shows a prepared photograph."""

from __future__ import annotations

from base64 import b64encode
from html import escape
from io import BytesIO
from typing import TYPE_CHECKING

import numpy as np
from numpy.typing import NDArray

if TYPE_CHECKING:
    from .result import Prepared

# Twice what a notebook has room for: sharp on screens of high resolution.
_LONGEST_SIDE = 960


def html(prepared: Prepared) -> str:
    """The page and its rows as pictures, where Pillow is to be had, and a table of facts.

    Colours are those of the notebook around it, light or dark.
    """
    rows = "".join(
        f'<tr><th style="text-align:left">{escape(name)}</th><td style="text-align:left">{escape(value)}</td></tr>'
        for name, value in _facts(prepared).items()
    )
    pictures = {"the page": prepared.pictures.page, "its rows of text": prepared.pictures.rows}
    figures = "".join(_figure(name, picture) for name, picture in pictures.items() if picture is not None)
    return f'<div style="display:flex;flex-wrap:wrap;gap:1em;color:inherit">{figures}<table>{rows}</table></div>'


def _facts(prepared: Prepared) -> dict[str, str]:
    source, turn = prepared.input, prepared.turn
    facts = {
        "input": f"{source.file} ({source.format}, {source.width} x {source.height})",
        "turned": f"by {turn.degrees} degrees" if turn.degrees else "not",
    }
    if turn.sure is not None:
        facts["turned"] += f", confidence {turn.confidence:.2f}" if turn.sure else ", too little text to tell"
    if prepared.sharpness:
        facts["sharpness"] = f"{prepared.sharpness.value:.0f}, {prepared.sharpness.verdict}"
    if prepared.page and prepared.deskew:
        facts["page"] = (
            f"{prepared.page.kind}, {prepared.deskew.width} x {prepared.deskew.height}, "
            f"turned by {prepared.deskew.degrees:.2f} degrees"
        )
    if prepared.components:
        facts["components"] = f"{prepared.components.found}, {prepared.components.text} of them text"
    if prepared.rows is not None:
        facts["rows"] = str(len(prepared.rows))
    if prepared.seal:
        facts["seals"] = str(len(prepared.seal.rects))
    facts["milliseconds"] = f"{sum(prepared.milliseconds.values()):.0f}"
    return facts


def _figure(name: str, picture: NDArray[np.uint8]) -> str:
    try:
        from PIL import Image  # type: ignore[import]
    except ImportError:
        return ""
    shown = Image.fromarray(picture if picture.ndim == 2 else np.ascontiguousarray(picture[:, :, ::-1]))
    shown.thumbnail((_LONGEST_SIDE, _LONGEST_SIDE))
    png = BytesIO()
    shown.save(png, "PNG")
    data = b64encode(png.getvalue()).decode()
    return (
        f'<figure style="margin:0"><img alt="{name}" src="data:image/png;base64,{data}" '
        f'style="max-width:24em;border:1px solid #888"><figcaption>{name}</figcaption></figure>'
    )
