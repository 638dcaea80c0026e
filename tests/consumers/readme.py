"""Writes the program and the CMake project that the README shows into a folder, so that a test can build them."""
import pathlib
import re
import sys

readme, folder = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
blocks = dict(re.findall(r"^```(cpp|cmake)\n(.*?)^```$", readme.read_text(encoding="utf-8"), re.MULTILINE | re.DOTALL))
folder.mkdir(parents=True, exist_ok=True)
for language, name in (("cpp", "main.cpp"), ("cmake", "CMakeLists.txt")):
    if language not in blocks:
        sys.exit(f"{readme.name} shows no {language} block")
    (folder / name).write_text(blocks[language], encoding="utf-8")
