"""What the extension modules ask of the system: no image format, and nothing that prints on standard output."""
import re
import subprocess
import unittest
from pathlib import Path

import orvex_991

# Batches read and write files, and print what docprep does.
MODULES = [path for path in sorted(Path(orvex_991.__file__).parent.glob("*.so")) if not path.name.startswith("_batch.")]


def printed(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


class Modules(unittest.TestCase):
    def test_they_need_the_language_alone(self):
        self.assertGreater(len(MODULES), 1)
        for module in MODULES:
            needed = re.findall(r"NEEDED.*\[(.*)\]", printed("readelf", "-d", module))
            self.assertIn("libc.so.6", needed)
            others = [name for name in needed if not re.match(r"(lib(c|m|gcc_s|stdc\+\+)|ld-linux.*)\.so\.", name)]
            self.assertEqual(others, [], module.name)

    def test_they_cannot_print(self):
        # What prints in them prints into a log; these would reach Python's own standard output.
        for module in MODULES:
            imports = set(re.findall(r" U (\w+)", printed("nm", "-D", "--undefined-only", module)))
            self.assertIn("PyErr_SetObject", imports)
            printing = {"printf", "vprintf", "puts", "putchar", "putc", "stdout", "__printf_chk", "__vprintf_chk"}
            self.assertEqual(imports & printing, set(), module.name)


if __name__ == "__main__":
    unittest.main()
