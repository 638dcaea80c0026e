#include <sstream>
#include <string>

#include <bv/maths/tCoordinateFrame.h>
#include <bv/maths/tOrientedBox.h>

#include "Run.h"
#include "Streamed.h"
#include "Topics.h"

namespace digest
{

namespace
{

/// The bytes, what is read back from them, and whether a stream that ends early says so.
template <typename Value>
void AddBytes(Digest& digest, Value const& value, Value target)
{
    std::string const bytes = Serialised(value);
    digest.Add(bytes);
    std::istringstream whole(bytes);
    target.Deserialise(whole);
    digest.Add(Serialised(target), whole.good());
    std::istringstream cut(bytes.substr(0, bytes.size() - 1));
    target.Deserialise(cut);
    digest.Add(cut.fail(), cut.eof());
}

template <typename T>
void Bytes(Digests& digests, Workload& work)
{
    for (int i = 0; i < 300; ++i)
    {
        T const x = work.Ordered<T>(4);
        T const y = work.Ordered<T>(4);
        T const z = work.Ordered<T>(4);
        tVector2<T> const two(x, y);
        tVector3<T> const three(z, x, y);
        AddBytes(digests["tuples"], tTuple2<T>(x, y), {});
        AddBytes(digests["tuples"], tTuple3<T>(x, y, z), {});
        AddBytes(digests["vectors"], two, {});
        AddBytes(digests["vectors"], three, {});
        AddBytes(digests["boxes"], tAreaAABB<T>(two, {z, x}), {});
        AddBytes(digests["boxes"], tVolumeAABB<T>(three, {x, y, z}), {});
        AddBytes(digests["spheres"], tAreaDisc<T>(two, z), tAreaDisc<T>(tVector2<T>()));
        AddBytes(digests["spheres"], tVolumeSphere<T>(three, z), tVolumeSphere<T>(tVector3<T>()));
        AddBytes(digests["oriented-boxes"], tOrientedBox<T>(three, {x, y, z}, {y, z, x}, {z, x, y}, {x, x, y}), {});
        AddBytes(digests["planes"], tPlane<T>({T{3}, T{0}, T{4}}, x), {});
        AddBytes(digests["frames"], tCoordinateFrame<T>(4, 1, 3), {});
        tMatrix4<T> matrix = work.Fresh<T>(work.Below(4), 0);
        matrix(5) = x;
        AddBytes(digests["matrices"], matrix, {});
        int const integer = static_cast<int>(work.Below(100000)) - 50000;
        AddBytes(digests["tuples"], tTuple3<int>(integer, 1, 2), {});
        AddBytes(digests["vectors"], tVector2<unsigned int>(static_cast<unsigned int>(integer), 1), {});
    }
}

template <typename T>
void Texts(Digests& digests, Workload& work)
{
    for (int i = 0; i < 300; ++i)
    {
        T const x = work.Ordered<T>(4);
        T const y = work.Ordered<T>(4);
        T const z = work.Ordered<T>(4);
        digests["tuples"].Add(Text(tTuple2<T>(x, y)), Text(tTuple3<T>(x, y, z)));
        digests["vectors"].Add(Text(tVector2<T>(y, z)), Text(tVector3<T>(z, y, x)));
        tMatrix4<T> matrix = work.Fresh<T>(work.Below(4), 0);
        matrix(6) = x;
        digests["matrices"].Add(Text(matrix), static_cast<std::string>(matrix));
        tPlane<T> plane({T{3}, T{0}, T{4}}, work.Plain<T>());
        digests["planes"].Add(Text(plane), static_cast<std::string>(plane));
        int const integer = static_cast<int>(work.Below(100000)) - 50000;
        digests["integers"].Add(Text(tTuple2<int>(integer, 3)), Text(tVector3<int>(1, integer, 3)),
                                Text(tVector2<unsigned int>(static_cast<unsigned int>(integer), 3)));
    }
}

} // namespace

void RunStreams()
{
    if constexpr (IS_LITTLE_ENDIAN)
        RunBoth("serialised-bytes", Bytes<float>, Bytes<double>);
    RunBoth("text-forms", Texts<float>, Texts<double>);
}

} // namespace digest
