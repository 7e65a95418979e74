"""What prepare() returns: the members that docs/result.schema.json describes, as frozen dataclasses, and how they look.

usage: result_test.py SCHEMA SAMPLES
"""
import dataclasses
import io
import json
import pickle
import re
import subprocess
import sys
import unittest
import xml.etree.ElementTree
from base64 import b64decode
from pathlib import Path
from typing import Literal, Optional, Union, get_args, get_origin, get_type_hints

import jsonschema
import numpy as np
from PIL import Image

import orvex_991 as orvex
from orvex_991 import result

SCHEMA = json.loads(Path(sys.argv.pop(1)).read_text(encoding="utf-8"))
SAMPLES = Path(sys.argv.pop(1)).resolve()
PHOTO = np.asarray(Image.open(SAMPLES / "page.jpg").convert("RGB"))[..., ::-1]
BLANK = np.full((240, 320), 200, np.uint8)
PREPARED = orvex.prepare(PHOTO, file="photo.png", format="PNG")
BESIDE = ("pictures", "milliseconds", "_json")  # of a result, not in result.json
SCALARS = {"integer": int, "number": float, "string": str, "boolean": bool}


def resolved(schema):
    while "$ref" in schema:
        schema = SCHEMA["$defs"][schema["$ref"].rsplit("/", 1)[1]]
    return schema


def described(schema):
    """The members of an object, those of its alternatives included."""
    objects = (schema, *schema.get("oneOf", ()))
    return {name: one for of in objects for name, one in of["properties"].items() if "const" not in one}


def differences(kind, schema, path):
    """Where a type says something else than its schema."""
    schema = resolved(schema)
    if get_origin(kind) is Union:
        kind = get_args(kind)[0]
    if {"type": "null"} in schema.get("oneOf", ()):
        schema = resolved(schema["oneOf"][1])
    if kind in (orvex.Point, orvex.Point32f):
        number = get_type_hints(kind)["x"]
        fits = schema.get("maxItems") == 2 and SCALARS[resolved(schema["items"])["type"]] is number
        return [] if fits else [f"{path}: {kind.__name__}"]
    if get_origin(kind) is tuple:
        return differences(get_args(kind)[0], schema["items"], f"{path}[]")
    if hasattr(kind, "__annotations__"):
        return different_members(kind, schema, path)
    if get_origin(kind) is Literal:
        return [] if set(get_args(kind)) == set(schema["enum"]) else [f"{path}: {kind}"]
    return [] if SCALARS.get(schema.get("type")) is kind else [f"{path}: {kind}"]


def different_members(kind, schema, path):
    types, known = get_type_hints(kind), described(schema)
    if kind is orvex.Prepared:
        types = {name: of for name, of in types.items() if name not in BESIDE}
        del known["files"]  # they are the caller's
    lines = [f"{path}.{name}: on one side alone" for name in set(types) ^ set(known)]
    for name in set(types) & set(known):
        nullable = {"type": "null"} in resolved(known[name]).get("oneOf", ())
        if (get_origin(types[name]) is Union) != (nullable or name not in schema["required"]):
            lines.append(f"{path}.{name}: optional on one side alone")
        lines += differences(types[name], known[name], f"{path}.{name}")
    return lines


def members(value):
    """A dataclass as JSON has it."""
    if isinstance(value, orvex.Rect):
        return value._asdict()
    if dataclasses.is_dataclass(value):
        return {member.name: members(getattr(value, member.name)) for member in dataclasses.fields(value)}
    return [members(element) for element in value] if isinstance(value, tuple) else value


def without_none(value):
    if isinstance(value, dict):
        return {name: without_none(of) for name, of in value.items() if of is not None}
    return [without_none(element) for element in value] if isinstance(value, list) else value


