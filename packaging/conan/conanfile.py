"""The Conan 2 recipe of LmImagingLib: `conan create packaging/conan`."""

import os
import re

from conan import ConanFile
from conan.tools.cmake import CMake, CMakeDeps, CMakeToolchain, cmake_layout
from conan.tools.files import copy, load


class LmImagingLib(ConanFile):
    name = "lmimaginglib"
    description = "Pixel formats of machine-vision cameras"
    topics = ("camera", "machine-vision", "pixel-format", "bayer", "genicam")
    package_type = "shared-library"
    settings = "os", "compiler", "build_type", "arch"
    options = {"tools": [True, False]}
    default_options = {"tools": False}

    def set_version(self):
        lists = load(self, os.path.join(self.recipe_folder, "..", "..", "CMakeLists.txt"))
        self.version = re.search(r"project\(\w+ VERSION ([\d.]+)", lists).group(1)

    def export_sources(self):
        root = os.path.join(self.recipe_folder, "..", "..")
        for pattern in ("CMakeLists.txt", "cmake/*", "include/*", "src/*", "tools/*", "debian/copyright"):
            copy(self, pattern, root, self.export_sources_folder)

    def requirements(self):
        if self.options.tools:
            self.requires("cli11/[>=2.1 <3]")
            self.requires("libpng/[>=1.6 <2]")
            self.requires("libtiff/[>=4.0 <5]")
            self.requires("nlohmann_json/[>=3.9 <4]")

    def layout(self):
        cmake_layout(self)

    def generate(self):
        CMakeDeps(self).generate()
        toolchain = CMakeToolchain(self)
        toolchain.cache_variables.update(
            LM_BUILD_EXAMPLES=False, LM_BUILD_PYTHON=False, LM_BUILD_TESTS=False, LM_BUILD_TOOLS=bool(self.options.tools)
        )
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        copy(self, "copyright", os.path.join(self.source_folder, "debian"), os.path.join(self.package_folder, "licenses"))
        CMake(self).install()

    def package_info(self):
        self.cpp_info.libs = ["LmImagingLib"]
        self.cpp_info.set_property("cmake_file_name", "LmImagingLib")
        self.cpp_info.set_property("cmake_target_name", "LmImagingLib::LmImagingLib")
        self.cpp_info.set_property("pkg_config_name", "lmimaginglib")
