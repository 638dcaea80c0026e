"""Compiles the C++ that the pages of the manual show, block by block, without a warning.

Usage: code_of_pages.py TREE COMPILER [LEFT_OUT_HEADER...]
"""
import pathlib
import re
import subprocess
import sys

tree, compiler, left_out = pathlib.Path(sys.argv[1]), sys.argv[2], sys.argv[3:]
command = [compiler, "-std=c++20", "-fsyntax-only", "-Wall", "-Wextra", "-Wpedantic", "-Werror", "-I", tree / "include",
           "-x", "c++", "-"]
compiled, faults = 0, []
for page in sorted([tree / "README.md", *(tree / "docs").rglob("*.md")]):
    text = page.read_text(encoding="utf-8")
    for block in re.finditer(r"^```cpp\n(.*?)^```$", text, re.MULTILINE | re.DOTALL):
        if any(f"#include <{header}>" in block[1] for header in left_out):
            continue
        compiled += 1
        run = subprocess.run(command, input=block[1], capture_output=True, text=True, check=False)
        if run.returncode != 0:
            line = text.count("\n", 0, block.start(1)) + 1
            faults.append(f"{page.relative_to(tree)}:{line}: what the page shows does not compile\n{run.stderr}")
if compiled == 0:
    faults.append("no page shows any C++")
if faults:
    sys.exit("\n".join(faults))
