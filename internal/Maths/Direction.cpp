#define BV_INSTANCES // of the inline functions: see bv/Export.h
#include "bv/maths/Direction.h"

namespace bv::maths
{

template BV_TEMPLATE_INSTANCE float Distance(tVector3<float> const&, tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE float DistanceSquared(tVector3<float> const&, tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE float GetAngle(tVector3<float> const&, tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<float> Reflect(tVector3<float> const&, tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE std::optional<tVector3<float>> Refract(tVector3<float> const&, tVector3<float> const&,
                                                                     float) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<float> FaceForward(tVector3<float> const&, tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<float> Project(tVector3<float> const&, tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<float> Reject(tVector3<float> const&, tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE float Distance(tVector2<float> const&, tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE float DistanceSquared(tVector2<float> const&, tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE float GetAngle(tVector2<float> const&, tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> Reflect(tVector2<float> const&, tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE std::optional<tVector2<float>> Refract(tVector2<float> const&, tVector2<float> const&,
                                                                     float) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> FaceForward(tVector2<float> const&, tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> Project(tVector2<float> const&, tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> Reject(tVector2<float> const&, tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE bool Orthonormalise(tVector3<float>&, tVector3<float>&) noexcept;
template BV_TEMPLATE_INSTANCE bool Orthonormalise(tVector2<float>&, tVector2<float>&) noexcept;
template BV_TEMPLATE_INSTANCE bool Orthonormalise(tVector3<float>&, tVector3<float>&, tVector3<float>&) noexcept;
template BV_TEMPLATE_INSTANCE void EvaluateOrthonormalBasis(tVector3<float> const&, tVector3<float>&,
                                                            tVector3<float>&) noexcept;
template BV_TEMPLATE_INSTANCE double Distance(tVector3<double> const&, tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE double DistanceSquared(tVector3<double> const&, tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE double GetAngle(tVector3<double> const&, tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> Reflect(tVector3<double> const&, tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE std::optional<tVector3<double>> Refract(tVector3<double> const&, tVector3<double> const&,
                                                                      double) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> FaceForward(tVector3<double> const&, tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> Project(tVector3<double> const&, tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> Reject(tVector3<double> const&, tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE double Distance(tVector2<double> const&, tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE double DistanceSquared(tVector2<double> const&, tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE double GetAngle(tVector2<double> const&, tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> Reflect(tVector2<double> const&, tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE std::optional<tVector2<double>> Refract(tVector2<double> const&, tVector2<double> const&,
                                                                      double) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> FaceForward(tVector2<double> const&, tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> Project(tVector2<double> const&, tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> Reject(tVector2<double> const&, tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE bool Orthonormalise(tVector3<double>&, tVector3<double>&) noexcept;
template BV_TEMPLATE_INSTANCE bool Orthonormalise(tVector2<double>&, tVector2<double>&) noexcept;
template BV_TEMPLATE_INSTANCE bool Orthonormalise(tVector3<double>&, tVector3<double>&, tVector3<double>&) noexcept;
template BV_TEMPLATE_INSTANCE void EvaluateOrthonormalBasis(tVector3<double> const&, tVector3<double>&,
                                                            tVector3<double>&) noexcept;

} // namespace bv::maths
