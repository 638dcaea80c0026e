// Prints one line for each topic of the library, `name hash`: a hash over the results of a fixed workload. It tells
// whether a change of the code has changed a result; whether the results are right is for the tests to say.
//
// Topics whose name starts with `machine-dependent.` go through the C library's sin, cos and pow or the processor's
// reciprocal estimates: their hashes compare on one machine only.

#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include <xmmintrin.h>

#include <bv/Exception.h>
#include <bv/FileIOException.h>
#include <bv/Hash.h>
#include <bv/NotImplementedException.h>
#include <bv/String.h>
#include <bv/maths/DivideByZeroException.h>
#include <bv/maths/Integer.h>
#include <bv/maths/IsEqual.h>
#include <bv/maths/LocalAxes.h>
#include <bv/maths/Noise.h>
#include <bv/maths/Percentage.h>
#include <bv/maths/PositionOffset.h>
#include <bv/maths/RNGenerator.h>
#include <bv/maths/Reciprocal.h>
#include <bv/maths/Scalar.h>
#include <bv/maths/simd/SSERay.h>
#include <bv/maths/tCoordinateFrame.h>
#include <bv/maths/tDepthRay.h>
#include <bv/maths/tFrustum.h>
#include <bv/maths/tRay.h>

#include "Digest.h"
#include "PacketsOfEight.h"

