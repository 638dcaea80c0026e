"""Makes the Debian packages twice, in two folders, and looks at them: bytes, fields, files, lintian, and a program.

Usage: debian.py FOLDER CMAKE_GENERATOR     the folder is emptied first
"""
import os
import pathlib
import re
import shutil
import subprocess
import sys

import manifest
import readme

TOP = manifest.TOP
LIBRARY = f"libbvbaseutils{manifest.numbers()[1]}"
SITE = "<!DOCTYPE html>\n<title>The manual</title>\n"
NAMES = (LIBRARY, "libbvbaseutils-dev", "libbvbaseutils-doc")


def output(*command, **options):
    return subprocess.run(command, check=True, capture_output=True, text=True, **options).stdout


def make(tree):
    """The packages, by name, that a copy of the sources makes together with a manual's site."""
    def is_left_out(folder, names):
        return [name for name in names if folder == str(TOP) and name in ("build", ".git")]

    shutil.copytree(TOP, tree, ignore=is_left_out)
    site = tree / "build" / "docs"
    site.mkdir(parents=True)
    (site / "index.html").write_text(SITE, encoding="utf-8")
    run = subprocess.run([tree / "tools" / "package"], capture_output=True, text=True)
    if run.returncode != 0:
        sys.exit(run.stdout + run.stderr)
    files = sorted((tree / "build" / "packages").glob("*.deb"))
    return {file.name.partition("_")[0]: file for file in files}


def check(holds, complaint):
    if not holds:
        sys.exit(complaint)


def check_fields(packages):
    version = manifest.numbers()[0]
    release = re.search(r"-(\d+)\)", (TOP / "packaging" / "debian" / "changelog").read_text(encoding="utf-8"))[1]
    fields = {name: dict(line.split(": ", 1) for line in output("dpkg-deb", "-f", file).splitlines() if line[:1].strip())
              for name, file in packages.items()}
    for name, known in fields.items():
        check(known["Package"] == name and known["Version"] == f"{version}-{release}", f"{name}: {known}")
    depends = {name: re.findall(r"([\w.+-]+) \(", known.get("Depends", "")) for name, known in fields.items()}
    check({"libc6", "libstdc++6"} <= set(depends[LIBRARY]), f"the library depends on {depends[LIBRARY]}")
    check(fields["libbvbaseutils-dev"]["Depends"] == f"{LIBRARY} (= {version}-{release})",
          "libbvbaseutils-dev depends on " + fields["libbvbaseutils-dev"]["Depends"])
    check(depends["libbvbaseutils-doc"] == [] and fields["libbvbaseutils-doc"]["Architecture"] == "all",
          "the manual depends on something")


def files_below(root):
    return {path for path in root.rglob("*") if not path.is_dir() or path.is_symlink()}


def check_files(packages, root):
    """Library and headers are what is installed otherwise, each in its package, and each package says what it is."""
    for name, file in packages.items():
        (root / name).mkdir(parents=True)
        output("dpkg-deb", "-x", file, root / name)
        about = root / name / "usr" / "share" / "doc" / name
        check((about / "copyright").is_file() and (about / "changelog.Debian.gz").is_file(), f"{name} says nothing")
    library, development = (files_below(root / name) for name in NAMES[:2])
    check({re.sub(r"[\d.]+$", "", path.name) for path in library if "share/doc" not in str(path)} ==
          {"libBvBaseUtils.so"}, f"the library's package has {sorted(map(str, library))}")
    names = {manifest.listed_name(path, root / name / "usr", "/usr").replace(f"/{name}/", "/PACKAGE/")
             for name, files in zip(NAMES, (library, development)) for path in files}
    wanted = set(manifest.MANIFEST.read_text(encoding="utf-8").splitlines())
    wanted |= {"share/doc/PACKAGE/copyright", "share/doc/PACKAGE/changelog.Debian.gz"}
    check(names == wanted, f"the packages and packaging/manifest.txt differ in {sorted(names ^ wanted)}")
    site = root / NAMES[2] / "usr" / "share" / "doc" / NAMES[2] / "manual" / "site" / "index.html"
    check(site.is_file() and site.read_text(encoding="utf-8") == SITE, "the manual's site is not in its package")
    terms = (root / LIBRARY / "usr" / "share" / "doc" / LIBRARY / "copyright").read_text(encoding="utf-8")
    licence = (TOP / "LICENSE").read_text(encoding="utf-8")
    check(" ".join(licence.partition("\n\nRedistribution")[2].split()) in " ".join(terms.replace("\n .\n", "\n").split()),
          "the terms of the packages are not those of LICENSE")


def check_program(packages, folder, generator):
    """The README's program is built with what the packages hold, and prints what the README says."""
    root = folder / "root"
    root.mkdir()
    for name in NAMES[:2]:
        output("dpkg-deb", "-x", packages[name], root)
    sources, build = folder / "readme", folder / "readme" / "build"
    wanted = readme.write(sources)["output.txt"]
    output("cmake", "-S", sources, "-B", build, "-G", generator, f"-DCMAKE_PREFIX_PATH={root}/usr")
    output("cmake", "--build", build)
    differences = readme.differences(output(build / "my_renderer"), wanted)
    check(not differences, differences)


def main():
    folder, generator = pathlib.Path(sys.argv[1]).resolve(), sys.argv[2]
    shutil.rmtree(folder, ignore_errors=True)
    packages = make(folder / "one")
    check(sorted(packages) == sorted(NAMES), f"the packages are {sorted(packages)}")
    again = make(folder / "another-folder-with-a-longer-name")
    for name in NAMES:
        check(packages[name].read_bytes() == again[name].read_bytes(), f"{name} differs from one folder to another")
    check_fields(packages)
    check_files(packages, folder / "unpacked")
    check_program(packages, folder, generator)
    lintian = subprocess.run(["lintian", "--fail-on", "error", *packages.values()], capture_output=True, text=True,
                             env={**os.environ, "LANG": "C.UTF-8"})
    check(lintian.returncode == 0, lintian.stdout + lintian.stderr)
    print(lintian.stdout + "the packages are the same from both folders")


if __name__ == "__main__":
    main()