class Result(unittest.TestCase):
    def test_types_are_those_of_the_schema(self):
        self.assertEqual(differences(orvex.Prepared, SCHEMA, "$"), [])

    def test_differences_from_the_schema_would_be_found(self):
        @dataclasses.dataclass
        class Other:
            pixels: float
            rects: Optional[tuple[orvex.Point, ...]]
            more: int = 0

        found = differences(Other, SCHEMA["$defs"]["seals"]["properties"]["marks"], "$")
        self.assertEqual(sorted(found), ["$.more: on one side alone", "$.pixels: <class 'float'>",
                                         "$.rects: optional on one side alone", "$.rects[]: Point"])

    def test_values_are_those_of_result_json(self):
        for prepared in (PREPARED, orvex.prepare(BLANK), orvex.prepare(BLANK, turn=90, binarise="otsu", page="gray"),
                         orvex.prepare(PHOTO, stages=["seal"])):
            read = json.loads(prepared.to_json())
            jsonschema.validate(read, SCHEMA)
            found = members(prepared)
            for name in BESIDE:
                del found[name]
            self.assertEqual(without_none({"files": [], **found}), without_none(read))

    def test_what_did_not_run_is_none(self):
        prepared = orvex.prepare(BLANK, stages=["saliency"], turn=0)
        self.assertEqual((prepared.page, prepared.rows, prepared.seal, prepared.sharpness), (None,) * 4)
        self.assertEqual([name for name, array in vars(prepared.pictures).items() if array is not None], ["saliency"])
        self.assertEqual((prepared.turn.how, prepared.turn.sure), ("given", None))
        self.assertEqual(orvex.prepare(BLANK).rows, ())

    def test_rows_cut_the_page(self):
        page = PREPARED.pictures.page
        for row in PREPARED.rows:
            x, y, width, height = row.rect
            self.assertEqual(page[y:y + height, x:x + width].shape, (height, width))
            self.assertLess(page[y:y + height, x:x + width].min(), 128)

    def test_the_matrix_is_what_warpaffine_takes(self):
        prepared = orvex.prepare(np.asarray(Image.fromarray(PHOTO[..., 1]).rotate(3, expand=True, fillcolor=255)),
                                 page="gray", stages=["page"])
        self.assertEqual(round(prepared.deskew.degrees), -3)
        matrix = np.float32(prepared.deskew.matrix).reshape(2, 3)
        self.assertEqual(orvex.pointAffine((0, 0), matrix, 1, (0, 0)),
                         (int(prepared.deskew.matrix[2]), int(prepared.deskew.matrix[5])))

    def test_files_stand_in_the_json(self):
        self.assertEqual(json.loads(PREPARED.to_json())["files"], [])
        self.assertEqual(json.loads(PREPARED.to_json(("page.png", "rows.png")))["files"], ["page.png", "rows.png"])
        named = orvex.prepare(BLANK, file='"files": []')
        self.assertEqual(json.loads(named.to_json(["page.png"]))["input"]["file"], '"files": []')

    def test_milliseconds_are_by_step(self):
        self.assertLess({"orient", "gray", "binarise", "page", "rows"}, set(PREPARED.milliseconds))
        self.assertTrue(all(ms >= 0 for ms in PREPARED.milliseconds.values()))

    def test_results_are_frozen_and_survive_pickling(self):
        for value in (PREPARED, PREPARED.turn, PREPARED.rows[0], PREPARED.pictures):
            with self.assertRaises(dataclasses.FrozenInstanceError):
                value.degrees = 1
        copy = pickle.loads(pickle.dumps(PREPARED))
        self.assertEqual((copy.rows, copy.turn, copy.to_json()),
                         (PREPARED.rows, PREPARED.turn, PREPARED.to_json()))
        np.testing.assert_array_equal(copy.pictures.page, PREPARED.pictures.page)
        failed = pickle.loads(pickle.dumps(orvex.Refused("photo", "is blurred")))
        self.assertEqual((type(failed), str(failed)), (orvex.Refused, "photo: is blurred"))

    def test_every_public_type_is_documented(self):
        types = [value for value in vars(result).values() if dataclasses.is_dataclass(value)]
        self.assertGreater(len(types), 15)
        for kind in types:
            self.assertNotRegex(kind.__doc__, rf"^{kind.__name__}\(", kind)  # what dataclass makes up


class Display(unittest.TestCase):
    def table(self, html):
        tree = xml.etree.ElementTree.fromstring(re.sub(r"(<img [^>]*)>", r"\1/>", html))
        return tree, {row.find("th").text: row.find("td").text for row in tree.iter("tr")}

    def test_repr_is_one_line(self):
        self.assertEqual(repr(PREPARED), "<Prepared 'photo.png': 1600 x 1200, turned by 0, sharp, 17 rows>")
        self.assertEqual(repr(PREPARED.pictures).split(",")[0], "<Pictures page: (1200")
        bare = orvex.prepare(BLANK, stages=["saliency"], turn=90, file="a\nb")
        self.assertEqual(repr(bare), r"<Prepared 'a\nb': 320 x 240, turned by 90>")

    def test_a_notebook_shows_page_rows_and_facts(self):
        tree, facts = self.table(PREPARED._repr_html_())
        self.assertEqual(facts["input"], "photo.png (PNG, 1600 x 1200)")
        self.assertEqual((facts["turned"], facts["sharpness"]), ("not, confidence 0.62", "152, sharp"))
        self.assertEqual((facts["components"], facts["rows"], facts["seals"]), ("966, 883 of them text", "17", "1"))
        pictures = [Image.open(io.BytesIO(b64decode(image.get("src").split("base64,")[1])))
                    for image in tree.iter("img")]
        self.assertEqual([(picture.format, picture.mode, picture.size) for picture in pictures],
                         [("PNG", "L", (960, 720)), ("PNG", "RGB", (960, 720))])
        shown = np.asarray(pictures[1]).astype(int).mean((0, 1))
        np.testing.assert_allclose(shown, PREPARED.pictures.rows[..., ::-1].mean((0, 1)), atol=2)  # R, G, B

    def test_little_is_shown_where_little_is_known(self):
        tree, facts = self.table(orvex.prepare(BLANK, stages=["saliency"], turn=180)._repr_html_())
        self.assertEqual(list(facts), ["input", "turned", "milliseconds"])
        self.assertEqual(facts["turned"], "by 180 degrees")
        self.assertEqual(list(tree.iter("img")), [])
        _, facts = self.table(orvex.prepare(BLANK)._repr_html_())
        self.assertEqual(facts["turned"], "not, too little text to tell")

    def test_names_are_escaped(self):
        name = "<script>alert('&')</script>"
        html = orvex.prepare(BLANK, file=name, format="<b>", stages=[])._repr_html_()
        self.assertNotIn("<script", html)
        self.assertEqual(self.table(html)[1]["input"], f"{name} (<b>, 320 x 240)")

    def test_no_colour_is_set_for_text_or_background(self):
        html = re.sub(r"base64,[^\"]*", "", PREPARED._repr_html_())
        self.assertNotIn("background", html)
        self.assertEqual(re.findall(r"[^-]color:(\w+)", html), ["inherit"])

    def test_without_pillow_the_table_is_left(self):
        program = """
import sys, numpy, orvex_991
assert "PIL" not in sys.modules
sys.modules["PIL"] = None
print(orvex_991.prepare(numpy.full((240, 320), 200, numpy.uint8))._repr_html_())
"""
        html = subprocess.run([sys.executable, "-c", program], check=True, capture_output=True, text=True).stdout
        self.assertNotIn("<img", html)
        self.assertEqual(self.table(html)[1]["rows"], "0")


if __name__ == "__main__":
    unittest.main()
