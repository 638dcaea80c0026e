"""How GDB shows the types of BvBaseUtils: `source` this file, or let GDB load it with the shared library.

`print/r` shows the members as they are. The texts of strings and exceptions are read from memory, so that they show in
core dumps and without debug information of the library, too; for that, the library must use GNU's standard library.
"""
import math
import re
import struct

import gdb
import gdb.printing


def rounded(number):
    """A number in single precision."""
    try:
        return struct.unpack("f", struct.pack("f", number))[0]
    except OverflowError:
        return math.copysign(math.inf, number)


def number_text(value):
    """A text that names this number and no other of its type, with as few digits as that takes above six."""
    kind = value.type.strip_typedefs()
    if kind.code != gdb.TYPE_CODE_FLT:
        return str(int(value))
    number = float(value)
    return single_text(number) if kind.sizeof == 4 else double_text(number)


def single_text(number):
    """The text of a number in single precision."""
    texts = (f"{number:.{digits}g}" for digits in range(6, 9))
    return next((text for text in texts if rounded(float(text)) == number), f"{number:.9g}")


def double_text(number):
    """The text of a number in double precision."""
    texts = (f"{number:.{digits}g}" for digits in range(6, 17))
    return next((text for text in texts if float(text) == number), f"{number:.17g}")


def group_text(numbers):
    """Numbers between parentheses."""
    return f"({', '.join(map(number_text, numbers))})"


def pair_text(value):
    """A tuple or vector of two components."""
    return group_text([value["x"], value["y"]])


def triple_text(value):
    """A tuple or vector of three components."""
    return group_text([value["x"], value["y"], value["z"]])


def quaternion_text(value):
    """A quaternion, the real component last."""
    return group_text([value["x"], value["y"], value["z"], value["w"]])


def elements_of(array):
    """The elements of an array or of a compiler's vector."""
    first, last = array.type.strip_typedefs().range()
    return [array[i] for i in range(first, last + 1)]


def enumerator(value):
    """The name of an enumerator without its scopes; the number, where it has no name."""
    number = int(value)
    for field in value.type.strip_typedefs().fields():
        if field.enumval == number:
            return field.name.rpartition("::")[2]
    return str(number)


class Line:
    """A value in one line of text."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        return self.text(self.value)


class Members:
    """A value with named parts below it, a pair of a name and a value or text for each."""

    def __init__(self, value):
        self.value = value

    def children(self):
        return iter(self.parts(self.value))


def line(function):
    """A printer for what the function makes one line of."""
    return type("LineOf" + function.__name__, (Line,), {"text": staticmethod(function)})


def members(names, head=None):
    """A printer for the named members, below a line of text if there is a function for it."""
    def parts(value):
        return [(name, value[name]) for name in names.split()]

    functions = {"parts": staticmethod(parts)}
    if head:
        functions["to_string"] = lambda self: head(self.value)
    return type("MembersOf", (Members,), functions)


class Numbered:
    """A value with numbered parts of equal kind below it."""

    def __init__(self, value):
        self.value = value

    def display_hint(self):
        return "array"

    def to_string(self):
        return f"{self.count(self.value)} {self.noun}"

    def children(self):
        for i in range(self.count(self.value)):
            yield f"[{i}]", self.part(self.value, i)


def pointer_type():
    return gdb.lookup_type("char").pointer()


def pointer_at(address, words):
    """The pointer that stands some words behind an address."""
    return (address.cast(pointer_type()) + words * pointer_type().sizeof).cast(pointer_type().pointer()).dereference()


def string_at(address):
    """The text of the bv::String that stands at an address: behind its virtual table, it points to a std::string."""
    text = pointer_at(address, 1)
    return pointer_at(text, 0), int(pointer_at(text, 1))


def text_at(address):
    start, length = string_at(address)
    return bytes(gdb.selected_inferior().read_memory(int(start), length)).decode("utf-8", "replace") if length else ""


class String:
    def __init__(self, value):
        self.value = value

    def display_hint(self):
        return "string"

    def to_string(self):
        start, length = string_at(self.value.address)
        return start.lazy_string("UTF-8", length)


def class_of(value):
    """The class that an object was constructed as, by its virtual table, since a consumer's compiler need not know it."""
    table = gdb.execute(f"info symbol {int(pointer_at(value.address, 0))}", to_string=True)
    found = re.match(r"vtable for ([\w:]+)", table)
    return found[1] if found else str(value.type.strip_typedefs().unqualified())


