"""Fails when a program that another compiler makes without optimisation, and that calls all that the headers offer, finds
something missing in the library or does not run. Its compiler may spell the names of functions by newer rules."""
import pathlib
import subprocess
import sys
import tempfile

compiler, library, include, *sources = sys.argv[1:]
folder = pathlib.Path(library).parent
with tempfile.TemporaryDirectory() as scratch:
    program = f"{scratch}/program"
    subprocess.run([compiler, "-std=c++20", "-O0", "-mavx", "-I", include, *sources, library, f"-Wl,-rpath,{folder}",
                    "-o", program], check=True)
    subprocess.run([program], check=True)
