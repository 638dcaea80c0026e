"""A recipe for Conan 2: conan create packaging/conan

A test of the library parses this file, configures, builds and installs with the options of `cmake_options`, shared and
static, and finds the package. Not run: Conan itself, and so its generators, the export of the sources and package_info().
"""
import os

from conan import ConanFile
from conan.tools.build import check_min_cppstd
from conan.tools.cmake import CMake, CMakeDeps, CMakeToolchain, cmake_layout
from conan.tools.files import copy


def cmake_options(shared):
    """What CMake is told beyond the settings."""
    return {"BUILD_SHARED_LIBS": shared, "BV_BUILD_TESTS": False}


class BvBaseUtils(ConanFile):
    name = "bvbaseutils"
    version = "0.1.0"
    license = "BSD-3-Clause"
    description = "Base utilities of a family of 3D graphics and rendering applications"
    settings = "os", "arch", "compiler", "build_type"
    options = {"shared": [True, False]}
    default_options = {"shared": True}
    package_type = "library"

    def export_sources(self):
        top = os.path.join(self.recipe_folder, "..", "..")
        for pattern in ("CMakeLists.txt", "LICENSE", "CHANGELOG.md", "cmake/*", "core/*", "include/*", "internal/*",
                        "packaging/*"):
            copy(self, pattern, top, self.export_sources_folder)

    def requirements(self):
        self.requires("utfcpp/[>=3.2.3 <4.1]")  # 4.1.0 takes malformed text for valid

    def validate(self):
        check_min_cppstd(self, 20)

    def layout(self):
        cmake_layout(self)

    def generate(self):
        CMakeDeps(self).generate()
        toolchain = CMakeToolchain(self)
        toolchain.cache_variables.update(cmake_options(bool(self.options.shared)))
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        CMake(self).install()
        copy(self, "LICENSE", self.source_folder, os.path.join(self.package_folder, "licenses"))

    def package_info(self):
        self.cpp_info.set_property("cmake_find_mode", "none")  # the package's own CMake files are found
        self.cpp_info.builddirs.append(os.path.join("lib", "cmake", "BvBaseUtils"))
