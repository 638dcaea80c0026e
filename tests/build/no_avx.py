"""Fails when the library holds an instruction that only a processor with AVX runs (VEX or EVEX encoded), but for the
loops of the batch forms, which are called only after a look at the processor: these must be there."""
import re
import subprocess
import sys

# The registers of these loops have 32 or 64 bytes, which is a part of their names.
BATCH_LOOPS = re.compile(
    r"((Transforms|Triangles|Bounds|Visibility|Rays|Comparison|Inverse)<(float|double), |Generator<|NoiseAtPoint<)(32|64)ul>|"
    r"NoiseBlock<[^()]*, (32|64)ul, |ByteHashes<\d+ul, (32|64)ul>|Avx2Kernels|Avx512Kernels")

listing = subprocess.run(["objdump", "-d", "-C", "--no-show-raw-insn", sys.argv[1]], check=True, capture_output=True,
                         text=True).stdout
instructions = 0
inside = []
outside = []
function = ""
for line in listing.splitlines():
    if head := re.match(r"[0-9a-f]+ <(.*)>:$", line):
        function = head[1]
    elif code := re.match(r"\s+[0-9a-f]+:\s+(\S.*)$", line):
        instructions += 1
        if re.match(r"v[a-z0-9]+\s.*%[xyz]mm", code[1]):
            (inside if BATCH_LOOPS.search(function) else outside).append(f"{function}: {code[1]}")
print(f"{instructions} instructions; {len(inside)} need AVX in the loops of the batch forms, {len(outside)} elsewhere")
if instructions < 1000:
    sys.exit("the disassembly is too short to be the library's")
if outside:
    sys.exit("\n".join(outside[:10]))
if "--batch" in sys.argv and len(inside) < 500:
    sys.exit("the loops of the batch forms do not use AVX")
