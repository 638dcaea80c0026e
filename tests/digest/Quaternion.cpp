#include <cstddef>
#include <sstream>
#include <type_traits>

#include <bv/maths/tMatrix4.h>
#include <bv/maths/tQuaternion.h>
#include <bv/maths/tVector3.h>

#include "Run.h"
#include "Streamed.h"
#include "Topics.h"

namespace digest
{

namespace
{

template <typename T>
void AddQuaternion(Digest& digest, tQuaternion<T> const& q)
{
    digest.Add(q.x, q.y, q.z, q.w);
}

template <typename T>
tQuaternion<T> Any(Workload& work, unsigned int rarity)
{
    T const x = work.Number<T>(rarity);
    T const y = work.Number<T>(rarity);
    T const z = work.Number<T>(rarity);
    tQuaternion<T> const q(x, y, z, work.Number<T>(rarity));
    return work.OneIn(2) ? q.Normalised() : q;
}

template <typename T>
void Arithmetic(Digests& digests, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
    {
        for (int i = 0; i < 1500; ++i)
        {
            tQuaternion<T> const a = Any<T>(work, rarity);
            tQuaternion<T> b = Any<T>(work, rarity);
            if (work.OneIn(4))
                b = {work.Near(a.x), work.Near(a.y), work.Near(a.z), work.Near(a.w)};
            T const s = work.Number<T>(rarity);
            for (tQuaternion<T> const& q : {a + b, a - b, -a, a * s, s * a, a / s})
                AddQuaternion(digests["sums"], q);
            AddQuaternion(digests["products"], a * b);
            for (tQuaternion<T> const& q : {a.Conjugated(), a.Inverted(), a.Normalised()})
                AddQuaternion(digests["inverses"], q);
            digests["lengths"].Add(a.Dot(b), a.LengthSquared(), a.Length());
            digests["comparison"].Add(a == b, a.IsSameRotation(b), a.IsSameRotation(-a));
            digests["rotated"].Add(a.Rotate(work.Vector3<T>(rarity)));
            digests["parts"].Add(a.GetMatrix(), a.GetAxis());
            if (IS_LITTLE_ENDIAN && a.LengthSquared() < T{1e6}) // a NaN may have any bits
                digests["hashes"].Add(a.GetHash32(), a.GetHash8());
            using Other = std::conditional_t<sizeof(T) == 4, double, float>;
            AddQuaternion(digests["conversions"], tQuaternion<Other>(a));
        }
    }
}

template <typename T>
void Changes(Digests& digests, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 1500; ++i)
        {
            tQuaternion<T> const a = Any<T>(work, rarity);
            tQuaternion<T> const b = Any<T>(work, rarity);
            T const s = work.Number<T>(rarity);
            Digest& inPlace = digests["in-place"];
            tQuaternion<T> q = a;
            AddQuaternion(inPlace, q += b);
            AddQuaternion(inPlace, q -= a);
            AddQuaternion(inPlace, q *= s);
            AddQuaternion(inPlace, q *= b);
            AddQuaternion(inPlace, q /= s);
            q = a;
            tQuaternion<T> const& itself = q;
            AddQuaternion(inPlace, q *= itself);
            q = a;
            AddQuaternion(inPlace, q.Conjugate());
            AddQuaternion(inPlace, q.Invert());
            q = a;
            AddQuaternion(inPlace, q.Normalise());
            for (std::size_t k = 0; k < 4; ++k)
                q[k] = a[3 - k];
            AddQuaternion(digests["access"], q);
            AddQuaternion(digests["streams"], ReadBack(b, tQuaternion<T>()));
        }
}

template <typename T>
void Rotations(Digests& digests, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
    {
        for (int i = 0; i < 1500; ++i)
        {
            AddQuaternion(digests["from-matrix"], tQuaternion<T>(work.AnyMatrix<T>(rarity)));
            AddQuaternion(digests["from-matrix"], tQuaternion<T>(work.Matrix<T>(2, 0)));
            tVector3<T> const from = work.Direction<T>(rarity);
            tVector3<T> to = work.Direction<T>(rarity);
            if (work.OneIn(3))
                to = {work.Near(-from.x), work.Near(-from.y), work.Near(-from.z)};
            AddQuaternion(digests["between"], tQuaternion<T>::RotateBetween(from, to));
            tQuaternion<T> const a = Any<T>(work, rarity);
            tQuaternion<T> b = Any<T>(work, rarity);
            if (work.OneIn(3))
                b = {work.Near(-a.x), work.Near(-a.y), work.Near(-a.z), work.Near(-a.w)};
            // The places between the ends: others go through the C library.
            T const places[] = {T{0}, T(0.25), T(0.5), T{1}, (work.Plain<T>() + T{10}) / T{20}};
            for (T const t : places)
            {
                AddQuaternion(digests["slerp"], Slerp(a, b, t));
                AddQuaternion(digests["nlerp"], Nlerp(a, b, t));
            }
            AddQuaternion(digests["nlerp"], Nlerp(a, b, work.Number<T>(rarity)));
        }
    }
    std::ostringstream text;
    text << Any<T>(work, 0) << Any<T>(work, 0).Conjugated();
    digests["text"].Add(text.str());
    if constexpr (IS_LITTLE_ENDIAN)
    {
        std::ostringstream bytes;
        Any<T>(work, 0).Serialise(bytes);
        digests["bytes"].Add(bytes.str());
    }
}

template <typename T>
void Turns(Digest& digest, Workload& work)
{
    for (int i = 0; i < 1500; ++i)
    {
        tQuaternion<T> const q = Any<T>(work, 24);
        tQuaternion<T> const other = Any<T>(work, 24);
        tVector3<T> const axis = work.Direction<T>(24);
        AddQuaternion(digest, tQuaternion<T>::RotateAxis(axis, work.Plain<T>()));
        AddQuaternion(digest, Exp(q));
        AddQuaternion(digest, Log(q));
        AddQuaternion(digest, Pow(q, work.Plain<T>()));
        AddQuaternion(digest, Slerp(q, other, work.Plain<T>()));
        digest.Add(q.GetAngle());
    }
}

} // namespace

void RunQuaternions()
{
    RunBoth("quaternions", Arithmetic<float>, Arithmetic<double>);
    RunBoth("quaternion-changes", Changes<float>, Changes<double>);
    RunBoth("quaternion-rotations", Rotations<float>, Rotations<double>);
}

void RunTurns()
{
    RunBoth("machine-dependent.quaternions", Turns<float>, Turns<double>);
}

} // namespace digest