namespace digest
{

namespace
{

void Print(std::string const& name, Digest const& digest)
{
    std::printf("%s %016llx\n", name.c_str(), static_cast<unsigned long long>(digest.GetHash()));
}

/// Runs a topic with numbers of its own, so that a change of one leaves the others alone.
template <typename Topic>
void Run(std::string const& name, Topic topic)
{
    Digest digest;
    Workload work(2026);
    topic(digest, work);
    Print(name, digest);
}

template <typename Single, typename Double>
void RunBoth(std::string const& name, Single single, Double twice)
{
    Run(name + ".float", single);
    Run(name + ".double", twice);
}

/// How often one component in so many is special: never, seldom, often.
constexpr unsigned int RARITIES[] = {0, 24, 4};

template <typename T>
std::string Serialised(T const& value)
{
    std::ostringstream stream;
    value.Serialise(stream);
    return stream.str();
}

template <typename T>
std::string Text(T const& value)
{
    std::ostringstream stream;
    stream << value;
    return stream.str();
}

// --- vectors and scalars ---

template <typename T, typename Vector>
void AddVectorResults(Digest& digest, Vector const& a, Vector const& b, T s)
{
    digest.Add(a + b, a - b, -a, a * s, s * a, a * b, a / s, a / b);
    digest.Add(a.Dot(b), a.LengthSquared(), a.Length(), a.Normalised(), a.IsInfinite(), a == b, a == a);
    Vector c = a;
    digest.Add(c += b);
    digest.Add(c -= a);
    digest.Add(c *= s);
    digest.Add(c *= b);
    digest.Add(c /= s);
    digest.Add(c /= b);
    digest.Add(c.Normalise());
    c = a;
    Vector const& itself = c;
    digest.Add(c /= itself);
    c = a;
    digest.Add(c *= itself);
}

template <typename T>
void Vectors(Digest& digest, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
    {
        for (int i = 0; i < 1500; ++i)
        {
            tVector2<T> const a = work.Vector2<T>(rarity);
            tVector2<T> b = work.Vector2<T>(rarity);
            if (work.OneIn(4))
                b = {work.Near(a.x), work.Near(a.y)};
            AddVectorResults(digest, a, b, work.Number<T>(rarity));
            digest.Add(a[0], a[1]);
        }
        for (int i = 0; i < 1500; ++i)
        {
            tVector3<T> const a = work.Vector3<T>(rarity);
            tVector3<T> b = work.Vector3<T>(rarity);
            if (work.OneIn(4))
                b = {work.Near(a.x), work.Near(a.y), work.Near(a.z)};
            AddVectorResults(digest, a, b, work.Number<T>(rarity));
            digest.Add(a.Cross(b), a[0], a[1], a[2]);
        }
        for (int i = 0; i < 300; ++i)
        {
            using Other = std::conditional_t<sizeof(T) == 4, double, float>;
            tVector3<Other> const a = work.Vector3<Other>(rarity);
            digest.Add(tVector3<T>(a), tVector2<T>(tVector2<Other>(a.x, a.y)),
                       tTuple3<T>(tTuple3<Other>(a.x, a.y, a.z)), tTuple2<T>(tTuple2<Other>(a.x, a.y)));
        }
    }
}

template <typename T>
void Equality(Digest& digest, Workload& work)
{
    for (int i = 0; i < 20000; ++i)
    {
        T const a = work.Number<T>(4);
        T const b = work.OneIn(2) ? work.Near(a) : work.Number<T>(4);
        digest.Add(IsEqual(a, b), IsEqual(b, a), IsEqual(a, a), IsEqual(a, -b));
        tTuple3<T> const p(a, b, a);
        digest.Add(p == tTuple3<T>(b, a, a), tTuple2<T>(a, b) == tTuple2<T>(b, a));
    }
}

template <typename T>
void Scalars(Digest& digest, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 3000; ++i)
        {
            T const low = work.Number<T>(rarity);
            T const high = work.Number<T>(rarity);
            T const x =
                work.OneIn(2) ? low + (high - low) * (work.Plain<T>() / T{20} + T{0.5}) : work.Number<T>(rarity);
            digest.Add(CubicSmoothStep(low, high, x), QuinticSmoothStep(low, high, x), SmoothStep(low, high, x),
                       SawTooth(x, high));
        }
}

void Logarithms(Digest& digest, Workload& work)
{
    constexpr float PRECISIONS[] = {2.0F, 1.0F, 0.5F, 0.3F, 1e-3F, 1e-6F};
    for (int i = 0; i < 3000; ++i)
    {
        float const x = work.OneIn(2) ? work.Wide<float>() : work.Number<float>(4);
        digest.Add(Log2(x, PRECISIONS[work.Below(6)]));
    }
}

void Integers(Digest& digest, Workload& work)
{
    auto const add = [&](unsigned int value)
    {
        digest.Try([=] { return IntLog2(value); });
        digest.Add(IntSqrt(value), RoundUpToPO2(value), RoundToNearestPO2(value));
    };
    for (unsigned int value = 0; value < 2000; ++value)
        add(value);
    for (unsigned int bit = 0; bit < 32; ++bit)
        for (unsigned int step = 0; step < 5; ++step)
            add((1U << bit) + step - 2);
    for (unsigned int i = 0; i < 3000; ++i)
        add(static_cast<unsigned int>(work.Bits()) >> work.Below(32));
}

void Percentages(Digest& digest, Workload& work)
{
    auto const fields = [](Percentage const& p)
    {
        Digest inner;
        inner.Add(p.GetNumerator(), p.GetDenominator(), static_cast<float>(p));
        return inner.GetHash();
    };
    auto const draw = [&]
    { return work.OneIn(4) ? work.Below(4) : static_cast<unsigned int>(work.Bits()) >> work.Below(32); };
    for (int i = 0; i < 4000; ++i)
    {
        unsigned int const n = draw();
        unsigned int const d = draw();
        unsigned int const m = draw();
        unsigned int const e = draw();
        digest.Try([&] { return fields(Percentage(n, d)); });
        digest.Try([&] { return fields(Percentage(n, d) * Percentage(m, e)); });
        digest.Try([&] { return fields(Percentage(n, d) + Percentage(m, e)); });
        digest.Try([&] { return fields(Percentage(n, d) / Percentage(m, e)); });
        digest.Try([&] { return fields(Percentage(n, d) / m); });
        digest.Try([&] { return fields(Percentage(n, d) * m); });
        digest.Try([&] { return fields(Percentage(n, d) + m); });
        Percentage p(n);
        Percentage const& itself = p;
        for (int k = 0; k < 6; ++k)
        {
            unsigned int const a = draw();
            unsigned int const b = draw();
            unsigned int const operation = work.Below(4);
            digest.Try(
                [&]
                {
                    Percentage const q(a, b);
                    return fields(operation == 0 ? p *= q : operation == 1 ? p += q : operation == 2 ? p /= q : p /= a);
                });
            digest.Add(fields(p));
            digest.Try(
                [&] {
                    return fields(operation == 0 ? p *= itself : operation == 1 ? p += itself : p /= itself);
                });
            digest.Add(fields(p));
        }
    }
}

// --- matrices ---

/// A matrix with a state that only a stream can give it.
template <typename T>
tMatrix4<T> WithState(tMatrix4<T> const& matrix, std::uint32_t state)
{
    std::string bytes = Serialised(matrix);
    bytes.replace(tMatrix4<T>::BYTESIZE, sizeof state, reinterpret_cast<char const*>(&state), sizeof state);
    std::istringstream stream(bytes);
    tMatrix4<T> result;
    result.Deserialise(stream);
    return result;
}

template <typename T>
std::uint32_t StateOf(tMatrix4<T> const& matrix)
{
    std::uint32_t state;
    Serialised(matrix).copy(reinterpret_cast<char*>(&state), sizeof state, tMatrix4<T>::BYTESIZE);
    return state;
}

template <typename T>
void AddWhole(Digest& digest, tMatrix4<T> const& matrix)
{
    digest.Add(matrix, StateOf(matrix));
}

template <typename T>
void Construction(Digest& digest, Workload& work)
{
    using Other = std::conditional_t<sizeof(T) == 4, double, float>;
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 1200; ++i)
        {
            // Close to each state, on both sides of its limits.
            T values[16];
            tMatrix4<T> const start = work.Fresh<T>(work.Below(4), 0);
            for (std::size_t k = 0; k < 16; ++k)
                values[k] = work.OneIn(6) ? work.Near(start[k]) : start[k];
            if (rarity != 0 && work.OneIn(4))
                values[work.Below(16)] = work.Special<T>();
            tMatrix4<T> const matrix(values);
            AddWhole(digest, matrix);
            AddWhole(digest, tMatrix4<T>(tVector3<T>(values[0], values[4], values[8]),
                                         tVector3<T>(values[1], values[5], values[9]),
                                         tVector3<T>(values[2], values[6], values[10])));
            AddWhole(digest, tMatrix4<T>(values[0], values[1], values[2], values[3], values[4], values[5], values[6],
                                         values[7], values[8], values[9], values[10], values[11], values[12],
                                         values[13], values[14], values[15]));
            tMatrix4<Other> const other(matrix);
            AddWhole(digest, other);
            tMatrix4<T> copy(matrix);
            copy = other;
            AddWhole(digest, copy);
            copy = values;
            AddWhole(digest, copy);
            Other others[16];
            for (std::size_t k = 0; k < 16; ++k)
                others[k] = static_cast<Other>(values[k]);
            AddWhole(digest, tMatrix4<T>(others));
            copy = others;
            AddWhole(digest, copy);
            copy = copy.Get();
            AddWhole(digest, copy);
            tMatrix4<T> stale = work.Matrix<T>(work.Below(4), rarity);
            AddWhole(digest, tMatrix4<T>(stale));
            copy = stale;
            AddWhole(digest, copy);
            digest.Add(stale[5], stale.GetElement(7), stale[tTuple2<unsigned int>(work.Below(4), 2)],
                       stale.GetElement(tTuple2<unsigned int>(1, 3)), stale(6), stale(tTuple2<unsigned int>(3, 0)));
        }
}

/// Calls `use(a, b)` for all pairs of states, those from a stream included, with fresh and with stale elements.
template <typename T, typename Use>
void ForPairs(Workload& work, int rounds, Use use)
{
    for (unsigned int const rarity : RARITIES)
        for (unsigned int first = 0; first < 6; ++first)
            for (unsigned int second = 0; second < 6; ++second)
                for (int i = 0; i < rounds; ++i)
                {
                    auto const make = [&](unsigned int kind)
                    {
                        tMatrix4<T> const matrix = work.Matrix<T>(kind < 4 ? kind : work.Below(4), rarity);
                        return kind < 4 ? matrix : WithState(matrix, kind == 4 ? 4U : 0xFFFFFFFFU);
                    };
                    tMatrix4<T> const a = make(first);
                    tMatrix4<T> const b = make(second);
                    use(a, b);
                }
}

template <typename T>
void Products(Digest& digest, Workload& work)
{
    ForPairs<T>(work, 16,
                [&](tMatrix4<T> const& a, tMatrix4<T> const& b)
                {
                    AddWhole(digest, a * b);
                    tMatrix4<T> c(a);
                    c = c * b;
                    AddWhole(digest, c);
                    c = b;
                    c = a * c;
                    AddWhole(digest, c);
                    AddWhole(digest, a * a);
                });
}

