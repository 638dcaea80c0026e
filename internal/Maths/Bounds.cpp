#include "bv/maths/Bounds.h"

#include <bit>
#include <cstddef>
#include <limits>

#include "bv/maths/IsEqual.h"
#include "bv/maths/detail/Rows.h"
#include "bv/maths/tMatrix4.h"

namespace bv::maths
{

namespace
{

/// What the squared radii are larger by than their formulas say. Of the ten roundings of half an epsilon each between
/// the numbers of a shape and a squared radius, at most all go one way.
template <typename T>
constexpr T SLACK = T{1} + T{8} * std::numeric_limits<T>::epsilon();

template <typename T>
[[nodiscard]] tVolumeSphere<T> MakeRound(tVector3<T> const& centre, T radiusSquared) noexcept
{
    return {centre, radiusSquared};
}
template <typename T>
[[nodiscard]] tAreaDisc<T> MakeRound(tVector2<T> const& centre, T radiusSquared) noexcept
{
    return {centre, radiusSquared};
}

/// Of points in space or in the plane, their sphere or disc.
template <typename Vector>
using Round = decltype(MakeRound(Vector(), decltype(Vector::x){}));

template <typename Vector>
[[nodiscard]] Round<Vector> MakeEmpty() noexcept
{
    return MakeRound(Vector(), decltype(Vector::x){-1});
}

/// Whether a sphere holds nothing.
template <typename Shape>
[[nodiscard]] bool IsEmpty(Shape const& shape) noexcept
{
    return !(shape.GetRadiusSquared() >= 0);
}

template <typename T>
[[nodiscard]] bool IsNaN(T x) noexcept
{
    return x != x; // NOLINT(misc-redundant-expression): NaN alone differs from itself
}

template <typename T>
[[nodiscard]] T Larger(T a, T b) noexcept
{
    return a > b ? a : b;
}

template <typename T>
[[nodiscard]] bool IsFinite(T x) noexcept
{
    return detail::Magnitude(x) <= std::numeric_limits<T>::max(); // a difference of infinities would raise a flag
}

template <typename Shape, typename Vector>
[[nodiscard]] Shape AroundPoint(Shape const& shape, Vector const& point) noexcept
{
    using T = decltype(Vector::x);
    if (IsEmpty(shape))
        return IsNaN(point.LengthSquared()) ? shape : MakeRound(point, T{0});
    Vector const way = point - shape.GetCentre();
    T const distanceSquared = way.LengthSquared();
    if (!(distanceSquared > shape.GetRadiusSquared()))
        return shape;
    if (!IsFinite(distanceSquared))
        return MakeRound(shape.GetCentre(), distanceSquared);
    T const distance = detail::SquareRoot(distanceSquared);
    T const radius = shape.GetRadius();
    Vector const centre = shape.GetCentre() + way * ((distance - radius) * T{0.5} / distance);
    // From where the centre rounds to.
    T const reach = (centre - shape.GetCentre()).Length() + radius;
    return MakeRound(centre, Larger(reach * reach, (point - centre).LengthSquared()) * SLACK<T>);
}

template <typename Shape>
[[nodiscard]] Shape AroundBoth(Shape const& a, Shape const& b) noexcept
{
    using T = decltype(a.GetRadius());
    if (IsEmpty(b))
        return a;
    if (IsEmpty(a))
        return b;
    auto const way = b.GetCentre() - a.GetCentre();
    T const distance = way.Length();
    T const radiusA = a.GetRadius();
    T const radiusB = b.GetRadius();
    if (!(distance + radiusB > radiusA))
        return a;
    if (distance + radiusA <= radiusB)
        return b;
    if (!IsFinite(distance))
        return MakeRound(a.GetCentre(), distance);
    auto const centre = a.GetCentre() + way * ((distance + radiusB - radiusA) * T{0.5} / distance);
    // From where the centre rounds to.
    T const reach = Larger((centre - a.GetCentre()).Length() + radiusA, (centre - b.GetCentre()).Length() + radiusB);
    return MakeRound(centre, reach * reach * SLACK<T>);
}

/// The longer way from a value to the ends of an interval that holds it.
template <typename T>
[[nodiscard]] T LongerWay(T lower, T value, T upper) noexcept
{
    return Larger(value - lower, upper - value);
}

/// What a matrix makes of the corners of a box, from its columns' products with the two ends of each axis.
template <typename T>
struct tImage
{
    using Row = detail::tFour<T>;

