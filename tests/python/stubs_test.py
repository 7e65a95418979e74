"""The checked-in stubs are those of the module, and mypy is content with them and with the examples.

usage: stubs_test.py SOURCE
"""
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SOURCE = Path(sys.argv.pop(1))


def run(*command):
    done = subprocess.run([sys.executable, "-m", *map(str, command)], capture_output=True, text=True, check=False)
    return done.returncode, done.stdout + done.stderr


class Stubs(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cache = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cache.cleanup)
        os.environ["MYPY_CACHE_DIR"] = cache.name

    def test_stubs_and_module_agree(self):
        stubs = sorted((SOURCE / "bindings" / "python" / "orvex_991").glob("*.pyi"))
        self.assertGreater(len(stubs), 1)
        _, text = run("mypy.stubtest", *(f"orvex_991.{stub.stem}" for stub in stubs), "--concise")
        # The metaclass of pybind11's classes is its own.
        expected = [
            f"orvex_991._batch.{name} is inconsistent, metaclass differs"
            for name in ("Ledger", "Options", "Preparation")
        ]
        self.assertEqual(text.splitlines(), expected)

    def test_the_package_has_types(self):
        status, text = run("mypy", "--strict", "-p", "orvex_991")
        self.assertEqual(status, 0, text)

    def test_examples_have_types(self):
        examples = sorted((SOURCE / "examples" / "python").glob("*.py"))
        self.assertGreater(len(examples), 1)
        status, text = run("mypy", "--strict", *examples)
        self.assertEqual(status, 0, text)

    def test_mistakes_of_callers_are_found(self):
        mistakes = {
            "orvex_991.otsu(3)": "arg-type",
            "orvex_991.otsu()": "call-arg",
            "orvex_991.resize(image, 'a')": "arg-type",
            "orvex_991.connectdComponent(image, True).shape": "attr-defined",
            "orvex_991.threshold(image).shape": "attr-defined",
            "orvex_991.getRotatedRectAngle((1, 2))": "arg-type",
            "orvex_991.prepare(image, page='grey')": "arg-type",
            "orvex_991.prepare(image, stages=['pages'])": "list-item",
            "orvex_991.prepare(image).turn.angle": "attr-defined",
        }
        head = "import numpy as np\nimport orvex_991\nimage = np.zeros((3, 3), np.uint8)\n"
        with tempfile.TemporaryDirectory() as folder:
            program = Path(folder) / "program.py"
            program.write_text(head + "\n".join(mistakes) + "\n", encoding="utf-8")
            _, text = run("mypy", "--show-error-codes", program)
        for line, (call, code) in enumerate(mistakes.items(), head.count("\n") + 1):
            with self.subTest(call=call):
                self.assertRegex(text, rf"program\.py:{line}: error: .*\[{code}\]")


if __name__ == "__main__":
    unittest.main()