template <typename T>
void CompoundProducts(Digest& digest, Workload& work)
{
    ForPairs<T>(work, 16,
                [&](tMatrix4<T> const& a, tMatrix4<T> const& b)
                {
                    tMatrix4<T> c(a);
                    AddWhole(digest, c *= b);
                    AddWhole(digest, c *= b);
                    c = a;
                    AddWhole(digest, c *= c);
                });
}

template <typename T>
void SumsAndComparisons(Digest& digest, Workload& work)
{
    ForPairs<T>(work, 12,
                [&](tMatrix4<T> const& a, tMatrix4<T> const& b)
                {
                    AddWhole(digest, a + b);
                    AddWhole(digest, a - b);
                    tMatrix4<T> c(a);
                    AddWhole(digest, c += b);
                    AddWhole(digest, c -= a);
                    tMatrix4<T> const& itself = c;
                    AddWhole(digest, c += itself);
                    AddWhole(digest, c -= itself);
                    c = a;
                    for (std::size_t i = 0; i < 16; ++i)
                        if (work.OneIn(8))
                            c(i) = work.Near(c[i]);
                    digest.Add(a == b, a != b, a == a, a == c, c == a, c != a);
                });
}

template <typename T>
void Inverses(Digest& digest, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 2500; ++i)
        {
            tMatrix4<T> a = work.AnyMatrix<T>(rarity);
            if (work.OneIn(8))
                a = WithState(a, 4 + work.Below(2) * 99);
            if (work.OneIn(8)) // singular
                for (std::size_t k = 0; k < 4; ++k)
                    a(4 + k) = a[k];
            auto const whole = [](tMatrix4<T> const& matrix)
            {
                Digest inner;
                AddWhole(inner, matrix);
                return inner.GetHash();
            };
            digest.Try([&] { return whole(a.Inverted()); });
            tMatrix4<T> b(a);
            digest.Try([&] { return whole(b.Invert()); });
            AddWhole(digest, b);
            AddWhole(digest, a.Transposed());
            b = a;
            AddWhole(digest, b.Transpose());
            digest.Add(a.Determinant(), a.IsIdentity(), a.IsDiagonal(), a.IsOrthonormal());
        }
}

template <typename T>
void Builders(Digest& digest, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 1500; ++i)
        {
            T const factor = work.OneIn(4) ? work.Near(T{1}) : work.Number<T>(rarity);
            AddWhole(digest, tMatrix4<T>::Scale(factor));
            AddWhole(digest, tMatrix4<T>::Scale(work.Vector3<T>(rarity)));
            tVector3<T> offset = work.Vector3<T>(rarity);
            AddWhole(digest, tMatrix4<T>::Translate(offset.x, offset.y, offset.z));
            if (work.OneIn(4))
                offset = offset * (std::numeric_limits<T>::epsilon() * T{5});
            AddWhole(digest, tMatrix4<T>::Translate(offset));
            T sides[6];
            for (T& side : sides)
                side = work.Number<T>(rarity);
            if (work.OneIn(4))
                sides[1] = work.Near(sides[0]);
            auto const add = [&](auto projection)
            {
                digest.Try(
                    [&]
                    {
                        Digest inner;
                        AddWhole(inner, projection(sides[0], sides[1], sides[2], sides[3], sides[4], sides[5]));
                        return inner.GetHash();
                    });
            };
            add([](auto const&... s) { return tMatrix4<T>::OrthogonalProjection(s...); });
            add([](auto const&... s) { return tMatrix4<T>::PerspectiveProjection(s...); });
        }
}

template <typename T>
void Rotations(Digest& digest, Workload& work)
{
    for (int i = 0; i < 2000; ++i)
    {
        T const angle = work.OneIn(8) ? work.Special<T>() : work.OneIn(8) ? work.Near(T{0}) : work.Plain<T>();
        AddWhole(digest, tMatrix4<T>::RotateX(angle));
        AddWhole(digest, tMatrix4<T>::RotateY(angle));
        AddWhole(digest, tMatrix4<T>::RotateZ(angle));
        tVector3<T> const point = work.Vector3<T>(0);
        tVector3<T> const direction = work.OneIn(16) ? tVector3<T>() : work.Vector3<T>(0);
        AddWhole(digest, tMatrix4<T>::RotateAxis(point, direction, angle));
    }
}

template <typename T>
void Transforms(Digest& digest, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (unsigned int kind = 0; kind < 5; ++kind)
            for (int i = 0; i < 1500; ++i)
            {
                tMatrix4<T> matrix = work.Matrix<T>(kind < 4 ? kind : 3, rarity);
                if (kind == 4)
                    matrix = WithState(matrix, 5);
                if (work.OneIn(6)) // the fourth coordinate comes out as zero, or close to it
                {
                    matrix(12) = matrix(13) = matrix(14) = T{0};
                    matrix(15) = work.Near(T{0});
                }
                tVector3<T> const vector = work.Vector3<T>(rarity);
                digest.Try([&] { return vector.Transformed(matrix); });
                tVector3<T> changed = vector;
                digest.Try([&] { return changed.Transform(matrix); });
                digest.Add(changed, vector.TransformedAsVector(matrix));
                changed = vector;
                digest.Add(changed.TransformAsVector(matrix), changed);
            }
}

// --- shapes ---

