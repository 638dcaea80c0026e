#include <bv/maths/View.h>

#include "Matrices.h"

#include "Run.h"
#include "Topics.h"
#include <limits>

namespace digest
{

namespace
{

constexpr DepthRange RANGES_OF_DEPTH[] = {DepthRange::MINUS_ONE_TO_ONE, DepthRange::ZERO_TO_ONE,
                                          DepthRange::ONE_TO_ZERO};

template <typename T>
[[nodiscard]] T Positive(Workload& work) noexcept
{
    return work.OneIn(32) ? work.Special<T>() : detail::Magnitude(work.Plain<T>()) + T{0.0625};
}

/// A projection of any kind, or what its exception says, added by the way.
template <typename T>
[[nodiscard]] tMatrix4<T> Projection(Digest& digest, Workload& work)
{
    tMatrix4<T> result;
    DepthRange const range = RANGES_OF_DEPTH[work.Below(3)];
    T sides[4];
    for (T& side : sides)
        side = Positive<T>(work);
    T const nearPlane = Positive<T>(work);
    T const farPlane = work.OneIn(4) ? std::numeric_limits<T>::infinity() : nearPlane + Positive<T>(work);
    unsigned int const kind = work.Below(3);
    digest.Try(
        [&]
        {
            if (kind == 0)
                result = PerspectiveFromTangent(sides[0], sides[1], nearPlane, farPlane, range);
            else if (kind == 1)
                result = PerspectiveProjection(-sides[0], sides[1], -sides[2], sides[3], nearPlane, farPlane, range);
            else
                result = OrthographicProjection(-sides[0], sides[1], -sides[2], sides[3], nearPlane, farPlane, range);
            return kind;
        });
    AddWhole(digest, result);
    return result;
}

template <typename T>
void Views(Digests& digests, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 2000; ++i)
        {
            tVector3<T> const eye = work.OneIn(8) ? tVector3<T>() : work.Vector3<T>(rarity);
            tVector3<T> const target = work.Vector3<T>(rarity);
            tVector3<T> const up = work.OneIn(4) ? target - eye : work.Direction<T>(rarity);
            tMatrix4<T> const view = LookAt(eye, target, up);
            tMatrix4<T> const place = PlaceCamera(eye, target, up);
            AddWhole(digests["cameras"], view);
            AddWhole(digests["cameras"], place);
            tMatrix4<T> const projection = Projection<T>(digests["projections"], work);
            T const width = static_cast<T>(work.Below(1000) + 1);
            tVector2<T> const size(width, static_cast<T>(work.Below(1000) + 1));
            tPixelRays<T> const rays(size, projection, work.OneIn(4) ? work.AnyMatrix<T>(rarity) : place);
            digests["pixel-rays"].Add(rays.GetStepRight(), rays.GetStepDown());
            for (int j = 0; j < 4; ++j)
            {
                tVector2<T> const pixel = work.Vector2<T>(0) * T{50};
                tRay<T> const ray = rays(pixel);
                digests["pixel-rays"].Add(ray.origin, ray.direction, rays.GetDirection(pixel));
                tRay<T> const single = GetPixelRay(pixel, size, projection, place);
                digests["single-pixel-rays"].Add(single.origin, single.direction);
                tVector3<T> const point = work.OneIn(2) ? work.Vector3<T>(rarity) : ray.origin + ray.direction * T{3};
                auto const shown = GetPixel(point, work.OneIn(4) ? work.AnyMatrix<T>(rarity) : projection * view, size);
                digests["pixels"].Add(shown.has_value());
                if (shown)
                    digests["pixels"].Add(*shown, GetViewDistance(shown->z, projection));
            }
        }
}

/// A matrix whose lines have any scales and now and then depend on each other.
template <typename T>
[[nodiscard]] tMatrix4<T> Scaled(Workload& work, unsigned int rarity)
{
    tMatrix4<T> matrix = work.AnyMatrix<T>(rarity);
    if (work.OneIn(3))
        for (std::size_t line = 0; line < 4; ++line)
        {
            T const factor = work.OneIn(4) ? detail::Magnitude(work.Special<T>()) : T{1};
            bool const isRow = work.OneIn(2);
            for (std::size_t i = 0; i < 4; ++i)
                matrix(isRow ? 4 * line + i : 4 * i + line) *= factor;
        }
    if (work.OneIn(4))
        for (std::size_t i = 0; i < 4; ++i)
            matrix(8 + i) = matrix[i] + matrix[4 + i];
    return matrix;
}

template <typename T>
void Inverses(Digests& digests, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 3000; ++i)
        {
            tMatrix4<T> const matrix = Scaled<T>(work, rarity);
            auto const inverse = TryInverted(matrix);
            digests["inverse"].Add(inverse.has_value());
            if (!inverse)
                continue;
            AddWhole(digests["inverse"], *inverse);
            AddWhole(digests["normal-matrix"], *GetNormalMatrix(matrix));
            digests["normals"].Add(*TransformNormal(matrix, work.Direction<T>(rarity)));
        }
}

template <typename T>
void Parts(Digests& digests, Workload& work)
{
    for (unsigned int const rarity : RARITIES)
        for (int i = 0; i < 2000; ++i)
        {
            tMatrix4<T> matrix = Scaled<T>(work, rarity);
            if (!work.OneIn(8))
            {
                for (std::size_t j = 12; j < 15; ++j)
                    matrix(j) = T{0};
                matrix(15) = T{1};
            }
            auto const parts = Decompose(matrix);
            digests["decomposed"].Add(parts.has_value());
            if (!parts)
                continue;
            auto const& q = parts->rotation;
            digests["decomposed"].Add(parts->translation, q.x, q.y, q.z, q.w, parts->scale, parts->shear);
            AddWhole(digests["composed"], Compose(*parts));
            tVector3<T> const translation = work.Vector3<T>(rarity);
            tVector3<T> const scale = work.Vector3<T>(rarity);
            AddWhole(digests["composed"], Compose(translation, q, scale));
            AddWhole(digests["constructed"], Compose(tMatrixParts<T>(translation, q, scale)));
            AddWhole(digests["constructed"], Compose(tMatrixParts<T>(translation, q, scale, parts->shear)));
        }
    AddWhole(digests["constructed"], Compose(tMatrixParts<T>()));
}

template <typename T>
void FieldsOfView(Digest& digest, Workload& work)
{
    for (int i = 0; i < 500; ++i)
    {
        T const angle = Positive<T>(work);
        T const aspect = Positive<T>(work);
        T const nearPlane = Positive<T>(work);
        T const farPlane = Positive<T>(work);
        for (DepthRange const range : RANGES_OF_DEPTH)
            digest.Try([&] { return PerspectiveFromFieldOfView(angle, aspect, nearPlane, farPlane, range); });
    }
}

} // namespace

void RunViews()
{
    RunBoth("views", Views<float>, Views<double>);
    RunBoth("view-inverses", Inverses<float>, Inverses<double>);
    RunBoth("matrix-parts", Parts<float>, Parts<double>);
}

void RunFieldsOfView()
{
    RunBoth("machine-dependent.fields-of-view", FieldsOfView<float>, FieldsOfView<double>);
}

} // namespace digest
