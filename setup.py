"""Builds the wheel of the Python package: its extension modules by CMake. All else stands in pyproject.toml."""
import re
import subprocess
import sys
from pathlib import Path

from setuptools import Extension, setup
from setuptools.command.build_ext import build_ext

ROOT = Path(__file__).resolve().parent


def version():
    header = (ROOT / "jni" / "orvex_991" / "orvex_991_version.h").read_text(encoding="utf-8")
    return ".".join(re.findall(r"^#define ORVEX_991_VERSION_(?:MAJOR|MINOR|PATCH) (\d+)$", header, re.M))


def pybind11_options():
    """Where pybind11 is when it was installed as a Python package; otherwise CMake finds it."""
    try:
        import pybind11
    except ImportError:
        return []
    return [f"-Dpybind11_DIR={pybind11.get_cmake_dir()}"]


class CMakeBuild(build_ext):
    def run(self):
        build = Path(self.build_temp).resolve()
        off = [f"-DORVEX_{part}=OFF" for part in ("TESTS", "TOOLS", "INSTALL")]
        options = ["-DCMAKE_BUILD_TYPE=Release", "-DORVEX_PYTHON=ON", f"-DPython3_EXECUTABLE={sys.executable}", *off]
        subprocess.run(["cmake", "-S", ROOT, "-B", build, *options, *pybind11_options()], check=True)
        subprocess.run(["cmake", "--build", build, "--parallel", "--target", "orvex_python"], check=True)
        folder = Path(self.build_lib).resolve()
        subprocess.run(["cmake", "--install", build, "--component", "python", "--strip", "--prefix", folder], check=True)


# CMake knows the modules and their sources; that there are some makes the wheel one of this platform.
setup(version=version(), cmdclass={"build_ext": CMakeBuild}, ext_modules=[Extension("orvex_991._core", [])])