template <typename T>
void Areas(Digest& digest, Workload& work)
{
    using Other = std::conditional_t<sizeof(T) == 4, double, float>;
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 2500; ++i)
        {
            tAreaAABB<T> const box = work.Area<T>(rarity);
            tAreaAABB<T> const other = work.Area<T>(rarity);
            tVector2<T> const point = work.Vector2<T>(rarity);
            T const number = work.Number<T>(rarity);
            tAreaDisc<T> const disc(work.Vector2<T>(rarity), number);
            digest.Add(box.IsValid(), box.Contains(point, false), box.Contains(point, true),
                       box.Contains(box.GetMin(), false), box.Contains(box.GetMax(), true), box.DistanceSquared(point),
                       box.Distance(point), box.GetArea(), box.GetCentre(), box.GetDiagonal(), box.Overlaps(disc),
                       box == other, box != other, box == box);
            for (unsigned char axis = 0; axis < 3; ++axis)
            {
                digest.Try([&] { return box.GetLength(axis); });
                tAreaAABB<T> lower = other;
                tAreaAABB<T> upper;
                box.Split(axis, lower, upper);
                digest.Add(lower, upper);
                lower = box;
                lower.Split(axis, lower, upper);
                digest.Add(lower, upper);
            }
            tAreaAABB<T> grown = box;
            digest.Add(grown.ExpandAndSignal(other), grown);
            digest.Add(grown.ExpandAndSignal(point), grown);
            grown.Expand(number);
            digest.Add(grown);
            grown.Offset(number);
            digest.Add(grown);
            grown.Reset();
            grown.Expand(point);
            grown.Expand(other);
            digest.Add(grown, tAreaAABB<Other>(box), tAreaAABB<T>(point));
            tAreaDisc<T> const second(work.Vector2<T>(rarity), point);
            digest.Add(disc.GetRadius(), disc.GetArea(), disc.Contains(point), disc.Overlaps(second),
                       second.Overlaps(disc), disc.Overlaps(box), disc == second, disc == disc, second,
                       tAreaDisc<Other>(disc));
        }
}

template <typename T>
void Volumes(Digest& digest, Workload& work)
{
    using Other = std::conditional_t<sizeof(T) == 4, double, float>;
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 2500; ++i)
        {
            tVolumeAABB<T> const box = work.Volume<T>(rarity);
            tVolumeAABB<T> const other = work.Volume<T>(rarity);
            tVector3<T> const point = work.Vector3<T>(rarity);
            T const number = work.Number<T>(rarity);
            tVolumeSphere<T> const sphere(work.Vector3<T>(rarity), number);
            digest.Add(box.IsValid(), box.Contains(point, false), box.Contains(point, true),
                       box.Contains(box.GetMin(), false), box.Contains(box.GetMax(), true), box.DistanceSquared(point),
                       box.Distance(point), box.GetVolume(), box.GetCentre(), box.GetDiagonal(), box.Overlaps(sphere),
                       box == other, box != other, box == box);
            for (unsigned char axis = 0; axis < 4; ++axis)
            {
                digest.Try([&] { return box.GetLength(axis); });
                digest.Try([&] { return box.GetArea(axis); });
                tVolumeAABB<T> lower = other;
                tVolumeAABB<T> upper;
                box.Split(axis, lower, upper);
                digest.Add(lower, upper);
                upper = box;
                upper.Split(axis, lower, upper);
                digest.Add(lower, upper);
            }
            tVolumeAABB<T> grown = box;
            digest.Add(grown.ExpandAndSignal(other), grown);
            digest.Add(grown.ExpandAndSignal(point), grown);
            grown.Expand(number);
            digest.Add(grown);
            grown.Offset(number);
            digest.Add(grown);
            grown.Reset();
            grown.Expand(point);
            grown.Expand(other);
            digest.Add(grown, tVolumeAABB<Other>(box), tVolumeAABB<T>(point));
            tMatrix4<T> const matrix = work.AnyMatrix<T>(rarity);
            digest.Add(box * matrix);
            grown = box;
            digest.Add(grown *= matrix);
        }
}

template <typename T>
void Spheres(Digest& digest, Workload& work)
{
    using Other = std::conditional_t<sizeof(T) == 4, double, float>;
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 3000; ++i)
        {
            tVector3<T> const point = work.Vector3<T>(rarity);
            tVector3<T> const centre = work.Vector3<T>(rarity);
            T const squaredRadius = work.Number<T>(rarity) * T{4};
            tVolumeSphere<T> const sphere(work.Vector3<T>(rarity), squaredRadius);
            tVolumeSphere<T> second(centre, point);
            tVolumeAABB<T> const box = work.Volume<T>(rarity);
            digest.Add(sphere.GetRadius(), sphere.Contains(point), second.Contains(point), sphere.Overlaps(second),
                       second.Overlaps(sphere), sphere.Overlaps(box), sphere == second, sphere != second,
                       sphere == sphere, second, tVolumeSphere<Other>(sphere), sphere * work.AnyMatrix<T>(rarity));
            second.SetRadius(point.x);
            second.SetCentre(point);
            digest.Add(second);
        }
}

template <typename T>
void SphereVolumes(Digest& digest, Workload& work)
{
    for (int i = 0; i < 2000; ++i)
        digest.Add(tVolumeSphere<T>(tVector3<T>(), work.Number<T>(8)).GetVolume());
}

template <typename T>
void Planes(Digest& digest, Workload& work)
{
    using Other = std::conditional_t<sizeof(T) == 4, double, float>;
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 3000; ++i)
        {
            tVector3<T> const normal = work.OneIn(16) ? tVector3<T>() : work.Vector3<T>(rarity);
            tPlane<T> plane(normal, work.Number<T>(rarity));
            tVector3<T> const point = work.Vector3<T>(rarity);
            tVector3<T> const direction =
                work.OneIn(6) ? plane.GetNormal().Cross(point) : work.Vector3<T>(rarity); // parallel, or almost so
            digest.Add(plane, plane.GetDistance(point), plane.GetAbsoluteDistance(point));
            tPlane<T> const& constant = plane;
            digest.Try([&] { return constant.GetIntersection(point, direction); });
            digest.Try([&] { return plane.GetIntersection(point, direction); });
            T const values[] = {point.x, point.y, point.z, direction.x};
            tPlane<T> second(values);
            digest.Add(second, tPlane<Other>(plane), plane == second, plane != second, plane == plane);
            second.SetOffset(direction.y);
            digest.Try([&] { return second.SetNormal(direction), second; });
            digest.Add(second, second.Set(direction, point.x));
            second = values;
            digest.Add(second);
        }
}

template <typename T>
tMatrix4<T> View(Workload& work, unsigned int rarity)
{
    if (work.OneIn(8))
        return work.AnyMatrix<T>(rarity);
    T const side = work.Plain<T>() / T{20} + T{1};
    T const nearPlane = work.Plain<T>() / T{20} + T{0.75};
    tMatrix4<T> const projection =
        tMatrix4<T>::PerspectiveProjection(-side, side * T{0.75}, -side, side, nearPlane, nearPlane + T{12});
    tMatrix4<T> const rotation = work.Fresh<T>(2, 0);
    return projection * rotation * tMatrix4<T>::Translate(work.Vector3<T>(rarity));
}

