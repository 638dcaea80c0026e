"""Installs the library in the ways that differ from the usual one, and builds and runs a program with each.

Usage: installations.py FOLDER GENERATOR COMPILER RELEASE     RELEASE is a build tree of the optimised shared library

Debug and Release stand side by side in one folder; the whole is moved; a static library is found; and the recipes for
vcpkg and Conan make calls that work.
"""
import ast
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys

import manifest

TOP = manifest.TOP
FOLDER, GENERATOR, COMPILER, RELEASE = pathlib.Path(sys.argv[1]).resolve(), *sys.argv[2:]
ABI = manifest.numbers()[1]


def run(*command, **variables):
    done = subprocess.run(command, capture_output=True, text=True, env={**os.environ, **variables})
    if done.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))}\n{done.stdout}{done.stderr}")
    return done.stdout


def check(holds, complaint):
    if not holds:
        sys.exit(complaint)


def configure(source, build, *options, **variables):
    run("cmake", "-S", source, "-B", build, "-G", GENERATOR, f"-DCMAKE_CXX_COMPILER={COMPILER}", *options, **variables)


def install(name, prefix, *options):
    """Builds the library with some options, and installs it."""
    configure(TOP, FOLDER / name, "-DCMAKE_INSTALL_LIBDIR=lib", *options)
    run("cmake", "--build", FOLDER / name, "-j2")
    run("cmake", "--install", FOLDER / name, "--prefix", prefix)


def consume(name, source, *options, **variables):
    """Builds a program with an installed library, runs it, and gives the names of the libraries that it loads."""
    build = FOLDER / name
    configure(TOP / "tests" / "consumers" / source, build, *options, **variables)
    run("cmake", "--build", build)
    run(build / "consumer")
    return re.findall(r"Shared library: \[(libBvBaseUtils[^]]*)\]", run("readelf", "-d", build / "consumer"))


def options_of_recipes():
    """The options that the recipes hand to CMake, without that for the kind of library, which they leave to the user."""
    port = TOP / "packaging" / "vcpkg" / "bvbaseutils"
    version = manifest.numbers()[0]
    known = json.loads((port / "vcpkg.json").read_text(encoding="utf-8"))
    check(known["version"] == version, f"vcpkg.json is for version {known['version']}")
    calls = re.search(r"OPTIONS\s+([^)]*)\)", (port / "portfile.cmake").read_text(encoding="utf-8"))[1].split()

    recipe = ast.parse((TOP / "packaging" / "conan" / "conanfile.py").read_text(encoding="utf-8"))
    [options] = [node for node in recipe.body if isinstance(node, ast.FunctionDef) and node.name == "cmake_options"]
    scope = {}
    exec(compile(ast.Module([options], []), "conanfile.py", "exec"), scope)
    conan = scope["cmake_options"](False)
    [library] = [node for node in recipe.body if isinstance(node, ast.ClassDef)]
    fields = {node.targets[0].id: node.value for node in library.body if isinstance(node, ast.Assign)}
    check(fields["version"].value == version, f"conanfile.py is for version {fields['version'].value}")
    for pattern in [node.value for node in ast.walk(library) if isinstance(node, ast.Constant)
                    and str(node.value).endswith("/*")]:
        check((TOP / pattern[:-2]).is_dir(), f"conanfile.py exports {pattern}")
    return calls, [f"-D{name}={'ON' if value else 'OFF'}" for name, value in conan.items()]


def main():
    shutil.rmtree(FOLDER, ignore_errors=True)
    vcpkg, conan = options_of_recipes()

    both = FOLDER / "both"
    run("cmake", "--install", RELEASE, "--prefix", both)
    install("debug", both, "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_DEBUG_POSTFIX=d", "-DBUILD_SHARED_LIBS=ON", *vcpkg)
    moved = both.rename(FOLDER / "moved")
    for configuration, library in (("Release", f"libBvBaseUtils.so.{ABI}"), ("Debug", f"libBvBaseUtilsd.so.{ABI}")):
        loaded = consume(f"consumer-{configuration}", "find_package", f"-DCMAKE_BUILD_TYPE={configuration}",
                         f"-DCMAKE_PREFIX_PATH={moved}")
        check(loaded == [library], f"{configuration} loads {loaded}")

    static = FOLDER / "static"
    install("archive", static, "-DCMAKE_BUILD_TYPE=Release", *conan)
    check(not list(static.rglob("*.so*")), "a static installation has shared libraries")
    loaded = consume("consumer-static", "find_package", "-DCMAKE_BUILD_TYPE=Release", f"-DCMAKE_PREFIX_PATH={static}")
    loaded += consume("consumer-static-pkg-config", "pkg_config", PKG_CONFIG_PATH=str(static / "lib" / "pkgconfig"))
    check(loaded == [], f"a program with the static library loads {loaded}")
    print("every installation serves")


if __name__ == "__main__":
    main()
