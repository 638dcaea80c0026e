"""Fails when the library holds an instruction that only a processor with AVX runs (VEX or EVEX encoded)."""
import re
import subprocess
import sys

listing = subprocess.run(["objdump", "-d", "--no-show-raw-insn", sys.argv[1]], check=True, capture_output=True,
                         text=True).stdout
instructions = re.findall(r"^\s+[0-9a-f]+:\s+(\S.*)$", listing, re.MULTILINE)
vex = [line for line in instructions if re.match(r"v[a-z0-9]+\s.*%[xyz]mm", line)]
print(f"{len(instructions)} instructions, {len(vex)} of them need AVX")
if len(instructions) < 1000:
    sys.exit("the disassembly is too short to be the library's")
if vex:
    sys.exit("\n".join(vex[:10]))
