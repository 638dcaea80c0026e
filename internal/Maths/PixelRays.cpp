#include "bv/maths/tPixelRays.h"

#include "bv/maths/tMatrix4.h"

namespace bv::maths
{

template <typename T>
tPixelRays<T>::tPixelRays(tVector2<T> const& size, tMatrix4<T> const& projection,
                          tMatrix4<T> const& cameraToWorld) noexcept
{
    using Matrix = tMatrix4<T>;
    T const* const m = cameraToWorld.Get();
    auto const turn = [&](tVector3<T> const& v) -> tVector3<T>
    {
        if (cameraToWorld.IsIdentity())
            return v;
        if (cameraToWorld.IsDiagonal())
            return {v.x * m[Matrix::IDX_11], v.y * m[Matrix::IDX_22], v.z * m[Matrix::IDX_33]};
        return {tVector3<T>(m).Dot(v), tVector3<T>(m + 4).Dot(v), tVector3<T>(m + 8).Dot(v)};
    };
    T const* const p = projection.Get();
    T const perX = T{1} / p[Matrix::IDX_11];
    T const perY = T{1} / p[Matrix::IDX_22];
    right = turn({T{2} / size.x * perX, T{0}, T{0}});
    down = turn({T{0}, T{-2} / size.y * perY, T{0}});
    tVector3<T> const eye = cameraToWorld.IsDiagonal()
                                ? tVector3<T>()
                                : tVector3<T>(m[Matrix::IDX_14], m[Matrix::IDX_24], m[Matrix::IDX_34]);
    T const sense = p[Matrix::IDX_43]; // w is z times this
    isParallel = sense == T{0};
    if (isParallel)
    {
        origin = turn({(T{-1} - p[Matrix::IDX_14]) * perX, (T{1} - p[Matrix::IDX_24]) * perY, T{0}}) + eye;
        corner = turn({T{0}, T{0}, T{-1}}).Normalised();
    }
    else
    {
        origin = eye;
        corner = turn({(T{-1} - p[Matrix::IDX_13] * sense) * perX, (T{1} - p[Matrix::IDX_23] * sense) * perY, sense});
    }
}

template class BV_TEMPLATE_INSTANCE tPixelRays<float>;
template class BV_TEMPLATE_INSTANCE tPixelRays<double>;

} // namespace bv::maths