def exception(value):
    """The class that was thrown, the message and the place."""
    name = class_of(value)
    texts = pointer_at(value.address, 1)
    if not int(texts):
        return f"{name} without texts, since there was no memory"
    # The message, the file, the line, the function and the location text, in this order.
    return f"{name} '{text_at(texts)}' - {text_at(texts + 7 * pointer_type().sizeof)}"


def fraction(value):
    return f"{number_text(value['numerator'])}/{number_text(value['denominator'])}"


def is_identity(rows, tolerance):
    return is_diagonal(rows, tolerance) and all(abs(rows[i][i] - 1) < tolerance for i in range(4))


def is_diagonal(rows, tolerance):
    return all(abs(rows[r][c]) < tolerance for r in range(4) for c in range(4) if r != c)


def is_orthonormal(rows, tolerance):
    """Whether the first three columns have length 1 and right angles. The fourth may hold anything, and a left-handed
    frame counts."""
    axes = [[rows[r][c] for r in range(3)] for c in range(3)]
    dots = [[sum(a * b for a, b in zip(one, other)) for other in axes] for one in axes]
    return all(abs(dots[i][k] - (i == k)) < tolerance for i in range(3) for k in range(3))


class Matrix4(Members):
    # A long row of products of rotations drifts; a matrix that was written to is farther off.
    DRIFT = {4: 1e-3, 8: 1e-9}
    EPSILON = {4: 2.0**-23, 8: 2.0**-52}

    def rows(self):
        return [[self.value["elements"][4 * r + c] for c in range(4)] for r in range(4)]

    def is_stale(self, state):
        """Whether the elements deny the state."""
        rows = [[float(number) for number in row] for row in self.rows()]
        size = self.value["elements"].type.target().sizeof
        if state == "IDENTITY":
            return not is_identity(rows, 10 * self.EPSILON[size])
        if state == "DIAGONAL":
            return not is_diagonal(rows, 10 * self.EPSILON[size])
        return state == "ORTHONORMAL" and not is_orthonormal(rows, self.DRIFT[size])

    def to_string(self):
        state = enumerator(self.value["state"])
        if not int(self.value["elements"]):
            return f"{state}, without elements"
        return f"{state}, stale" if self.is_stale(state) else state

    def children(self):
        if not int(self.value["elements"]):
            return
        for r, row in enumerate(self.rows()):
            yield f"row {r + 1}", group_text(row)


def box_text(lower, upper, vector_text, axes):
    """Two corners; "empty" where no point lies between them in any direction, as in a box that nothing was added to."""
    if all(float(lower[axis]) == math.inf and float(upper[axis]) == -math.inf for axis in axes):
        return "empty"
    return f"{vector_text(lower)} to {vector_text(upper)}"


def area_box(value):
    return box_text(value["min"], value["max"], pair_text, "xy")


def volume_box(value):
    return box_text(value["min"], value["max"], triple_text, "xyz")


def root_text(square):
    """The root of what is kept as a square."""
    number = float(square)
    if math.isnan(number) or number < 0:
        return f"of square {number_text(square)}"
    root = math.sqrt(number)
    return single_text(rounded(root)) if square.type.strip_typedefs().sizeof == 4 else double_text(root)


def sphere_text(centre, square):
    return f"centre {centre}, radius {root_text(square)}"


def round_shape(value, dimensions):
    """A disc or sphere, read from memory: compilers describe a class with a virtual table in the library alone."""
    kind = gdb.lookup_type("double" if "<double>" in str(value.type) else "float")
    first = value.address.cast(pointer_type()) + max(pointer_type().sizeof, kind.sizeof)  # behind the virtual table
    square, *centre = (first.cast(kind.pointer())[i] for i in range(1 + dimensions))
    return sphere_text(group_text(centre), square)


def disc(value):
    return round_shape(value, 2)


def sphere(value):
    return round_shape(value, 3)