    Row x[2], y[2], z[2], translation;

    tImage(tVolumeAABB<T> const& box, T const* m) noexcept
    {
        auto const [columnX, columnY, columnZ, columnW] = detail::Transposed(detail::LoadRows(m));
        tVector3<T> const& lower = box.GetMin();
        tVector3<T> const& upper = box.GetMax();
        x[0] = columnX * detail::Broadcast<Row>(lower.x);
        x[1] = columnX * detail::Broadcast<Row>(upper.x);
        y[0] = columnY * detail::Broadcast<Row>(lower.y);
        y[1] = columnY * detail::Broadcast<Row>(upper.y);
        z[0] = columnZ * detail::Broadcast<Row>(lower.z);
        z[1] = columnZ * detail::Broadcast<Row>(upper.z);
        translation = columnW;
    }

    [[nodiscard]] Row At(std::size_t corner) const noexcept
    {
        return x[corner & 1U] + y[corner >> 1 & 1U] + z[corner >> 2 & 1U] + translation;
    }
};

} // namespace

template <typename T>
std::optional<tVolumeAABB<T>> ProjectBox(tVolumeAABB<T> const& box, tMatrix4<T> const& matrix) noexcept
{
    using Row = detail::tFour<T>;
    if (!box.IsValid())
        return tVolumeAABB<T>();
    tImage<T> const image(box, matrix.Get());
    Row lower = detail::Broadcast<Row>(std::numeric_limits<T>::infinity());
    Row upper = detail::Negated(lower);
    for (std::size_t corner = 0; corner < 8; ++corner)
    {
        Row const homogeneous = image.At(corner);
        T const w = detail::Get<3>(homogeneous);
        if (!(w >= TOLERANCE<T>))
            return std::nullopt;
        Row const point = homogeneous * detail::Broadcast<Row>(T{1} / w);
        lower = detail::Min(point, lower);
        upper = detail::Max(point, upper);
    }
    return tVolumeAABB<T>({detail::Get<0>(lower), detail::Get<1>(lower), detail::Get<2>(lower)},
                          {detail::Get<0>(upper), detail::Get<1>(upper), detail::Get<2>(upper)});
}

template <typename T>
tVolumeSphere<T> GetBoundingSphere(tVolumeAABB<T> const& box) noexcept
{
    if (!box.IsValid())
        return MakeEmpty<tVector3<T>>();
    tVector3<T> const& lower = box.GetMin();
    tVector3<T> const& upper = box.GetMax();
    tVector3<T> const centre = box.GetCentre();
    tVector3<T> const way(LongerWay(lower.x, centre.x, upper.x), LongerWay(lower.y, centre.y, upper.y),
                          LongerWay(lower.z, centre.z, upper.z));
    return MakeRound(centre, way.LengthSquared() * SLACK<T>);
}

template <typename T>
tAreaDisc<T> GetBoundingDisc(tAreaAABB<T> const& box) noexcept
{
    if (!box.IsValid())
        return MakeEmpty<tVector2<T>>();
    tVector2<T> const& lower = box.GetMin();
    tVector2<T> const& upper = box.GetMax();
    tVector2<T> const centre = box.GetCentre();
    tVector2<T> const way(LongerWay(lower.x, centre.x, upper.x), LongerWay(lower.y, centre.y, upper.y));
    return MakeRound(centre, way.LengthSquared() * SLACK<T>);
}

template <typename T>
tVolumeSphere<T> Union(tVolumeSphere<T> const& sphere, tVector3<T> const& point) noexcept
{
    return AroundPoint(sphere, point);
}

template <typename T>
tAreaDisc<T> Union(tAreaDisc<T> const& disc, tVector2<T> const& point) noexcept
{
    return AroundPoint(disc, point);
}

template <typename T>
tVolumeSphere<T> Union(tVolumeSphere<T> const& a, tVolumeSphere<T> const& b) noexcept
{
    return AroundBoth(a, b);
}

template <typename T>
tAreaDisc<T> Union(tAreaDisc<T> const& a, tAreaDisc<T> const& b) noexcept
{
    return AroundBoth(a, b);
}

namespace
{

template <typename Vector>
[[nodiscard]] bool HasNoInfinityNorNaN(Vector const& v) noexcept
{
    if constexpr (requires { v.z; })
        return IsFinite(v.x) && IsFinite(v.y) && IsFinite(v.z);
    else
        return IsFinite(v.x) && IsFinite(v.y);
}

/// The first point without an infinity or NaN, or the origin.
template <typename Vector>
[[nodiscard]] Vector FindFinite(std::span<Vector const> points) noexcept
{
    for (Vector const& point : points)
        if (HasNoInfinityNorNaN(point))
            return point;
    return {};
}

/// The point that is farthest from another one, the first of several; and how far it is.
template <typename Vector>
struct tFarthest
{
    Vector point;
    decltype(Vector::x) distanceSquared;
};

/// Points with a NaN are passed over. With none left, the distance squared is -1.
template <typename Vector>
[[nodiscard]] tFarthest<Vector> FindFarthest(std::span<Vector const> points, Vector const& from) noexcept
{
    using T = decltype(Vector::x);
    T farthest{-1};
    Vector const* found = &from;
    for (Vector const& point : points)
    {
        T const distanceSquared = (point - from).LengthSquared();
        if (distanceSquared > farthest)
        {
            farthest = distanceSquared;
            found = &point;
        }
    }
    return {*found, farthest};
}

/// The sphere about a centre that reaches the farthest point; the empty one without points.
template <typename Vector>
[[nodiscard]] Round<Vector> ReachTo(Vector const& centre, decltype(Vector::x) distanceSquared) noexcept
{
    if (distanceSquared < 0)
        return MakeEmpty<Vector>();
    return MakeRound(centre, distanceSquared * SLACK<decltype(Vector::x)>);
}

template <typename Vector>
[[nodiscard]] bool HasNaN(Vector const& v) noexcept
{
    return !(v.LengthSquared() >= 0);
}

/// The points that are farthest along each axis, of those without a NaN.
template <typename Vector>
struct tEnds
{
    using T = decltype(Vector::x);
    static constexpr std::size_t AXES = sizeof(Vector) / sizeof(T);

