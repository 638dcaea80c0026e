#include "bv/maths/Visibility.h"

#include <limits>

#include "bv/maths/tAreaAABB.h"
#include "bv/maths/tMatrix4.h"

namespace bv::maths
{

namespace
{

/// Planes number by number, one or as many as there are lanes; and points.
template <typename N>
struct tPlaneNumbers
{
    N offset, x, y, z;
};
template <typename N>
struct tPointNumbers
{
    N x, y, z;
};

template <typename T>
[[nodiscard]] tPlaneNumbers<T> NumbersOf(tPlane<T> const& plane) noexcept
{
    return {plane.GetOffset(), plane.GetNormal().x, plane.GetNormal().y, plane.GetNormal().z};
}

/// The vector product of two normals.
template <typename N>
[[nodiscard, gnu::always_inline]] inline tPointNumbers<N> Cross(tPlaneNumbers<N> const& a,
                                                                tPlaneNumbers<N> const& b) noexcept
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

/// The point that three planes have in common; from the products of their normals, by Cramer's rule.
template <typename N>
[[nodiscard, gnu::always_inline]] inline tPointNumbers<N> Meet(tPlaneNumbers<N> const& a, tPlaneNumbers<N> const& b,
                                                               tPlaneNumbers<N> const& c, N const& minusOne) noexcept
{
    tPointNumbers<N> const bc = Cross(b, c);
    tPointNumbers<N> const ca = Cross(c, a);
    tPointNumbers<N> const ab = Cross(a, b);
    N const scale = minusOne / (a.x * bc.x + a.y * bc.y + a.z * bc.z);
    return {(bc.x * a.offset + ca.x * b.offset + ab.x * c.offset) * scale,
            (bc.y * a.offset + ca.y * b.offset + ab.y * c.offset) * scale,
            (bc.z * a.offset + ca.z * b.offset + ab.z * c.offset) * scale};
}

/// As many corners as there are lanes, from one of the near or far plane on.
template <typename T>
[[gnu::always_inline]] inline void MeetAll(tPlaneNumbers<detail::tPlaneLanes<T>> const& side,
                                           tPlaneNumbers<detail::tPlaneLanes<T>> const& height, tPlane<T> const& end,
                                           tVector3<T>* corners) noexcept
{
    using Lanes = detail::tPlaneLanes<T>;
    tPlaneNumbers<Lanes> const depth{
        detail::Broadcast<Lanes>(end.GetOffset()), detail::Broadcast<Lanes>(end.GetNormal().x),
        detail::Broadcast<Lanes>(end.GetNormal().y), detail::Broadcast<Lanes>(end.GetNormal().z)};
    tPointNumbers<Lanes> const points = Meet(side, height, depth, detail::Broadcast<Lanes>(T{-1}));
    for (std::size_t lane = 0; lane < detail::COUNT<Lanes>; ++lane)
        corners[lane] = {points.x[lane], points.y[lane], points.z[lane]};
}

template <typename T, typename... Plane>
[[nodiscard, gnu::always_inline]] inline tPlaneNumbers<detail::tPlaneLanes<T>> Beside(tPlane<T> const& first,
                                                                                      Plane const&... more) noexcept
{
    detail::tPlanes<T> const planes = detail::LoadPlanes(first, more...);
    return {planes.offset, planes.x, planes.y, planes.z};
}

/// A row of a matrix as the normal and offset of a plane.
template <typename T>
struct tRow
{
    tVector3<T> normal;
    T offset;