def oriented_box(value):
    axes = " ".join(map(triple_text, elements_of(value["axes"])))
    return f"centre {triple_text(value['centre'])}, half extents {triple_text(value['halfExtents'])}, axes {axes}"


def plane(value):
    return f"normal {triple_text(value['normal'])}, offset {number_text(value['offset'])}"


def ray(value):
    return f"origin {triple_text(value['origin'])}, direction {triple_text(value['direction'])}"


def reciprocal_ray(value):
    return f"origin {triple_text(value['origin'])}, reciprocal direction {triple_text(value['reciprocal'])}"


def watertight_ray(value):
    """The origin in its usual order, the axes by their names: the last one is the axis along the ray."""
    order = [int(axis) for axis in elements_of(value["axes"])]
    shear = triple_text(value["shear"])
    if sorted(order) != [0, 1, 2]:
        return f"start {triple_text(value['start'])}, shear {shear}, axes {order}"
    origin = [value["start"]["xyz"[order.index(axis)]] for axis in range(3)]
    return f"origin {group_text(origin)}, shear {shear}, axes {' '.join('xyz'[axis] for axis in order)}"


def hit(value):
    return ", ".join(f"{name} {number_text(value[name])}" for name in "tuv")


DIRECTIONS = ("RIGHT", "LEFT", "FORWARDS", "BACKWARDS", "UP", "DOWN")