    Vector lowest[AXES];
    Vector highest[AXES];

    tEnds(std::span<Vector const> points, Vector const& start) noexcept
    {
        for (std::size_t axis = 0; axis < AXES; ++axis)
            lowest[axis] = highest[axis] = start;
        for (Vector const& point : points)
            for (std::size_t axis = 0; axis < AXES; ++axis)
            {
                if (point[axis] < lowest[axis][axis] && !HasNaN(point))
                    lowest[axis] = point;
                if (point[axis] > highest[axis][axis] && !HasNaN(point))
                    highest[axis] = point;
            }
    }

    /// The smallest sphere through the pair that is farthest apart.
    [[nodiscard]] Round<Vector> FindWidest(Vector const& start) const noexcept
    {
        Round<Vector> widest = MakeRound(start, T{0});
        for (std::size_t axis = 0; axis < AXES; ++axis)
        {
            Round<Vector> const pair(lowest[axis], highest[axis]);
            if (pair.GetRadiusSquared() > widest.GetRadiusSquared())
                widest = pair;
        }
        return widest;
    }

    /// The middle of the box around all.
    [[nodiscard]] Vector GetMiddle() const noexcept
    {
        Vector middle;
        for (std::size_t axis = 0; axis < AXES; ++axis)
            middle[axis] = (lowest[axis][axis] + highest[axis][axis]) * T{0.5};
        return middle;
    }
};

/// The centre to which a sphere moves that grows by each point outside of it, on the side where that is.
template <typename Vector>
[[nodiscard]] Vector MoveCentre(std::span<Vector const> points, Round<Vector> const& start) noexcept
{
    using T = decltype(Vector::x);
    Vector centre = start.GetCentre();
    T radiusSquared = start.GetRadiusSquared();
    T radius = start.GetRadius();
    for (Vector const& point : points)
    {
        Vector const way = point - centre;
        T const distanceSquared = way.LengthSquared();
        if (!(distanceSquared > radiusSquared))
            continue;
        T const distance = detail::SquareRoot(distanceSquared);
        T const beyond = (distance - radius) * T{0.5};
        centre += way * (beyond / distance);
        radius += beyond;
        radiusSquared = radius * radius;
    }
    return centre;
}

template <typename Vector>
[[nodiscard]] Round<Vector> MakeBoundingRound(std::span<Vector const> points) noexcept
{
    Vector const start = FindFinite(points);
    tEnds<Vector> const ends(points, start);
    Vector const candidates[] = {MoveCentre(points, ends.FindWidest(start)), ends.GetMiddle()};
    // Infinities and overflow leave the first finite point.
    Vector centre = start;
    auto distanceSquared = std::numeric_limits<decltype(Vector::x)>::infinity();
    for (Vector const& candidate : candidates)
    {
        if (!HasNoInfinityNorNaN(candidate))
            continue;
        auto const needed = FindFarthest(points, candidate).distanceSquared;
        if (needed < distanceSquared)
        {
            centre = candidate;
            distanceSquared = needed;
        }
    }
    return ReachTo(centre, distanceSquared);
}

using Point = tVector3<double>;

[[nodiscard]] Point Lift(tVector3<float> const& point) noexcept
{
    return Point(point);
}
[[nodiscard]] Point Lift(tVector3<double> const& point) noexcept
{
    return point;
}
template <typename T>
[[nodiscard]] Point Lift(tVector2<T> const& point) noexcept
{
    return {static_cast<double>(point.x), static_cast<double>(point.y), 0.0};
}

template <typename Vector>
[[nodiscard]] Vector Lower(Point const& point) noexcept
{
    using T = decltype(Vector::x);
    if constexpr (sizeof(Vector) / sizeof(T) == 3)
        return {static_cast<T>(point.x), static_cast<T>(point.y), static_cast<T>(point.z)};
    else
        return {static_cast<T>(point.x), static_cast<T>(point.y)};
}

/// The centre of the smallest sphere through the origin and up to three points, as a quotient: what is divided, and by
/// what. The divisor is 0 where these do not span as many dimensions as they are many.
struct Quotient
{
    Point numerator;
    double denominator;
};

[[nodiscard]] Quotient Circumscribe(Point const* const (&points)[3], std::size_t count) noexcept
{
    if (count == 0)
        return {{}, 1};
    Point const& a = *points[0];
    double const aa = a.LengthSquared();
    if (count == 1)
        return {a, aa == 0 ? 0.0 : 2.0};
    Point const& b = *points[1];
    double const bb = b.LengthSquared();
    Point const normal = a.Cross(b);
    if (count == 2)
        return {(b * aa - a * bb).Cross(normal), 2 * normal.LengthSquared()};
    Point const& c = *points[2];
    return {b.Cross(c) * aa + c.Cross(a) * bb + normal * c.LengthSquared(), 2 * normal.Dot(c)};
}

/// A sphere and the points that it goes through.
struct Supported
{
    static constexpr std::size_t MOST = 4;