    tRow(tMatrix4<T> const& matrix, std::size_t row) noexcept
        : normal(matrix.Get() + 4 * row), offset{matrix[4 * row + 3]}
    {
    }
};

/// Where a row is at least so many times another one.
template <typename T>
[[nodiscard]] tPlane<T> AtLeast(tRow<T> const& row, T limit, tRow<T> const& w) noexcept
{
    return {row.normal - w.normal * limit, row.offset - w.offset * limit};
}

/// Where it is at most that.
template <typename T>
[[nodiscard]] tPlane<T> AtMost(tRow<T> const& row, T limit, tRow<T> const& w) noexcept
{
    return {w.normal * limit - row.normal, w.offset * limit - row.offset};
}

/// Planes that have everything behind them, farther than any radius reaches.
template <typename T>
[[nodiscard]] tFrustum<T> MakeBlindView() noexcept
{
    tPlane<T> nowhere;
    nowhere.SetOffset(-std::numeric_limits<T>::infinity());
    return {nowhere, nowhere, nowhere, nowhere, nowhere, nowhere};
}

} // namespace

template <typename T>
tVector3<T> GetCorner(tFrustum<T> const& view, unsigned int index) noexcept
{
    tPointNumbers<T> const point = Meet(NumbersOf((index & 1U) != 0 ? view.GetRightPlane() : view.GetLeftPlane()),
                                        NumbersOf((index & 2U) != 0 ? view.GetTopPlane() : view.GetBottomPlane()),
                                        NumbersOf((index & 4U) != 0 ? view.GetFarPlane() : view.GetNearPlane()), T{-1});
    return {point.x, point.y, point.z};
}

template <typename T>
void GetCorners(tFrustum<T> const& view, tVector3<T> (&corners)[8]) noexcept
{
    tPlane<T> const& left = view.GetLeftPlane();
    tPlane<T> const& right = view.GetRightPlane();
    tPlane<T> const& bottom = view.GetBottomPlane();
    tPlane<T> const& top = view.GetTopPlane();
    if constexpr (detail::COUNT<detail::tPlaneLanes<T>> == 4)
    {
        auto const sides = Beside(left, right, left, right);
        auto const heights = Beside(bottom, bottom, top, top);
        MeetAll(sides, heights, view.GetNearPlane(), corners);
        MeetAll(sides, heights, view.GetFarPlane(), corners + 4);
    }
    else
    {
        auto const sides = Beside(left, right);
        auto const lower = Beside(bottom, bottom);
        auto const upper = Beside(top, top);
        MeetAll(sides, lower, view.GetNearPlane(), corners);
        MeetAll(sides, upper, view.GetNearPlane(), corners + 2);
        MeetAll(sides, lower, view.GetFarPlane(), corners + 4);
        MeetAll(sides, upper, view.GetFarPlane(), corners + 6);
    }
}

template <typename T>
tFrustum<T> GetParallelView(tOrientedBox<T> const& box) noexcept
{
    // The face against an axis, and the one along it.
    tVector3<T> const& halves = box.GetHalfExtents();
    auto const from = [&](std::size_t axis)
    { return tPlane<T>(box.GetAxis(axis), halves[axis] - box.GetAxis(axis).Dot(box.GetCentre())); };
    auto const to = [&](std::size_t axis)
    { return tPlane<T>(-box.GetAxis(axis), halves[axis] + box.GetAxis(axis).Dot(box.GetCentre())); };
    return {from(0), to(0), from(1), to(1), to(2), from(2)};
}

template <typename T>
tFrustum<T> GetScreenView(tMatrix4<T> const& matrix, tAreaAABB<T> const& rectangle, DepthRange range) noexcept
{
    if (!rectangle.IsValid())
        return MakeBlindView<T>();
    tRow<T> const x(matrix, 0), y(matrix, 1), z(matrix, 2), w(matrix, 3);
    bool const isReversed = range == DepthRange::ONE_TO_ZERO;
    tPlane<T> const shallow = AtLeast(z, isReversed || range == DepthRange::ZERO_TO_ONE ? T{0} : T{-1}, w);
    tPlane<T> const deep = AtMost(z, T{1}, w);
    return {AtLeast(x, rectangle.GetMin().x, w), AtMost(x, rectangle.GetMax().x, w),
            AtLeast(y, rectangle.GetMin().y, w), AtMost(y, rectangle.GetMax().y, w),
            isReversed ? deep : shallow,         isReversed ? shallow : deep};
}

template BV_TEMPLATE_INSTANCE tFrustum<float>::IntersectionResult Classify(tFrustum<float> const&,
                                                                           tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tFrustum<float>::IntersectionResult Classify(tFrustum<float> const&,
                                                                           tVolumeSphere<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tFrustum<float>::IntersectionResult Classify(tFrustum<float> const&,
                                                                           tOrientedBox<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<float> GetCorner(tFrustum<float> const&, unsigned int) noexcept;
template BV_TEMPLATE_INSTANCE void GetCorners(tFrustum<float> const&, tVector3<float> (&)[8]) noexcept;
template BV_TEMPLATE_INSTANCE tFrustum<float> GetParallelView(tOrientedBox<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tFrustum<float> GetScreenView(tMatrix4<float> const&, tAreaAABB<float> const&,
                                                            DepthRange) noexcept;
template BV_TEMPLATE_INSTANCE tFrustum<double>::IntersectionResult Classify(tFrustum<double> const&,
                                                                            tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tFrustum<double>::IntersectionResult Classify(tFrustum<double> const&,
                                                                            tVolumeSphere<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tFrustum<double>::IntersectionResult Classify(tFrustum<double> const&,
                                                                            tOrientedBox<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> GetCorner(tFrustum<double> const&, unsigned int) noexcept;
template BV_TEMPLATE_INSTANCE void GetCorners(tFrustum<double> const&, tVector3<double> (&)[8]) noexcept;
template BV_TEMPLATE_INSTANCE tFrustum<double> GetParallelView(tOrientedBox<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tFrustum<double> GetScreenView(tMatrix4<double> const&, tAreaAABB<double> const&,
                                                             DepthRange) noexcept;

} // namespace bv::maths
