#include "bv/maths/Visibility.h"

#include "bv/maths/tAreaAABB.h"
#include "bv/maths/tMatrix4.h"

namespace bv::maths
{

namespace
{

/// The point that three planes have in common; from the products of their normals, by Cramer's rule.
template <typename T>
[[nodiscard]] tVector3<T> Meet(tPlane<T> const& a, tPlane<T> const& b, tPlane<T> const& c) noexcept
{
    tVector3<T> const across = b.GetNormal().Cross(c.GetNormal());
    tVector3<T> const sum = across * a.GetOffset() + c.GetNormal().Cross(a.GetNormal()) * b.GetOffset() +
                            a.GetNormal().Cross(b.GetNormal()) * c.GetOffset();
    return sum / -a.GetNormal().Dot(across);
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

template <typename T>
[[nodiscard]] tFrustum<T> MakeBlindView() noexcept
{
    tPlane<T> nowhere;
    nowhere.SetOffset(T{-1});
    return {nowhere, nowhere, nowhere, nowhere, nowhere, nowhere};
}

} // namespace

template <typename T>
tVector3<T> GetCorner(tFrustum<T> const& view, unsigned int index) noexcept
{
    return Meet((index & 1U) != 0 ? view.GetRightPlane() : view.GetLeftPlane(),
                (index & 2U) != 0 ? view.GetTopPlane() : view.GetBottomPlane(),
                (index & 4U) != 0 ? view.GetFarPlane() : view.GetNearPlane());
}

template <typename T>
void GetCorners(tFrustum<T> const& view, tVector3<T> (&corners)[8]) noexcept
{
    for (unsigned int index = 0; index < 8; ++index)
        corners[index] = GetCorner(view, index);
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
tFrustum<T> GetScreenView(tMatrix4<T> const& matrix, tAreaAABB<T> const& rectangle) noexcept
{
    if (!rectangle.IsValid())
        return MakeBlindView<T>();
    tRow<T> const x(matrix, 0), y(matrix, 1), z(matrix, 2), w(matrix, 3);
    return {AtLeast(x, rectangle.GetMin().x, w),
            AtMost(x, rectangle.GetMax().x, w),
            AtLeast(y, rectangle.GetMin().y, w),
            AtMost(y, rectangle.GetMax().y, w),
            AtLeast(z, T{-1}, w),
            AtMost(z, T{1}, w)};
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
template BV_TEMPLATE_INSTANCE tFrustum<float> GetScreenView(tMatrix4<float> const&, tAreaAABB<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tFrustum<double>::IntersectionResult Classify(tFrustum<double> const&,
                                                                            tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tFrustum<double>::IntersectionResult Classify(tFrustum<double> const&,
                                                                            tVolumeSphere<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tFrustum<double>::IntersectionResult Classify(tFrustum<double> const&,
                                                                            tOrientedBox<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> GetCorner(tFrustum<double> const&, unsigned int) noexcept;
template BV_TEMPLATE_INSTANCE void GetCorners(tFrustum<double> const&, tVector3<double> (&)[8]) noexcept;
template BV_TEMPLATE_INSTANCE tFrustum<double> GetParallelView(tOrientedBox<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tFrustum<double> GetScreenView(tMatrix4<double> const&,
                                                             tAreaAABB<double> const&) noexcept;

} // namespace bv::maths
