"""What the README's section on a program that uses the library shows, so that tests can do what it says.

Usage: readme.py FOLDER                     writes it into a folder: main.cpp, CMakeLists.txt, output.txt and scripts
       readme.py --compare PROGRAM OUTPUT   runs a program and compares what it prints
"""
import difflib
import pathlib
import re
import subprocess
import sys

README = pathlib.Path(__file__).resolve().parent.parent.parent / "README.md"

# Each file, the language of its block, and how that begins.
FILES = (("main.cpp", "cpp", "#include"), ("CMakeLists.txt", "cmake", "cmake_minimum_required"), ("output.txt", "", "box: "),
         ("install.sh", "sh", "apt-get install ./build/packages/"), ("build.sh", "sh", "cmake -S . "),
         ("pkg-config.sh", "sh", "g++ main.cpp "), ("picture.sh", "sh", "apt-get install lib"))


def shown(readme):
    """The text of each file."""
    section = re.search(r"^## A program that uses it\n(.*?)^## ", readme, re.MULTILINE | re.DOTALL)[1]
    blocks = re.findall(r"^```(\w*)\n(.*?)^```$", section, re.MULTILINE | re.DOTALL)
    files = {}
    for name, language, beginning in FILES:
        texts = [text for found, text in blocks if found == language and text.startswith(beginning)]
        if len(texts) != 1:
            sys.exit(f"the README has {len(texts)} blocks of {language or 'text'} that begin with: {beginning}")
        files[name] = texts[0]
    return files


def differences(output, wanted):
    """What a program prints otherwise than it should, as lines."""
    return "".join(difflib.unified_diff(wanted.splitlines(True), output.splitlines(True), "README", "program", n=0))


def write(folder):
    """Puts the files of the README into a folder, and gives their texts."""
    files = shown(README.read_text(encoding="utf-8"))
    folder.mkdir(parents=True, exist_ok=True)
    for name, text in files.items():
        (folder / name).write_text(text, encoding="utf-8")
    return files


def main():
    if sys.argv[1] != "--compare":
        write(pathlib.Path(sys.argv[1]))
        return
    program, wanted = sys.argv[2:]
    output = subprocess.run([program], check=True, capture_output=True, text=True).stdout
    sys.exit(differences(output, pathlib.Path(wanted).read_text(encoding="utf-8")) or 0)


if __name__ == "__main__":
    main()
