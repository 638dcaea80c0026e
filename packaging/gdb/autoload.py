# GDB runs this file when it loads the shared library. The printers lie in the same installation, wherever that was moved.
import os
import sys

_FOLDERS = os.path.dirname(os.path.realpath(__file__)).partition("/gdb/auto-load/")
_PRINTERS = os.path.join(_FOLDERS[0], "BvBaseUtils", "gdb")
if _PRINTERS not in sys.path:
    sys.path.insert(0, _PRINTERS)

import bvbaseutils_printers

bvbaseutils_printers.register(gdb.current_objfile())
