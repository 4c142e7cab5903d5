# SPDX-License-Identifier: MIT
# Unchecked: written for Conan 2, which CI doesn't have. Run it from the top directory:
#   conan create packaging/conan
import os

from conan import ConanFile
from conan.tools.build import check_min_cppstd
from conan.tools.cmake import CMake, CMakeToolchain, cmake_layout
from conan.tools.files import copy


class ConfgroveRecipe(ConanFile):
    name = "confgrove"
    version = "0.1.0"
    description = "An embeddable configuration library"
    license = "MIT"
    topics = ("configuration", "parser")
    package_type = "library"
    settings = "os", "compiler", "build_type", "arch"
    options = {"shared": [True, False]}
    default_options = {"shared": False}

    def export_sources(self):
        root = os.path.join(self.recipe_folder, "..", "..")
        for pattern in ("CMakeLists.txt", "*.md", "LICENSE", "cmake/*", "docs/*", "examples/*",
                        "include/*", "packaging/debian/*", "src/*"):
            copy(self, pattern, root, self.export_sources_folder)

    def layout(self):
        cmake_layout(self)

    def validate(self):
        check_min_cppstd(self, 17)

    def generate(self):
        toolchain = CMakeToolchain(self)
        for part in ("TESTS", "TOOL", "EXAMPLES"):
            toolchain.cache_variables[f"CONFGROVE_BUILD_{part}"] = False
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        CMake(self).install()
        copy(self, "LICENSE", self.source_folder, os.path.join(self.package_folder, "licenses"))

    def package_info(self):
        self.cpp_info.libs = ["confgrove"]
        self.cpp_info.set_property("cmake_file_name", "confgrove")
        self.cpp_info.set_property("cmake_target_name", "confgrove::confgrove")
        self.cpp_info.set_property("pkg_config_name", "confgrove")
        if not self.options.shared:
            self.cpp_info.defines = ["CONFGROVE_STATIC"]
