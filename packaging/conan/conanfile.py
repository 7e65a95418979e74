"""Conan 2 recipe of the library: conan create packaging/conan"""
import os
import re

from conan import ConanFile
from conan.tools.build import check_min_cppstd
from conan.tools.cmake import CMake, CMakeToolchain, cmake_layout
from conan.tools.files import copy, load, rmdir


class Orvex991Recipe(ConanFile):
    name = "orvex_991"
    license = "Apache-2.0"
    description = "Compact image processing for document recognition, exact to the bit"
    topics = ("image-processing", "document", "cpp17")
    package_type = "static-library"
    settings = "os", "arch", "compiler", "build_type"

    def set_version(self):
        header = load(self, os.path.join(self._sources(), "jni", "orvex_991", "orvex_991_version.h"))
        numbers = re.findall(r"^#define ORVEX_991_VERSION_(?:MAJOR|MINOR|PATCH) (\d+)$", header, re.M)
        self.version = ".".join(numbers)

    def export_sources(self):
        for pattern in ("CMakeLists.txt", "LICENSE", "cmake/*", "jni/*"):
            copy(self, pattern, src=self._sources(), dst=self.export_sources_folder)

    def validate(self):
        check_min_cppstd(self, 17)

    def layout(self):
        cmake_layout(self)

    def generate(self):
        toolchain = CMakeToolchain(self)
        toolchain.cache_variables["ORVEX_TESTS"] = False
        toolchain.cache_variables["ORVEX_TOOLS"] = False
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        cmake = CMake(self)
        cmake.install()
        copy(self, "LICENSE", src=self.source_folder, dst=os.path.join(self.package_folder, "licenses"))
        # Conan writes its own for each way of consuming.
        rmdir(self, os.path.join(self.package_folder, "lib", "cmake"))
        rmdir(self, os.path.join(self.package_folder, "lib", "pkgconfig"))
        rmdir(self, os.path.join(self.package_folder, "share"))

    def package_info(self):
        self.cpp_info.libs = ["orvex_991"]
        self.cpp_info.includedirs = [os.path.join("include", "orvex_991")]
        self.cpp_info.set_property("cmake_file_name", "orvex_991")
        self.cpp_info.set_property("cmake_target_name", "orvex_991::orvex_991")
        self.cpp_info.set_property("pkg_config_name", "orvex_991")
        if self.settings.os in ("Linux", "FreeBSD"):
            self.cpp_info.system_libs = ["m"]

    def _sources(self):
        return os.path.join(self.recipe_folder, "..", "..")