template <typename T>
void Frusta(Digest& digest, Workload& work)
{
    using Frustum = tFrustum<T>;
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 400; ++i)
        {
            tMatrix4<T> const matrix = View<T>(work, rarity);
            Frustum frustum;
            digest.Try(
                [&]
                {
                    frustum = Frustum(matrix);
                    return true;
                });
            digest.Add(frustum.GetLeftPlane(), frustum.GetRightPlane(), frustum.GetBottomPlane(), frustum.GetTopPlane(),
                       frustum.GetNearPlane(), frustum.GetFarPlane());
            for (std::uint32_t edge = 0; edge < 6; ++edge)
                digest.Add(frustum.GetEdgeVector(static_cast<typename Frustum::Edge>(edge)));
            for (int k = 0; k < 40; ++k)
            {
                tVolumeAABB<T> box = work.Volume<T>(rarity);
                if (work.OneIn(2))
                    box = {box.GetMin(), box.GetMin() + tVector3<T>(T{0.5}, T{0.25}, T{0.75})};
                digest.Add(frustum.ContainsAABB(box));
            }
            for (int k = 0; k < 10; ++k)
            {
                tVector3<T> const origin = work.Vector3<T>(rarity);
                tRay<T> const ray(origin, work.Vector3<T>(rarity));
                digest.Try([&] { return frustum.IntersectNear(ray); });
                digest.Add(ray.IntersectScreen(frustum));
            }
        }
}

// --- rays ---

template <typename T>
tVector3<T> Direction(Workload& work, unsigned int rarity)
{
    tVector3<T> direction = work.Vector3<T>(rarity);
    if (work.OneIn(3))
        for (std::size_t axis = 0; axis < 3; ++axis)
            if (work.OneIn(2))
                direction[axis] = work.OneIn(2) ? T{0} : -T{0};
    return work.OneIn(2) ? direction.Normalised() : direction;
}

template <typename T>
void Rays(Digest& digest, Workload& work)
{
    using DepthRay = tDepthRay<T, bv::IRayPayloadInternal>;
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 6000; ++i)
        {
            tVector3<T> const origin = work.Vector3<T>(rarity);
            DepthRay ray(origin, Direction<T>(work, rarity));
            ray.dOriginDu = work.Vector3<T>(0);
            ray.dOriginDv = work.Vector3<T>(0);
            ray.dDirectionDu = work.Vector3<T>(0);
            ray.dDirectionDv = work.Vector3<T>(rarity);
            T const tNear = work.OneIn(2) ? T{0} : work.Number<T>(rarity);
            T const tFar = work.OneIn(2) ? T{100} : work.Number<T>(rarity);

            T lo = tNear;
            T hi = tFar;
            tVolumeAABB<T> const box = work.Volume<T>(rarity);
            digest.Add(ray.Clip(box, lo, hi));
            digest.Add(lo, hi);

            lo = tNear;
            hi = tFar;
            T const squaredRadius = work.Number<T>(rarity) * T{4};
            tVolumeSphere<T> const sphere(work.Vector3<T>(rarity), squaredRadius);
            digest.Add(ray.Clip(sphere, lo, hi));
            digest.Add(lo, hi);

            lo = tNear;
            hi = tFar;
            tVector2<T> dNear;
            tVector2<T> dFar;
            digest.Add(ray.ClipDiff(sphere, lo, hi, dNear, dFar));
            digest.Add(lo, hi, dNear, dFar);
        }
}

/// Calls `use(rays, matrix, box, tNear, tFar)` with eight of each.
template <typename Use>
void ForPackets(Workload& work, Use use)
{
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 4000; ++i)
        {
            DepthRayf rays[8];
            float tNear[8];
            float tFar[8];
            for (int k = 0; k < 8; ++k)
            {
                rays[k].origin = work.Vector3<float>(rarity);
                rays[k].direction = Direction<float>(work, rarity);
                tNear[k] = work.OneIn(2) ? 0.0F : work.Number<float>(rarity);
                tFar[k] = work.OneIn(2) ? 100.0F : work.Number<float>(rarity);
            }
            Matrix4f const matrix = work.OneIn(2) ? Matrix4f() : work.AnyMatrix<float>(rarity);
            VolumeAABBf const box = work.Volume<float>(rarity);
            use(rays, matrix, box, tNear, tFar);
        }
}

void SsePackets(Digest& digest, Workload& work)
{
    auto const addLanes = [&](__m128 lanes)
    {
        alignas(16) float values[4];
        _mm_store_ps(values, lanes);
        digest.Add(values[0], values[1], values[2], values[3]);
    };
    ForPackets(work,
               [&](DepthRayf const* rays, Matrix4f const& matrix, VolumeAABBf const& box, float const* tNear,
                   float const* tFar)
               {
                   for (int half = 0; half < 8; half += 4)
                   {
                       simd::SSERay packet;
                       packet.Initialise(rays + half);
                       packet.Transform(matrix);
                       __m128 lo = _mm_loadu_ps(tNear + half);
                       __m128 hi = _mm_loadu_ps(tFar + half);
                       __m128 const hit = packet.Clip(box, lo, hi);
                       alignas(16) std::uint32_t mask[4];
                       _mm_store_si128(reinterpret_cast<__m128i*>(mask), _mm_castps_si128(hit));
                       digest.Add(mask[0], mask[1], mask[2], mask[3]);
                       addLanes(lo);
                       addLanes(hi);
                       for (int axis = 0; axis < 3; ++axis)
                       {
                           addLanes(packet.GetOrigin()[axis]);
                           addLanes(packet.GetDirection()[axis]);
                           addLanes(packet.GetInvDirection()[axis]);
                       }
                   }
               });
}

void AvxPackets(Digest& digest, Workload& work)
{
    ForPackets(work,
               [&](DepthRayf const* rays, Matrix4f const& matrix, VolumeAABBf const& box, float const* tNear,
                   float const* tFar)
               {
                   EightRays results{};
                   for (int k = 0; k < 8; ++k)
                   {
                       results.tNear[k] = tNear[k];
                       results.tFar[k] = tFar[k];
                   }
                   ClipEight(rays, matrix, box, results);
                   for (int k = 0; k < 8; ++k)
                   {
                       digest.Add(results.mask[k], results.tNear[k], results.tFar[k]);
                       for (int axis = 0; axis < 3; ++axis)
                           digest.Add(results.origin[axis][k], results.direction[axis][k], results.inverse[axis][k]);
                   }
               });
}

