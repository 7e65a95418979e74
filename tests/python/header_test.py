"""The package has every function of CImgproc, by its name and with its parameters.

usage: header_test.py SOURCE
"""
import ast
import inspect
import re
import sys
import unittest
from pathlib import Path

import orvex_991

SOURCE = Path(sys.argv.pop(1))
HEADER = SOURCE / "jni" / "orvex_991" / "cv_imgproc.h"
STUBS = SOURCE / "bindings" / "python" / "orvex_991" / "_core.pyi"
GEOMETRY = SOURCE / "jni" / "orvex_991" / "cv_geometry.h"


def functions_of_the_header():
    """{name: [parameters that are no mere outputs, one list a form]}"""
    text = HEADER.read_text(encoding="utf-8")
    body = re.sub(r"//.*", "", text[text.index("class CImgproc"):])
    forms = {}
    for name, parameters in re.findall(r"\bstatic [^()]*?(\w+)\(([^()]*)\);", body):
        inputs = []
        for parameter in parameters.split(","):
            words = re.findall(r"[\w:]+|[&*<>]", parameter)
            is_output = "&" in words and "const" not in words
            if not is_output:
                inputs.append(words[-1])
        forms.setdefault(name, []).append(inputs)
    return forms


def forms_of(arguments):
    """The lists of parameters that a signature takes: those with defaults may be left out, from the last one on."""
    names = [argument.arg for argument in arguments.args]
    return [names[:n] for n in range(len(names) - len(arguments.defaults), len(names) + 1)]


def functions_of_the_stubs():
    tree = ast.parse(STUBS.read_text(encoding="utf-8"))
    forms = {}
    for node in tree.body:
        if isinstance(node, ast.FunctionDef):
            forms.setdefault(node.name, []).extend(forms_of(node.args))
    return forms


class Header(unittest.TestCase):
    def test_the_parser_finds_all_static_functions(self):
        text = HEADER.read_text(encoding="utf-8")
        found = sum(len(forms) for forms in functions_of_the_header().values())
        self.assertEqual(found, len(re.findall(r"^    static ", text[text.index("class CImgproc"):], re.M)))
        self.assertGreater(found, 50)

    def test_every_function_is_there_and_no_other(self):
        package = {name for name in orvex_991.__all__ if inspect.isbuiltin(getattr(orvex_991, name))}
        self.assertEqual(package, set(functions_of_the_header()))

    def test_every_form_is_there_with_the_names_of_the_header(self):
        stubs = functions_of_the_stubs()
        for name, forms in functions_of_the_header().items():
            for form in forms:
                with self.subTest(function=name, form=form):
                    self.assertIn(form, stubs[name])

    def test_signatures_at_run_time_are_those_of_the_stubs(self):
        stubs = functions_of_the_stubs()
        overloaded = set()
        for name in functions_of_the_header():
            function = getattr(orvex_991, name)
            try:
                signature = inspect.signature(function)
            except ValueError:  # no signature says what overloads take
                overloaded.add(name)
                continue
            positional = [p.name for p in signature.parameters.values() if p.kind != p.KEYWORD_ONLY]
            with self.subTest(function=name):
                self.assertIn(positional, stubs[name])
        self.assertEqual(overloaded, {"minAreaRect", "resize", "rot90AntiClockWise", "rot90ClockWise"})

    def test_docstrings_say_what_is_taken_and_returned(self):
        for name in functions_of_the_header():
            text = getattr(orvex_991, name).__doc__
            with self.subTest(function=name):
                self.assertRegex(text, r"^\S")
                self.assertRegex(text, r"(?m)^[\w, ]+: |^Image: ")
                self.assertRegex(text, r"Returns |^Number |^countNonZero|^Angle ")
                self.assertLessEqual(max(map(len, text.splitlines())), 120)

    def test_enumerations_have_the_values_of_the_header(self):
        text = GEOMETRY.read_text(encoding="utf-8")
        for name, body in re.findall(r"enum (\w+) : int \{([^}]*)\}", text):
            members = [member.split("=")[0].strip() for member in body.split(",")]
            with self.subTest(enumeration=name):
                enumeration = getattr(orvex_991, name)
                self.assertEqual([(m.name, m.value) for m in enumeration], [(m, k) for k, m in enumerate(members)])
                for member in members:
                    self.assertIs(getattr(orvex_991, member), enumeration[member])

    def test_the_version_is_that_of_the_header(self):
        text = (HEADER.parent / "orvex_991_version.h").read_text(encoding="utf-8")
        numbers = re.findall(r"^#define ORVEX_991_VERSION_(?:MAJOR|MINOR|PATCH) (\d+)$", text, re.M)
        self.assertEqual(orvex_991.__version__, ".".join(numbers))


if __name__ == "__main__":
    unittest.main()
