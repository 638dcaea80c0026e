"""Fails when the shared library exports a name that is not its own, or lacks one of each kind that it must have."""
import subprocess
import sys

listing = subprocess.run(["nm", "-DC", "--defined-only", sys.argv[1]], check=True, capture_output=True, text=True).stdout
names = [line.split(" ", 2)[2] for line in listing.splitlines()]
foreign = [name for name in names if "bv::" not in name]
required = [
    "bv::String::String(char const*)",
    "typeinfo for bv::maths::MatrixException",
    "vtable for bv::Exception",
    "bv::maths::tMatrix4<float>::Invert()",
    "bv::maths::tMatrix4<double>::Invert()",
    "bv::maths::tVector3<int>::Serialise(std::ostream&) const",
    "std::ostream& operator<< <unsigned int>(std::ostream&, bv::maths::tTuple2<unsigned int> const&)",
]
missing = [name for name in required if name not in names]
print(f"{len(names)} exported names")
if foreign or missing:
    sys.exit("\n".join([f"not ours: {name}" for name in foreign[:10]] + [f"missing: {name}" for name in missing]))
