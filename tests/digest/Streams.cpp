#include <bit>
#include <sstream>
#include <string>

#include <bv/maths/tCoordinateFrame.h>

#include "Run.h"
#include "Streamed.h"
#include "Topics.h"

namespace digest
{

namespace
{

/// A number that is no NaN: the bits of a NaN, and whether its text has a sign, are no promise.
template <typename T>
T Ordered(Workload& work)
{
    T const number = work.Number<T>(4);
    return number == number ? number : T{7};
}

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
void Bytes(Digest& digest, Workload& work)
{
    for (int i = 0; i < 300; ++i)
    {
        T const x = Ordered<T>(work);
        T const y = Ordered<T>(work);
        T const z = Ordered<T>(work);
        tVector2<T> const two(x, y);
        tVector3<T> const three(z, x, y);
        AddBytes(digest, tTuple2<T>(x, y), {});
        AddBytes(digest, tTuple3<T>(x, y, z), {});
        AddBytes(digest, two, {});
        AddBytes(digest, three, {});
        AddBytes(digest, tAreaAABB<T>(two, {z, x}), {});
        AddBytes(digest, tVolumeAABB<T>(three, {x, y, z}), {});
        AddBytes(digest, tAreaDisc<T>(two, z), tAreaDisc<T>(tVector2<T>()));
        AddBytes(digest, tVolumeSphere<T>(three, z), tVolumeSphere<T>(tVector3<T>()));
        AddBytes(digest, tPlane<T>({T{3}, T{0}, T{4}}, x), {});
        AddBytes(digest, tCoordinateFrame<T>(4, 1, 3), {});
        tMatrix4<T> matrix = work.Fresh<T>(work.Below(4), 0);
        matrix(5) = x;
        AddBytes(digest, matrix, {});
        int const integer = static_cast<int>(work.Below(100000)) - 50000;
        AddBytes(digest, tTuple3<int>(integer, 1, 2), {});
        AddBytes(digest, tVector2<unsigned int>(static_cast<unsigned int>(integer), 1), {});
    }
}

template <typename T>
void Texts(Digest& digest, Workload& work)
{
    for (int i = 0; i < 300; ++i)
    {
        T const x = Ordered<T>(work);
        T const y = Ordered<T>(work);
        T const z = Ordered<T>(work);
        digest.Add(Text(tTuple2<T>(x, y)), Text(tTuple3<T>(x, y, z)), Text(tVector2<T>(y, z)),
                   Text(tVector3<T>(z, y, x)));
        tMatrix4<T> matrix = work.Fresh<T>(work.Below(4), 0);
        matrix(6) = x;
        digest.Add(Text(matrix), static_cast<std::string>(matrix));
        tPlane<T> plane({T{3}, T{0}, T{4}}, work.Plain<T>());
        digest.Add(Text(plane), static_cast<std::string>(plane));
        int const integer = static_cast<int>(work.Below(100000)) - 50000;
        digest.Add(Text(tTuple2<int>(integer, 3)), Text(tVector3<int>(1, integer, 3)),
                   Text(tVector2<unsigned int>(static_cast<unsigned int>(integer), 3)));
    }
}

} // namespace

void RunStreams()
{
    // The bytes stand in the order of the machine.
    if constexpr (std::endian::native == std::endian::little)
        RunBoth("serialised-bytes", Bytes<float>, Bytes<double>);
    RunBoth("text-forms", Texts<float>, Texts<double>);
}

} // namespace digest