def is_right_handed(directions):
    """Whether the third direction is the product of the first two: an even order of the pairs and of opposites."""
    pairs = [direction // 2 for direction in directions]
    turns = sum(pairs[i] > pairs[k] for i in range(3) for k in range(i + 1, 3))
    return (turns + sum(direction % 2 for direction in directions)) % 2 == 0


def coordinate_frame(value):
    directions = [int(value[axis]) for axis in "xyz"]
    names = [DIRECTIONS[d] if d < len(DIRECTIONS) else str(d) for d in directions]
    is_frame = sorted(d // 2 for d in directions) == [0, 1, 2]
    hand = (", right-handed" if is_right_handed(directions) else ", left-handed") if is_frame else ""
    return f"x {names[0]}, y {names[1]}, z {names[2]}{hand}"


class Differential(Members):
    @staticmethod
    def parts(value):
        return list(zip(("by u", "by v"), elements_of(value["derivatives"])))


class PreparedTransform(Members):
    def to_string(self):
        return f"points {enumerator(self.value['points'])}, directions {enumerator(self.value['directions'])}"

    @staticmethod
    def parts(value):
        columns = elements_of(value["columns"])
        return [(f"column {i + 1}", group_text(columns[4 * i:4 * i + 4])) for i in range(4)]


def extremes(value):
    if float(value["min"]) == math.inf and float(value["max"]) == -math.inf:
        return "empty"
    return f"{number_text(value['min'])} to {number_text(value['max'])}"


def number_of(view, index):
    """A number of a view of numbers."""
    address = view["first"].cast(pointer_type()) + index * int(view["stride"])
    return address.cast(view["first"].type).dereference()


def vector_of(view, index):
    """A vector of a view of vectors, as text."""
    return group_text([number_of(axis, index) for axis in elements_of(view["axes"])])


class NumberView(Numbered):
    noun = "numbers"
    count = staticmethod(lambda view: int(view["count"]))
    part = staticmethod(lambda view, index: number_text(number_of(view, index)))


class VectorView(Numbered):
    noun = "vectors"
    count = staticmethod(lambda view: NumberView.count(view["axes"][0]))
    part = staticmethod(vector_of)


class BoxView(Numbered):
    noun = "boxes"
    count = staticmethod(lambda view: VectorView.count(view["lower"]))

    @staticmethod
    def part(view, index):
        return f"{vector_of(view['lower'], index)} to {vector_of(view['upper'], index)}"


class RayView(Numbered):
    noun = "rays"
    count = staticmethod(lambda view: VectorView.count(view["origins"]))

    @staticmethod
    def part(view, index):
        return f"origin {vector_of(view['origins'], index)}, direction {vector_of(view['directions'], index)}"


class SphereView(Numbered):
    noun = "spheres"
    count = staticmethod(lambda view: VectorView.count(view["centres"]))

    @staticmethod
    def part(view, index):
        return sphere_text(vector_of(view["centres"], index), number_of(view["radiiSquared"], index))


def width(vector):
    """The number of lanes of a compiler's vector."""
    first, last = vector.type.strip_typedefs().range()
    return last - first + 1


def lane(vectors, index):
    """One lane of each vector, between parentheses."""
    return group_text([vector[index] for vector in vectors])


class RayPacket(Numbered):
    noun = "rays"
    count = staticmethod(lambda packet: width(packet["origin"][0]))

    @staticmethod
    def part(packet, index):
        origin, direction = (lane(elements_of(packet[name]), index) for name in ("origin", "direction"))
        return f"origin {origin}, direction {direction}"


class PacketHits(Numbered):
    noun = "hits"
    count = staticmethod(lambda hits: width(hits["t"]))
    part = staticmethod(lambda hits, index: ", ".join(f"{name} {number_text(hits[name][index])}" for name in "tuv"))


class WatertightPacket(Numbered):
    noun = "watertight rays"
    count = staticmethod(lambda packet: width(packet["origin"]["x"]))

    @staticmethod
    def part(packet, index):
        origin, *rows = (lane([triple[axis] for axis in "xyz"], index)
                         for triple in (packet["origin"], *elements_of(packet["rows"])))
        return f"origin {origin}, rows {' '.join(rows)}"


PLANES = "leftPlane rightPlane bottomPlane topPlane nearPlane farPlane"
EXCEPTIONS = ("Exception FileIOException InvalidArgumentException InvalidObjectException NotImplementedException "
              "ObjectCreationException ObjectDeletionException OutOfMemoryException ThreadExitException "
              "maths::MathsException maths::ArithmeticException maths::DivideByZeroException maths::MatrixException")

PRINTERS = {
    "String": String,
    **{name: line(exception) for name in EXCEPTIONS.split()},
    "maths::tTuple2": line(pair_text),
    "maths::tTuple3": line(triple_text),
    "maths::tVector2": line(pair_text),
    "maths::tVector3": line(triple_text),
    "maths::tQuaternion": line(quaternion_text),
    "maths::Percentage": line(fraction),
    "maths::RNGenerator": members("z w jsr jcong"),
    "maths::tMatrix4": Matrix4,
    "maths::tMatrixParts": members("translation rotation scale shear"),
    "maths::tPreparedTransform": PreparedTransform,
    "maths::tPixelRays": members("origin corner right down isParallel"),
    "maths::tAreaAABB": line(area_box),
    "maths::tAreaDisc": line(disc),
    "maths::tVolumeAABB": line(volume_box),
    "maths::tVolumeSphere": line(sphere),
    "maths::tOrientedBox": line(oriented_box),
    "maths::tPlane": line(plane),
    "maths::tFrustum": members(PLANES),
    "maths::tRay": line(ray),
    "maths::tDepthRay": members("tMin tMax dOriginDu dOriginDv dDirectionDu dDirectionDv payload", ray),
    "maths::tReciprocalRay": line(reciprocal_ray),
    "maths::tWatertightRay": line(watertight_ray),
    "maths::tTriangleHit": line(hit),
    "maths::tCoordinateFrame": line(coordinate_frame),
    "maths::tDifferential2": Differential,
    "maths::tDifferential3": Differential,
    "maths::tExtremes": line(extremes),
    "maths::tNumberView": NumberView,
    "maths::tVectorView": VectorView,
    "maths::tBoxView": BoxView,
    "maths::tRayView": RayView,
    "maths::tSphereView": SphereView,
    "maths::simd::tRayPacket": RayPacket,
    "maths::simd::SSERay": RayPacket,
    "maths::simd::AVXRay": RayPacket,
    "maths::simd::tPacketHits": PacketHits,
    "maths::simd::tWatertightPacket": WatertightPacket,
}


def register(objfile=None):
    """Has GDB use the printers, for as long as the given file is loaded, or always. A second time changes nothing."""
    collection = gdb.printing.RegexpCollectionPrettyPrinter("BvBaseUtils")
    for name, printer in PRINTERS.items():
        collection.add_printer(name, f"^bv::{name}(<.*>)?$", printer)
    gdb.printing.register_pretty_printer(objfile, collection, replace=True)


if __name__ == "__main__":
    register()
