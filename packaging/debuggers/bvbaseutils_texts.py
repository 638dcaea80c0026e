"""What debuggers show of the types of BvBaseUtils: the same for each of them.

A debugger hands in its values with this interface:

    value["name"], value[0]   a member; an element of an array, a pointer or a compiler's vector
    value.number()            an int or a float
    value.kind()              "integer", "single" or "double"
    value.length()            the number of elements of an array or a compiler's vector
    value.enumerator()        the name of an enumerator, without its scopes, or its number
    value.address()           where the value lies
    value.type_name()         the class by which it is known
    value.memory              the memory of the program, see Memory
"""
import math
import re
import struct


class Memory:
    """The memory of a program. A debugger derives from it."""

    pointer_size = 8

    def read(self, address, size):
        """The bytes from an address on."""
        raise NotImplementedError

    def symbol(self, address):
        """The name of what lies at an address, demangled, or ""."""
        raise NotImplementedError

    def word(self, address):
        """The pointer or size at an address."""
        return int.from_bytes(self.read(address, self.pointer_size), "little")

    def words(self, address, count):
        """The address some words behind another one."""
        return address + count * self.pointer_size


class Raw:
    """A number that was read from memory."""

    def __init__(self, number, kind):
        self.value, self.its_kind = number, kind

    def number(self):
        return self.value

    def kind(self):
        return self.its_kind


# Numbers and groups of them


def rounded(number):
    """A number in single precision."""
    try:
        return struct.unpack("f", struct.pack("f", number))[0]
    except OverflowError:
        return math.copysign(math.inf, number)


def single_text(number):
    """The text of a number in single precision."""
    texts = (f"{number:.{digits}g}" for digits in range(6, 9))
    return next((text for text in texts if rounded(float(text)) == number), f"{number:.9g}")


def double_text(number):
    """The text of a number in double precision."""
    texts = (f"{number:.{digits}g}" for digits in range(6, 17))
    return next((text for text in texts if float(text) == number), f"{number:.17g}")


def number_text(value):
    """A text that names this number and no other of its type, with as few digits as that takes above six."""
    if value.kind() == "integer":
        return str(value.number())
    return single_text(value.number()) if value.kind() == "single" else double_text(value.number())


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
    return [array[i] for i in range(array.length())]


def fraction(value):
    return f"{number_text(value['numerator'])}/{number_text(value['denominator'])}"


# Strings and exceptions, read from memory: what their pointers lead to is private to the library


def string_at(memory, address):
    """Where the text of the bv::String at an address stands, and its length: behind its virtual table, the string points
    to a std::string."""
    text = memory.word(memory.words(address, 1))
    first, second, third = (memory.words(text, i) for i in range(3))
    start, length = memory.word(first), memory.word(second)
    # GNU's standard library: a short text stands behind its length, a long one on the heap. In LLVM's, letters stand where
    # the pointer would; what an emptied text leaves of them may look like one, but leaves no room behind it.
    if start == third or (start % 16 == 0 and 0 < start < 2**48 and memory.word(third) >= max(length, 16)):
        return start, length
    if start % 2 == 1:
        return memory.word(third), length  # LLVM's: a long text, and how much it has room for
    return text + 1, start % 256 // 2  # a short text behind one byte, twice its length


def text_at(memory, address):
    """The text of the bv::String at an address."""
    start, length = string_at(memory, address)
    return memory.read(start, length).decode("utf-8", "replace") if length else ""


def class_of(value):
    """The class that an object was constructed as, by its virtual table, since a consumer's compiler need not know it."""
    found = re.match(r"vtable for ([\w:]+)", value.memory.symbol(value.memory.word(value.address())))
    return found[1] if found else value.type_name()


def exception(value):
    """The class that was constructed, the message and the place."""
    memory = value.memory
    texts = memory.word(memory.words(value.address(), 1))
    if not texts:
        return f"{class_of(value)} without texts, since there was no memory"
    # The message, the file, the line, the function and the location text, in this order.
    return f"{class_of(value)} '{text_at(memory, texts)}' - {text_at(memory, memory.words(texts, 7))}"