    Point centre;
    double radiusSquared = 0;
    Point support[MOST];
    std::size_t count = 0;
};

/// The smallest sphere around a point and the support of another sphere that does not hold it: the smallest of those
/// that go through the point and some of the support and hold the rest. Each candidate counts with the radius that
/// holds all, so that none has to be told from its neighbours by a tolerance.
[[nodiscard, gnu::noinline]] Supported Surround(Supported const& before, Point const& pivot) noexcept
{
    // From the pivot on and by the largest component: no product overflows or underflows.
    Point ways[Supported::MOST];
    double scale = 0;
    for (std::size_t i = 0; i < before.count; ++i)
    {
        ways[i] = before.support[i] - pivot;
        for (std::size_t axis = 0; axis < 3; ++axis)
            scale = Larger(scale, detail::Magnitude(ways[i][axis]));
    }
    Supported best;
    if (scale == 0)
        return best; // all at one point: nothing grows
    for (std::size_t i = 0; i < before.count; ++i)
        ways[i] = ways[i] / scale;

    double bestSquared = std::numeric_limits<double>::infinity();
    for (std::size_t subset = 0; subset < std::size_t{1} << before.count; ++subset)
    {
        if (std::popcount(subset) > 3)
            continue; // they and the pivot support no sphere
        Point const* chosen[3] = {};
        std::size_t count = 0;
        for (std::size_t i = 0; i < before.count; ++i)
            if ((subset >> i & 1U) != 0)
                chosen[count++] = &ways[i];
        Quotient const quotient = Circumscribe(chosen, count);
        if (quotient.denominator == 0)
            continue;
        Point const centre = quotient.numerator / quotient.denominator;
        double reachSquared = centre.LengthSquared();
        for (std::size_t i = 0; i < before.count; ++i)
            reachSquared = Larger((ways[i] - centre).LengthSquared(), reachSquared);
        if (!(reachSquared < bestSquared))
            continue;
        bestSquared = reachSquared;
        best.centre = pivot + centre * scale;
        best.radiusSquared = reachSquared * scale * scale;
        best.support[0] = pivot;
        best.count = 1;
        for (std::size_t i = 0; i < before.count; ++i)
            if ((subset >> i & 1U) != 0)
                best.support[best.count++] = before.support[i];
    }
    return best;
}

template <typename Vector>
[[nodiscard]] Round<Vector> MakeSmallestRound(std::span<Vector const> points) noexcept
{
    // Rounding ends the search long before: each step has a larger radius than the one before.
    constexpr int MOST_STEPS = 1000;
    Vector const start = FindFinite(points);
    Vector centre = start;
    tFarthest<Vector> farthest = FindFarthest(points, centre);
    Vector bestCentre = centre;
    auto bestSquared = farthest.distanceSquared;
    Supported supported;
    supported.centre = supported.support[0] = Lift(start);
    supported.count = 1;
    for (int step = 0; step < MOST_STEPS && IsFinite(farthest.distanceSquared); ++step)
    {
        Supported const next = Surround(supported, Lift(farthest.point));
        if (!(next.radiusSquared > supported.radiusSquared))
            break;
        supported = next;
        centre = Lower<Vector>(next.centre);
        farthest = FindFarthest(points, centre);
        if (farthest.distanceSquared < bestSquared)
        {
            bestCentre = centre;
            bestSquared = farthest.distanceSquared;
        }
    }
    return ReachTo(bestCentre, bestSquared);
}

} // namespace

tVolumeSphere<float> GetBoundingSphere(std::span<tVector3<float> const> points) noexcept
{
    return MakeBoundingRound(points);
}

tVolumeSphere<double> GetBoundingSphere(std::span<tVector3<double> const> points) noexcept
{
    return MakeBoundingRound(points);
}

tAreaDisc<float> GetBoundingDisc(std::span<tVector2<float> const> points) noexcept
{
    return MakeBoundingRound(points);
}

tAreaDisc<double> GetBoundingDisc(std::span<tVector2<double> const> points) noexcept
{
    return MakeBoundingRound(points);
}

tVolumeSphere<float> GetSmallestSphere(std::span<tVector3<float> const> points) noexcept
{
    return MakeSmallestRound(points);
}

tVolumeSphere<double> GetSmallestSphere(std::span<tVector3<double> const> points) noexcept
{
    return MakeSmallestRound(points);
}

tAreaDisc<float> GetSmallestDisc(std::span<tVector2<float> const> points) noexcept
{
    return MakeSmallestRound(points);
}

tAreaDisc<double> GetSmallestDisc(std::span<tVector2<double> const> points) noexcept
{
    return MakeSmallestRound(points);
}

template BV_TEMPLATE_INSTANCE tVolumeAABB<float> Union(tVolumeAABB<float> const&, tVolumeAABB<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVolumeAABB<float> Union(tVolumeAABB<float> const&, tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tAreaAABB<float> Union(tAreaAABB<float> const&, tAreaAABB<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tAreaAABB<float> Union(tAreaAABB<float> const&, tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVolumeAABB<float> Intersection(tVolumeAABB<float> const&,
                                                              tVolumeAABB<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tAreaAABB<float> Intersection(tAreaAABB<float> const&, tAreaAABB<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE bool Overlaps(tVolumeAABB<float> const&, tVolumeAABB<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE bool Overlaps(tAreaAABB<float> const&, tAreaAABB<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE bool Contains(tVolumeAABB<float> const&, tVolumeAABB<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE bool Contains(tAreaAABB<float> const&, tAreaAABB<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE float GetSurfaceArea(tVolumeAABB<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE float GetPerimeter(tAreaAABB<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<float> GetCorner(tVolumeAABB<float> const&, unsigned int) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> GetCorner(tAreaAABB<float> const&, unsigned int) noexcept;
template BV_TEMPLATE_INSTANCE void GetCorners(tVolumeAABB<float> const&, tVector3<float> (&)[8]) noexcept;
template BV_TEMPLATE_INSTANCE void GetCorners(tAreaAABB<float> const&, tVector2<float> (&)[4]) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<float> GetClosestPoint(tVolumeAABB<float> const&,
                                                              tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> GetClosestPoint(tAreaAABB<float> const&, tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVolumeAABB<float> GetBound(tVolumeSphere<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tAreaAABB<float> GetBound(tAreaDisc<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE std::optional<tVolumeAABB<float>> ProjectBox(tVolumeAABB<float> const&,
                                                                           tMatrix4<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVolumeSphere<float> GetBoundingSphere(tVolumeAABB<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tAreaDisc<float> GetBoundingDisc(tAreaAABB<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVolumeSphere<float> Union(tVolumeSphere<float> const&, tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tAreaDisc<float> Union(tAreaDisc<float> const&, tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVolumeSphere<float> Union(tVolumeSphere<float> const&,
                                                         tVolumeSphere<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tAreaDisc<float> Union(tAreaDisc<float> const&, tAreaDisc<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVolumeAABB<double> Union(tVolumeAABB<double> const&,
                                                        tVolumeAABB<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVolumeAABB<double> Union(tVolumeAABB<double> const&, tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tAreaAABB<double> Union(tAreaAABB<double> const&, tAreaAABB<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tAreaAABB<double> Union(tAreaAABB<double> const&, tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVolumeAABB<double> Intersection(tVolumeAABB<double> const&,
                                                               tVolumeAABB<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tAreaAABB<double> Intersection(tAreaAABB<double> const&,
                                                             tAreaAABB<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE bool Overlaps(tVolumeAABB<double> const&, tVolumeAABB<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE bool Overlaps(tAreaAABB<double> const&, tAreaAABB<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE bool Contains(tVolumeAABB<double> const&, tVolumeAABB<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE bool Contains(tAreaAABB<double> const&, tAreaAABB<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE double GetSurfaceArea(tVolumeAABB<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE double GetPerimeter(tAreaAABB<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> GetCorner(tVolumeAABB<double> const&, unsigned int) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> GetCorner(tAreaAABB<double> const&, unsigned int) noexcept;
template BV_TEMPLATE_INSTANCE void GetCorners(tVolumeAABB<double> const&, tVector3<double> (&)[8]) noexcept;
template BV_TEMPLATE_INSTANCE void GetCorners(tAreaAABB<double> const&, tVector2<double> (&)[4]) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> GetClosestPoint(tVolumeAABB<double> const&,
                                                               tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> GetClosestPoint(tAreaAABB<double> const&,
                                                               tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVolumeAABB<double> GetBound(tVolumeSphere<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tAreaAABB<double> GetBound(tAreaDisc<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE std::optional<tVolumeAABB<double>> ProjectBox(tVolumeAABB<double> const&,
                                                                            tMatrix4<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVolumeSphere<double> GetBoundingSphere(tVolumeAABB<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tAreaDisc<double> GetBoundingDisc(tAreaAABB<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVolumeSphere<double> Union(tVolumeSphere<double> const&,
                                                          tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tAreaDisc<double> Union(tAreaDisc<double> const&, tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVolumeSphere<double> Union(tVolumeSphere<double> const&,
                                                          tVolumeSphere<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tAreaDisc<double> Union(tAreaDisc<double> const&, tAreaDisc<double> const&) noexcept;

} // namespace bv::maths