void Reciprocals(Digest& digest, Workload& work)
{
    for (int i = 0; i < 4000; ++i)
    {
        alignas(16) float values[4];
        for (float& value : values)
            value = work.Number<float>(8);
        __m128 const lanes = _mm_load_ps(values);
        __m128 const results[] = {_mm_rcp_nr(lanes), _mm_rsqrt_nr(lanes)};
        for (__m128 const& result : results)
        {
            _mm_store_ps(values, result);
            digest.Add(values[0], values[1], values[2], values[3]);
        }
    }
}

// --- frames, differentials, axes ---

template <typename T>
void Frames(Digest& digest, Workload&)
{
    std::vector<tCoordinateFrame<T>> frames;
    for (unsigned char x = 0; x < 7; ++x)
        for (unsigned char y = 0; y < 7; ++y)
            for (unsigned char z = 0; z < 7; ++z)
            {
                tCoordinateFrame<T> set;
                digest.Try([&] { return set.Set(x, y, z).GetX(); });
                digest.Add(set.GetX(), set.GetY(), set.GetZ());
                digest.Try(
                    [&]
                    {
                        tCoordinateFrame<T> const frame(x, y, z);
                        frames.push_back(frame);
                        return frame.GetHandedness();
                    });
            }
    for (std::size_t i = 0; i < frames.size(); ++i)
    {
        for (unsigned char direction = 0; direction < 8; ++direction)
            digest.Add(frames[i].GetVector(direction));
        for (std::size_t k = i % 5; k < frames.size(); k += 5)
        {
            AddWhole(digest, frames[i].CreateRotationMatrix(frames[k]));
            unsigned char faces[6] = {9, 9, 9, 9, 9, 9};
            frames[i].MapCubeMap(frames[k], faces);
            for (unsigned char const face : faces)
                digest.Add(face);
        }
    }
}

template <typename T>
void Differentials(Digest& digest, Workload& work)
{
    auto const add = [&](auto const& a, auto const& b, T s, auto const& factors)
    {
        digest.Add(+a, -a, a + b, a - b, a * s, a * factors, a.GetRadius(), a.IsNull(), a.IsInfinite());
        auto c = a;
        digest.Add(c += b);
        digest.Add(c -= a);
        digest.Add(c *= s);
        digest.Add(c *= factors);
        digest.Add(c /= s);
        digest.Add(c /= factors);
        c.Set(a[0]);
        digest.Add(c /= c(0).x);
        digest.Add(c /= c(1));
    };
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 1500; ++i)
        {
            tVector2<T> const u2 = work.OneIn(6) ? tVector2<T>() : work.Vector2<T>(rarity);
            tVector2<T> const v2 = work.OneIn(6) ? tVector2<T>() : work.Vector2<T>(rarity);
            tVector2<T> const w2 = work.Vector2<T>(rarity);
            add(tDifferential2<T>(u2, v2), tDifferential2<T>(w2, u2), work.Number<T>(rarity), v2);
            tVector3<T> const u3 = work.OneIn(6) ? tVector3<T>() : work.Vector3<T>(rarity);
            tVector3<T> const v3 = work.OneIn(6) ? tVector3<T>() : work.Vector3<T>(rarity);
            tVector3<T> const w3 = work.Vector3<T>(rarity);
            tDifferential3<T> const d(u3, v3);
            add(d, tDifferential3<T>(w3, u3), work.Number<T>(rarity), v3);
            tMatrix4<T> const matrix = work.AnyMatrix<T>(rarity);
            T const weight = work.Number<T>(rarity);
            digest.Add(d.TransformedAsVector(matrix), d.Transformed(matrix, w3, weight));
            tDifferential3<T> changed = d;
            digest.Add(changed.TransformAsVector(matrix), changed);
            digest.Add(changed.Transform(matrix, w3, weight), changed);
        }
}

void Axes(Digest& digest, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 3000; ++i)
        {
            tVector3<float> normal = work.Vector3<float>(rarity);
            if (work.OneIn(2))
                normal.Normalise();
            tVector3<float> first;
            tVector3<float> second;
            EvaluateLocalAxes(normal, first, second);
            digest.Add(first, second);
            EvaluateLocalAxes(normal, normal, second);
            digest.Add(normal, second);
        }
}

template <typename T>
void Offsets(Digest& digest, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 3000; ++i)
        {
            tVector3<T> position = work.Vector3<T>(rarity);
            if (work.OneIn(3))
                position = position * static_cast<T>(1U << work.Below(31));
            digest.Add(GetPositionOffset(position, work.Vector3<T>(rarity)));
        }
}

// --- procedures ---

tVector3<float> NoisePoint(Workload& work)
{
    unsigned int const kind = work.Below(8);
    if (kind == 0)
        return work.Vector3<float>(3);
    tVector3<float> const point = work.Vector3<float>(0);
    if (kind == 1)
        return point * 1e6F;
    if (kind == 2)
        return point * 2.5e8F; // on both sides of 2^31
    if (kind == 3)
        return point * 1e-6F; // on both sides of 0
    return kind == 4 ? point * 100.0F : point;
}

void Noises(Digest& digest, Workload& work)
{
    for (int i = 0; i < 20000; ++i)
    {
        tVector3<float> const point = NoisePoint(work);
        digest.Add(Noise1(point.x), Noise2({point.x, point.y}), Noise3(point));
    }
    for (int i = -300; i <= 300; ++i)
        for (float const fraction : {0.0F, 0.25F, 0.5F, 0.99999994F})
        {
            float const x = static_cast<float>(i) + fraction;
            digest.Add(Noise1(x), Noise2({x, 0.5F}), Noise2({0.5F, x}), Noise3({0.5F, 0.25F, x}), Noise3({x, x, x}));
        }
}

void Turbulences(Digest& digest, Workload& work)
{
    for (int i = 0; i < 2500; ++i)
    {
        tVector3<float> const point = NoisePoint(work);
        unsigned int const octaves = work.OneIn(16) ? 4000000000U : work.Below(13);
        digest.Add(Turbulence1(point.x, octaves), Turbulence2({point.x, point.y}, octaves),
                   Turbulence3(point, octaves));
    }
}