# Matrices

# A long row of products of rotations drifts; a matrix that was written to is farther off.
DRIFT = {"single": 1e-3, "double": 1e-9}
TOLERANCE = {"single": 10 * 2.0**-23, "double": 10 * 2.0**-52}


def is_diagonal(rows, tolerance):
    return all(abs(rows[r][c]) < tolerance for r in range(4) for c in range(4) if r != c)


def is_identity(rows, tolerance):
    return is_diagonal(rows, tolerance) and all(abs(rows[i][i] - 1) < tolerance for i in range(4))


def is_orthonormal(rows, tolerance):
    """Whether the first three columns have length 1 and right angles. The fourth may hold anything, and a left-handed
    frame counts."""
    axes = [[rows[r][c] for r in range(3)] for c in range(3)]
    dots = [[sum(a * b for a, b in zip(one, other)) for other in axes] for one in axes]
    return all(abs(dots[i][k] - (i == k)) < tolerance for i in range(3) for k in range(3))


def is_stale(state, rows, kind):
    """Whether the elements deny the state."""
    if state == "IDENTITY":
        return not is_identity(rows, TOLERANCE[kind])
    if state == "DIAGONAL":
        return not is_diagonal(rows, TOLERANCE[kind])
    return state == "ORTHONORMAL" and not is_orthonormal(rows, DRIFT[kind])


def matrix_rows(value):
    """The elements, row by row."""
    return [[value["elements"][4 * r + c] for c in range(4)] for r in range(4)]


def matrix(value):
    state = value["state"].enumerator()
    if not value["elements"].number():
        return f"{state}, without elements"
    rows = [[element.number() for element in row] for row in matrix_rows(value)]
    return f"{state}, stale" if is_stale(state, rows, value["elements"][0].kind()) else state


def matrix_parts(value):
    rows = matrix_rows(value) if value["elements"].number() else []
    return [(f"row {r + 1}", group_text(row)) for r, row in enumerate(rows)]


def prepared_transform(value):
    return f"points {value['points'].enumerator()}, directions {value['directions'].enumerator()}"


def prepared_transform_parts(value):
    columns = elements_of(value["columns"])
    return [(f"column {i + 1}", group_text(columns[4 * i:4 * i + 4])) for i in range(4)]


# Shapes


def box_text(lower, upper, vector_text, axes):
    """Two corners; "empty" for a box that nothing was added to."""
    if all(lower[axis].number() == math.inf and upper[axis].number() == -math.inf for axis in axes):
        return "empty"
    return f"{vector_text(lower)} to {vector_text(upper)}"


def area_box(value):
    return box_text(value["min"], value["max"], pair_text, "xy")


def volume_box(value):
    return box_text(value["min"], value["max"], triple_text, "xyz")


def extremes(value):
    if value["min"].number() == math.inf and value["max"].number() == -math.inf:
        return "empty"
    return f"{number_text(value['min'])} to {number_text(value['max'])}"


def root_text(square):
    """The root of what is kept as a square."""
    if math.isnan(square.number()) or square.number() < 0:
        return f"of square {number_text(square)}"
    root = math.sqrt(square.number())
    return single_text(rounded(root)) if square.kind() == "single" else double_text(root)


def sphere_text(centre, square):
    return f"centre {centre}, radius {root_text(square)}"


def round_shape(value, dimensions):
    """A disc or sphere, read from memory: compilers describe a class with a virtual table in the library alone."""
    kind, letter, size = ("double", "d", 8) if "<double>" in value.type_name() else ("single", "f", 4)
    first = value.address() + max(value.memory.pointer_size, size)  # behind the virtual table
    numbers = struct.unpack(f"<{1 + dimensions}{letter}", value.memory.read(first, (1 + dimensions) * size))
    square, *centre = (Raw(number, kind) for number in numbers)
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


