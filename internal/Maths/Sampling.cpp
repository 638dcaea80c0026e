#include "bv/maths/Sampling.h"

namespace bv::maths
{

template BV_TEMPLATE_INSTANCE tVector2<float> SquareToDisc(tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> SquareToDisc(tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> DiscToSquare(tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> DiscToSquare(tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE float GetDiscDensity(tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE double GetDiscDensity(tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<float> SquareToTriangle(tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> SquareToTriangle(tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<float> SquareToTriangle(tVector2<float> const&, tVector3<float> const&,
                                                               tVector3<float> const&, tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> SquareToTriangle(tVector2<double> const&, tVector3<double> const&,
                                                                tVector3<double> const&,
                                                                tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> TriangleToSquare(tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> TriangleToSquare(tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE float GetTriangleDensity(tVector3<float> const&, tVector3<float> const&,
                                                       tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE double GetTriangleDensity(tVector3<double> const&, tVector3<double> const&,
                                                        tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<float> SquareToSphere(tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> SquareToSphere(tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> SphereToSquare(tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> SphereToSquare(tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE float GetSphereDensity<float>() noexcept;
template BV_TEMPLATE_INSTANCE double GetSphereDensity<double>() noexcept;
template BV_TEMPLATE_INSTANCE tVector3<float> SquareToHemisphere(tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> SquareToHemisphere(tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<float> SquareToHemisphere(tVector2<float> const&,
                                                                 tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> SquareToHemisphere(tVector2<double> const&,
                                                                  tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> HemisphereToSquare(tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> HemisphereToSquare(tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> HemisphereToSquare(tVector3<float> const&,
                                                                 tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> HemisphereToSquare(tVector3<double> const&,
                                                                  tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE float GetHemisphereDensity(tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE double GetHemisphereDensity(tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE float GetHemisphereDensity(tVector3<float> const&, tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE double GetHemisphereDensity(tVector3<double> const&, tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<float> SquareToCosineHemisphere(tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> SquareToCosineHemisphere(tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<float> SquareToCosineHemisphere(tVector2<float> const&,
                                                                       tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> SquareToCosineHemisphere(tVector2<double> const&,
                                                                        tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> CosineHemisphereToSquare(tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> CosineHemisphereToSquare(tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> CosineHemisphereToSquare(tVector3<float> const&,
                                                                       tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> CosineHemisphereToSquare(tVector3<double> const&,
                                                                        tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE float GetCosineHemisphereDensity(tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE double GetCosineHemisphereDensity(tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE float GetCosineHemisphereDensity(tVector3<float> const&, tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE double GetCosineHemisphereDensity(tVector3<double> const&,
                                                                tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<float> SquareToCone(tVector2<float> const&, float) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> SquareToCone(tVector2<double> const&, double) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<float> SquareToCone(tVector2<float> const&, tVector3<float> const&,
                                                           float) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> SquareToCone(tVector2<double> const&, tVector3<double> const&,
                                                            double) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> ConeToSquare(tVector3<float> const&, float) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> ConeToSquare(tVector3<double> const&, double) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> ConeToSquare(tVector3<float> const&, tVector3<float> const&,
                                                           float) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> ConeToSquare(tVector3<double> const&, tVector3<double> const&,
                                                            double) noexcept;
template BV_TEMPLATE_INSTANCE float GetConeDensity(tVector3<float> const&, float) noexcept;
template BV_TEMPLATE_INSTANCE double GetConeDensity(tVector3<double> const&, double) noexcept;
template BV_TEMPLATE_INSTANCE float GetConeDensity(tVector3<float> const&, tVector3<float> const&, float) noexcept;
template BV_TEMPLATE_INSTANCE double GetConeDensity(tVector3<double> const&, tVector3<double> const&, double) noexcept;

} // namespace bv::maths