void Generators(Digest& digest, Workload& work)
{
    for (unsigned int i = 0; i < 200; ++i)
    {
        unsigned int const seed = i < 8 ? i : i < 16 ? i * 32768U : static_cast<unsigned int>(work.Bits());
        RNGenerator generator(seed);
        for (int k = 0; k < 40; ++k)
        {
            digest.Add(generator.GetInteger());
            digest.Add(generator.GetFloat());
            digest.Add(generator.GetVector2D());
            digest.Add(generator.GetVector3D());
            auto const [number, integer] = generator.GetFloatAndInteger();
            digest.Add(number, integer);
        }
        RNGenerator copy(generator);
        digest.Add(copy.GetInteger());
        digest.Add(generator.GetInteger());
        digest.Add(generator.SetSeed(seed / 3).GetFloat());
        RNGenerator first;
        digest.Add(first.GetInteger());
    }
}

// --- hashes, text, bytes ---

void AppendCodePoint(std::string& text, std::uint32_t code)
{
    auto const put = [&](std::uint32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (code < 0x80)
        return put(code);
    if (code < 0x800)
        put(0xC0 | code >> 6);
    else
    {
        if (code < 0x10000)
            put(0xE0 | code >> 12);
        else
        {
            put(0xF0 | code >> 18);
            put(0x80 | (code >> 12 & 0x3F));
        }
        put(0x80 | (code >> 6 & 0x3F));
    }
    put(0x80 | (code & 0x3F));
}

/// A code point of one, two, three or four bytes; the ends of each range come often, surrogates never.
std::uint32_t CodePoint(Workload& work)
{
    constexpr std::uint32_t EDGES[] = {1, 0x7F, 0x80, 0x7FF, 0x800, 0xD7FF, 0xE000, 0xFFFF, 0x10000, 0x10FFFF};
    switch (work.Below(6))
    {
    case 0:
        return EDGES[work.Below(10)];
    case 1:
        return 0x80 + work.Below(0x780);
    case 2:
        return 0x800 + work.Below(0xD000);
    case 3:
        return 0x10000 + work.Below(0x100000);
    default:
        return 1 + work.Below(0x7F);
    }
}

std::vector<std::uint32_t> CodePoints(Workload& work, std::size_t length, bool isAscii)
{
    std::vector<std::uint32_t> codes;
    for (std::size_t i = 0; i < length; ++i)
        codes.push_back(isAscii ? 1 + work.Below(0x7F) : CodePoint(work));
    return codes;
}

void AddText(Digest& digest, bv::String const& text)
{
    digest.Add(text);
    wchar_t const* const wide = text.ToWCharArray();
    std::size_t length = 0;
    for (; wide[length] != 0; ++length)
        digest.Add(static_cast<std::uint32_t>(wide[length]));
    digest.Add(length, text.IsEmpty());
}

/// Lengths around those at which blocks of 16, 32 and 64 bytes begin and end, and long ones.
constexpr std::size_t LENGTHS[] = {0,  1,  2,  3,  7,  8,  9,  15, 16,  17,  23,  24,  31,  32,  33,
                                   40, 47, 48, 49, 63, 64, 65, 95, 127, 128, 129, 255, 256, 300, 5000};

void NarrowText(Digest& digest, Workload& work)
{
    digest.Add(bv::String(static_cast<char const*>(nullptr)));
    for (std::size_t const length : LENGTHS)
        for (int i = 0; i < (length > 1000 ? 12 : 60); ++i)
        {
            // Ascii, mixed, or Ascii with one other character; whole, damaged, or cut short.
            std::vector<std::uint32_t> codes = CodePoints(work, length, i % 3 != 0);
            if (i % 3 == 1 && length > 0)
                codes[work.Below(static_cast<unsigned int>(length))] = CodePoint(work);
            std::string text(work.Below(17), 'x'); // any alignment
            std::size_t const start = text.size();
            for (std::uint32_t const code : codes)
                AppendCodePoint(text, code);
            if (text.size() > start && work.OneIn(3))
            {
                auto const place = start + work.Below(static_cast<unsigned int>(text.size() - start));
                if (work.OneIn(3))
                    text.resize(place);
                else
                    text[place] = static_cast<char>(1 + work.Below(255));
            }
            bv::String const string(text.c_str() + start);
            AddText(digest, string);
            bv::String assigned("before");
            assigned = text.c_str() + start;
            AddText(digest, assigned);
            assigned = assigned.ToCharArray() + (assigned.IsEmpty() ? 0 : 1);
            AddText(digest, assigned);
        }
    for (unsigned int first = 1; first < 256; ++first) // every pair of bytes, and what may follow
        for (unsigned int second = 1; second < 256; ++second)
        {
            char const text[] = {static_cast<char>(first), static_cast<char>(second), '\x80', '\xBF', 0};
            char const shorter[] = {'a', static_cast<char>(first), static_cast<char>(second), '\x80', 0};
            char const shortest[] = {static_cast<char>(first), static_cast<char>(second), 0};
            digest.Add(bv::String(text), bv::String(shorter), bv::String(shortest));
        }
}

void WideText(Digest& digest, Workload& work)
{
    digest.Add(bv::String(static_cast<wchar_t const*>(nullptr)));
    for (std::size_t const length : LENGTHS)
        for (int i = 0; i < (length > 1000 ? 12 : 60); ++i)
        {
            std::vector<std::uint32_t> codes = CodePoints(work, length, i % 3 != 0);
            if (i % 3 == 1 && length > 0)
                codes[work.Below(static_cast<unsigned int>(length))] = CodePoint(work);
            std::wstring text;
            for (std::uint32_t const code : codes)
                if (code > 0xFFFF && work.OneIn(2))
                {
                    text.push_back(static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10)));
                    text.push_back(static_cast<wchar_t>(0xDC00 + ((code - 0x10000) & 0x3FF)));
                }
                else
                    text.push_back(static_cast<wchar_t>(code));
            if (!text.empty() && work.OneIn(3))
            {
                constexpr std::uint32_t WRONG[] = {0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0x110000, 0x7FFFFFFF, 0x80000041};
                text[work.Below(static_cast<unsigned int>(text.size()))] = static_cast<wchar_t>(WRONG[work.Below(7)]);
            }
            bv::String const string(text.c_str());
            AddText(digest, string);
            bv::String assigned(L"before");
            assigned = text.c_str();
            AddText(digest, assigned);
            assigned = assigned.ToWCharArray();
            AddText(digest, assigned);
        }
}