# Rays


def ray(value):
    return f"origin {triple_text(value['origin'])}, direction {triple_text(value['direction'])}"


def reciprocal_ray(value):
    return f"origin {triple_text(value['origin'])}, reciprocal direction {triple_text(value['reciprocal'])}"


def watertight_ray(value):
    """The origin in its usual order, the axes by their names: the last one is the axis along the ray."""
    order = [axis.number() for axis in elements_of(value["axes"])]
    shear = triple_text(value["shear"])
    if sorted(order) != [0, 1, 2]:
        return f"start {triple_text(value['start'])}, shear {shear}, axes {order}"
    origin = [value["start"]["xyz"[order.index(axis)]] for axis in range(3)]
    return f"origin {group_text(origin)}, shear {shear}, axes {' '.join('xyz'[axis] for axis in order)}"


def hit(value):
    return ", ".join(f"{name} {number_text(value[name])}" for name in "tuv")


# Frames and differentials

DIRECTIONS = ("RIGHT", "LEFT", "FORWARDS", "BACKWARDS", "UP", "DOWN")


def is_right_handed(directions):
    """Whether the third direction is the product of the first two: an even number of swapped pairs and of opposites."""
    pairs = [direction // 2 for direction in directions]
    swaps = sum(pairs[i] > pairs[k] for i in range(3) for k in range(i + 1, 3))
    return (swaps + sum(direction % 2 for direction in directions)) % 2 == 0


def coordinate_frame(value):
    directions = [value[axis].number() for axis in "xyz"]
    names = [DIRECTIONS[d] if d < len(DIRECTIONS) else str(d) for d in directions]
    is_frame = sorted(d // 2 for d in directions) == [0, 1, 2]
    hand = (", right-handed" if is_right_handed(directions) else ", left-handed") if is_frame else ""
    return f"x {names[0]}, y {names[1]}, z {names[2]}{hand}"


def differential_parts(value):
    return list(zip(("by u", "by v"), elements_of(value["derivatives"])))


# Views and packets: numbered parts of one kind


def number_of(view, index):
    """A number of a view of numbers, read from memory."""
    is_double = view["first"][0].kind() == "double"
    address = view["first"].number() + index * view["stride"].number()
    number = struct.unpack("<d" if is_double else "<f", view.memory.read(address, 8 if is_double else 4))[0]
    return Raw(number, "double" if is_double else "single")


def vector_of(view, index):
    """A vector of a view of vectors, as text."""
    return group_text([number_of(axis, index) for axis in elements_of(view["axes"])])


def box_of(view, index):
    return f"{vector_of(view['lower'], index)} to {vector_of(view['upper'], index)}"


def ray_of(view, index):
    return f"origin {vector_of(view['origins'], index)}, direction {vector_of(view['directions'], index)}"


def sphere_of(view, index):
    return sphere_text(vector_of(view["centres"], index), number_of(view["radiiSquared"], index))


def count_of_vectors(view):
    return view["axes"][0]["count"].number()


def lane(vectors, index):
    """One lane of each vector, between parentheses."""
    return group_text([vector[index] for vector in vectors])


def packet_ray(packet, index):
    origin, direction = (lane(elements_of(packet[name]), index) for name in ("origin", "direction"))
    return f"origin {origin}, direction {direction}"


def packet_hit(hits, index):
    return ", ".join(f"{name} {number_text(hits[name][index])}" for name in "tuv")


def watertight_lane(packet, index):
    origin, *rows = (lane([triple[axis] for axis in "xyz"], index)
                     for triple in (packet["origin"], *elements_of(packet["rows"])))
    return f"origin {origin}, rows {' '.join(rows)}"


# How each type is shown


class Shown:
    """A text, or None; and parts below it, each a name and a value or text, or None."""

    is_numbered = False

    def __init__(self, text=None, parts=None):
        self.text, self.parts = text, parts


class Named(Shown):
    """The members of these names, below a text if there is one."""

    def __init__(self, names, text=None):
        super().__init__(text, lambda value: [(name, value[name]) for name in names.split()])


class Numbered(Shown):
    """As many parts of one kind as are counted, below their number."""

    is_numbered = True

    def __init__(self, noun, count, part):
        super().__init__(lambda value: f"{count(value)} {noun}",
                         lambda value: ((f"[{i}]", part(value, i)) for i in range(count(value))))


PLANES = "leftPlane rightPlane bottomPlane topPlane nearPlane farPlane"
EXCEPTIONS = ("Exception FileIOException InvalidArgumentException InvalidObjectException NotImplementedException "
              "ObjectCreationException ObjectDeletionException OutOfMemoryException ThreadExitException "
              "maths::MathsException maths::ArithmeticException maths::DivideByZeroException maths::MatrixException")
PACKET = Numbered("rays", lambda packet: packet["origin"][0].length(), packet_ray)

# Strings are missing: each debugger has a way of its own for texts.
TYPES = {
    **{name: Shown(exception) for name in EXCEPTIONS.split()},
    "maths::tTuple2": Shown(pair_text),
    "maths::tTuple3": Shown(triple_text),
    "maths::tVector2": Shown(pair_text),
    "maths::tVector3": Shown(triple_text),
    "maths::tQuaternion": Shown(quaternion_text),
    "maths::Percentage": Shown(fraction),
    "maths::RNGenerator": Named("z w jsr jcong"),
    "maths::tMatrix4": Shown(matrix, matrix_parts),
    "maths::tMatrixParts": Named("translation rotation scale shear"),
    "maths::tPreparedTransform": Shown(prepared_transform, prepared_transform_parts),
    "maths::tPixelRays": Named("origin corner right down isParallel"),
    "maths::tAreaAABB": Shown(area_box),
    "maths::tAreaDisc": Shown(disc),
    "maths::tVolumeAABB": Shown(volume_box),
    "maths::tVolumeSphere": Shown(sphere),
    "maths::tOrientedBox": Shown(oriented_box),
    "maths::tPlane": Shown(plane),
    "maths::tFrustum": Named(PLANES),
    "maths::tRay": Shown(ray),
    "maths::tDepthRay": Named("tMin tMax dOriginDu dOriginDv dDirectionDu dDirectionDv payload", ray),
    "maths::tReciprocalRay": Shown(reciprocal_ray),
    "maths::tWatertightRay": Shown(watertight_ray),
    "maths::tTriangleHit": Shown(hit),
    "maths::tCoordinateFrame": Shown(coordinate_frame),
    "maths::tDifferential2": Shown(None, differential_parts),
    "maths::tDifferential3": Shown(None, differential_parts),
    "maths::tExtremes": Shown(extremes),
    "maths::tNumberView": Numbered("numbers", lambda view: view["count"].number(),
                                   lambda view, index: number_text(number_of(view, index))),
    "maths::tVectorView": Numbered("vectors", count_of_vectors, vector_of),
    "maths::tBoxView": Numbered("boxes", lambda view: count_of_vectors(view["lower"]), box_of),
    "maths::tRayView": Numbered("rays", lambda view: count_of_vectors(view["origins"]), ray_of),
    "maths::tSphereView": Numbered("spheres", lambda view: count_of_vectors(view["centres"]), sphere_of),
    "maths::simd::tRayPacket": PACKET,
    "maths::simd::SSERay": PACKET,
    "maths::simd::AVXRay": PACKET,
    "maths::simd::tPacketHits": Numbered("hits", lambda hits: hits["t"].length(), packet_hit),
    "maths::simd::tWatertightPacket": Numbered("watertight rays", lambda packet: packet["origin"]["x"].length(),
                                               watertight_lane),
}


def pattern(name):
    """A regular expression for the instances of a type."""
    return f"^bv::{name}(<.*>)?$"
