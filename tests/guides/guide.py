"""Runs the program of a guide and compares what it prints, and the picture that it draws, with what the guide shows.

Usage: guide.py FOLDER_OF_GUIDES PROGRAM [PICTURE] -- [EMULATOR]
"""
import difflib
import pathlib
import struct
import subprocess
import sys
import zlib

end = sys.argv.index("--")
guides, program, *pictures = map(pathlib.Path, sys.argv[1:end])
emulator = sys.argv[end + 1:]


def content(picture):
    """The bytes of a picture. Of a PNG, those in front of the compression, which differs between versions of zlib."""
    data = picture.read_bytes()
    if picture.suffix != ".png":
        return data
    chunks, at = {}, 8
    while at < len(data):
        length, name = struct.unpack_from(">I4s", data, at)
        chunks[name] = chunks.get(name, b"") + data[at + 8:at + 8 + length]
        at += length + 12
    return chunks[b"IHDR"] + zlib.decompress(chunks[b"IDAT"])


drawn = [program.with_name(picture.name) for picture in pictures]
run = subprocess.run([*emulator, program, *drawn], capture_output=True, timeout=100)
shown = guides / "programs" / f"{program.stem}.txt"
lines, wanted = run.stdout.decode("utf-8").splitlines(), shown.read_text(encoding="utf-8").splitlines()
if run.returncode != 0 or run.stderr:
    sys.exit(f"{program.name} ends with code {run.returncode}: {run.stderr.decode('utf-8')}")
if lines != wanted:
    sys.exit("\n".join(difflib.unified_diff(wanted, lines, str(shown), program.name, lineterm="")))
for picture, new in zip(pictures, drawn):
    if content(guides / "pictures" / picture) != content(new):
        sys.exit(f"{program.name} draws {new}, which is not docs/guides/pictures/{picture}")