void TextOperations(Digest& digest, Workload& work)
{
    auto const make = [&](unsigned int bound)
    {
        std::string text;
        bool const isAscii = work.OneIn(2);
        for (std::uint32_t const code : CodePoints(work, work.Below(bound), isAscii))
            AppendCodePoint(text, work.OneIn(2) ? 'a' + code % 2 : code);
        return bv::String(text.c_str());
    };
    for (int i = 0; i < 3000; ++i)
    {
        bv::String const a = make(i % 10 == 0 ? 300 : 12);
        bv::String const b = make(i % 10 == 0 ? 300 : 3);
        digest.Add(a == b, a != b, a<b, a> b, a.Contains(b), b.Contains(a), a.Contains(a), a.IsEmpty());
        AddText(digest, a + b);
        bv::String c(a);
        AddText(digest, c += b);
        AddText(digest, c += c);
        digest.Add(c.Contains(a), c.Contains(b));
        c = b;
        AddText(digest, c);
        c.Clear();
        AddText(digest, c);
        digest.Add(bv::FNVHash32(a), bv::FNVHash32(c));
    }
}

template <typename T>
void AddTupleHashes(Digest& digest, T x, T y, T z)
{
    tTuple2<T> const two(x, y);
    tTuple3<T> const three(x, y, z);
    digest.Add(two.GetHash32(), two.GetHash8(), three.GetHash32(), three.GetHash8());
}

void Hashes(Digest& digest, Workload& work)
{
    std::string bytes;
    for (int i = 0; i < 400; ++i)
        bytes.push_back(static_cast<char>(work.Bits()));
    for (std::size_t length = 0; length <= 300; ++length)
        for (int i = 0; i < 8; ++i)
        {
            char const* const start = bytes.data() + work.Below(64);
            auto const seed = static_cast<unsigned int>(work.Bits());
            digest.Add(bv::GetJenkinsHash(start, length, i == 0 ? 0 : seed),
                       bv::GetPearsonHash(start, length, static_cast<unsigned char>(i == 0 ? 0 : seed)));
        }
    for (int i = 0; i < 4000; ++i)
    {
        auto const x = static_cast<int>(work.Bits() >> 32) >> work.Below(32);
        auto const y = static_cast<int>(work.Bits() >> 32) >> work.Below(32);
        digest.Add(bv::GetLagaeHash(x, y), bv::GetLagaeHash(-(x / 2), y), bv::GetLagaeHash(i - 2000, i));
        AddTupleHashes(digest, x, y, i);
        AddTupleHashes<unsigned int>(digest, static_cast<unsigned int>(x), static_cast<unsigned int>(y), 7U);
        float const f = work.Wide<float>();
        AddTupleHashes(digest, f, -f, work.Plain<float>());
        double const d = work.Wide<double>();
        AddTupleHashes(digest, d, -d, work.Plain<double>());
    }
}

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

void Exceptions(Digest& digest, Workload&)
{
    auto const add = [&](auto const& exception)
    {
        digest.Try([&]() -> int { throw exception; });
        digest.Try(
            [&]
            {
                exception.Rethrow();
                return 0;
            });
        digest.Add(Text(exception));
        bv::Exception copy(exception);
        digest.Try(
            [&]
            {
                copy.Rethrow();
                return 0;
            });
        bv::Exception other("other");
        copy.Swap(other);
        digest.Add(Text(copy), Text(other));
    };
    add(bv::Exception("message", "folder\\file", 12, "space::Function"));
    add(bv::Exception(L"caf\u00E9"));
    add(bv::FileIOException("", "", 4294967295U, ""));
    add(bv::NotImplementedException());
    add(DivideByZeroException("zero", "file", 0, "function"));
}

void RunAll()
{
    RunBoth("vectors", Vectors<float>, Vectors<double>);
    RunBoth("equality", Equality<float>, Equality<double>);
    RunBoth("scalars", Scalars<float>, Scalars<double>);
    Run("logarithms.float", Logarithms);
    Run("integers", Integers);
    Run("percentages", Percentages);
    RunBoth("matrix-construction", Construction<float>, Construction<double>);
    RunBoth("matrix-product", Products<float>, Products<double>);
    RunBoth("matrix-compound-product", CompoundProducts<float>, CompoundProducts<double>);
    RunBoth("matrix-sum-and-comparison", SumsAndComparisons<float>, SumsAndComparisons<double>);
    RunBoth("matrix-inverse-transpose-determinant", Inverses<float>, Inverses<double>);
    RunBoth("matrix-builders", Builders<float>, Builders<double>);
    RunBoth("transforms", Transforms<float>, Transforms<double>);
    RunBoth("areas-and-discs", Areas<float>, Areas<double>);
    RunBoth("volumes", Volumes<float>, Volumes<double>);
    RunBoth("spheres", Spheres<float>, Spheres<double>);
    RunBoth("planes", Planes<float>, Planes<double>);
    RunBoth("frusta", Frusta<float>, Frusta<double>);
    RunBoth("rays", Rays<float>, Rays<double>);
    Run("packets-sse.float", SsePackets);
    if (__builtin_cpu_supports("avx"))
        Run("packets-avx.float", AvxPackets);
    RunBoth("frames", Frames<float>, Frames<double>);
    RunBoth("differentials", Differentials<float>, Differentials<double>);
    Run("local-axes.float", Axes);
    RunBoth("position-offsets", Offsets<float>, Offsets<double>);
    Run("noise.float", Noises);
    Run("turbulence.float", Turbulences);
    Run("generator", Generators);
    Run("hashes", Hashes);
    Run("text-narrow", NarrowText);
    Run("text-wide", WideText);
    Run("text-operations", TextOperations);
    RunBoth("serialised-bytes", Bytes<float>, Bytes<double>);
    RunBoth("text-forms", Texts<float>, Texts<double>);
    Run("exceptions", Exceptions);
    RunBoth("machine-dependent.rotations", Rotations<float>, Rotations<double>);
    RunBoth("machine-dependent.sphere-volumes", SphereVolumes<float>, SphereVolumes<double>);
    Run("machine-dependent.reciprocals.float", Reciprocals);
}

} // namespace

} // namespace digest

int main()
{
    digest::RunAll();
}
