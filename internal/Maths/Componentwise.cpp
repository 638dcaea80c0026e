#define BV_INSTANCES // of the inline functions: see bv/Export.h
#include "bv/maths/Componentwise.h"

namespace bv::maths
{

template BV_TEMPLATE_INSTANCE tVector3<float> Min(tVector3<float> const&, tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<float> Max(tVector3<float> const&, tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<float> Abs(tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<float> Clamp(tVector3<float> const&, tVector3<float> const&,
                                                    tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<float> Clamp(tVector3<float> const&, float, float) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<float> Lerp(tVector3<float> const&, tVector3<float> const&, float) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<float> Lerp(tVector3<float> const&, tVector3<float> const&,
                                                   tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<float> Floor(tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<float> Ceil(tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE float GetMinComponent(tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE float GetMaxComponent(tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned char GetMinAxis(tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned char GetMaxAxis(tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> Min(tVector2<float> const&, tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> Max(tVector2<float> const&, tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> Abs(tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> Clamp(tVector2<float> const&, tVector2<float> const&,
                                                    tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> Clamp(tVector2<float> const&, float, float) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> Lerp(tVector2<float> const&, tVector2<float> const&, float) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> Lerp(tVector2<float> const&, tVector2<float> const&,
                                                   tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> Floor(tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<float> Ceil(tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE float GetMinComponent(tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE float GetMaxComponent(tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned char GetMinAxis(tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned char GetMaxAxis(tVector2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<float> Min(tTuple3<float> const&, tTuple3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<float> Max(tTuple3<float> const&, tTuple3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<float> Abs(tTuple3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<float> Clamp(tTuple3<float> const&, tTuple3<float> const&,
                                                   tTuple3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<float> Clamp(tTuple3<float> const&, float, float) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<float> Lerp(tTuple3<float> const&, tTuple3<float> const&, float) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<float> Lerp(tTuple3<float> const&, tTuple3<float> const&,
                                                  tTuple3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<float> Floor(tTuple3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<float> Ceil(tTuple3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE float GetMinComponent(tTuple3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE float GetMaxComponent(tTuple3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned char GetMinAxis(tTuple3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned char GetMaxAxis(tTuple3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<float> Min(tTuple2<float> const&, tTuple2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<float> Max(tTuple2<float> const&, tTuple2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<float> Abs(tTuple2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<float> Clamp(tTuple2<float> const&, tTuple2<float> const&,
                                                   tTuple2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<float> Clamp(tTuple2<float> const&, float, float) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<float> Lerp(tTuple2<float> const&, tTuple2<float> const&, float) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<float> Lerp(tTuple2<float> const&, tTuple2<float> const&,
                                                  tTuple2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<float> Floor(tTuple2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<float> Ceil(tTuple2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE float GetMinComponent(tTuple2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE float GetMaxComponent(tTuple2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned char GetMinAxis(tTuple2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned char GetMaxAxis(tTuple2<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> Min(tVector3<double> const&, tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> Max(tVector3<double> const&, tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> Abs(tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> Clamp(tVector3<double> const&, tVector3<double> const&,
                                                     tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> Clamp(tVector3<double> const&, double, double) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> Lerp(tVector3<double> const&, tVector3<double> const&, double) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> Lerp(tVector3<double> const&, tVector3<double> const&,
                                                    tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> Floor(tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> Ceil(tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE double GetMinComponent(tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE double GetMaxComponent(tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned char GetMinAxis(tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned char GetMaxAxis(tVector3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> Min(tVector2<double> const&, tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> Max(tVector2<double> const&, tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> Abs(tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> Clamp(tVector2<double> const&, tVector2<double> const&,
                                                     tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> Clamp(tVector2<double> const&, double, double) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> Lerp(tVector2<double> const&, tVector2<double> const&, double) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> Lerp(tVector2<double> const&, tVector2<double> const&,
                                                    tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> Floor(tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector2<double> Ceil(tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE double GetMinComponent(tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE double GetMaxComponent(tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned char GetMinAxis(tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned char GetMaxAxis(tVector2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<double> Min(tTuple3<double> const&, tTuple3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<double> Max(tTuple3<double> const&, tTuple3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<double> Abs(tTuple3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<double> Clamp(tTuple3<double> const&, tTuple3<double> const&,
                                                    tTuple3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<double> Clamp(tTuple3<double> const&, double, double) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<double> Lerp(tTuple3<double> const&, tTuple3<double> const&, double) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<double> Lerp(tTuple3<double> const&, tTuple3<double> const&,
                                                   tTuple3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<double> Floor(tTuple3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<double> Ceil(tTuple3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE double GetMinComponent(tTuple3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE double GetMaxComponent(tTuple3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned char GetMinAxis(tTuple3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned char GetMaxAxis(tTuple3<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<double> Min(tTuple2<double> const&, tTuple2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<double> Max(tTuple2<double> const&, tTuple2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<double> Abs(tTuple2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<double> Clamp(tTuple2<double> const&, tTuple2<double> const&,
                                                    tTuple2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<double> Clamp(tTuple2<double> const&, double, double) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<double> Lerp(tTuple2<double> const&, tTuple2<double> const&, double) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<double> Lerp(tTuple2<double> const&, tTuple2<double> const&,
                                                   tTuple2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<double> Floor(tTuple2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<double> Ceil(tTuple2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE double GetMinComponent(tTuple2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE double GetMaxComponent(tTuple2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned char GetMinAxis(tTuple2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned char GetMaxAxis(tTuple2<double> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<int> Min(tTuple3<int> const&, tTuple3<int> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<int> Max(tTuple3<int> const&, tTuple3<int> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<int> Abs(tTuple3<int> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<int> Clamp(tTuple3<int> const&, tTuple3<int> const&,
                                                 tTuple3<int> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<int> Clamp(tTuple3<int> const&, int, int) noexcept;
template BV_TEMPLATE_INSTANCE int GetMinComponent(tTuple3<int> const&) noexcept;
template BV_TEMPLATE_INSTANCE int GetMaxComponent(tTuple3<int> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned char GetMinAxis(tTuple3<int> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned char GetMaxAxis(tTuple3<int> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<int> Min(tTuple2<int> const&, tTuple2<int> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<int> Max(tTuple2<int> const&, tTuple2<int> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<int> Abs(tTuple2<int> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<int> Clamp(tTuple2<int> const&, tTuple2<int> const&,
                                                 tTuple2<int> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<int> Clamp(tTuple2<int> const&, int, int) noexcept;
template BV_TEMPLATE_INSTANCE int GetMinComponent(tTuple2<int> const&) noexcept;
template BV_TEMPLATE_INSTANCE int GetMaxComponent(tTuple2<int> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned char GetMinAxis(tTuple2<int> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned char GetMaxAxis(tTuple2<int> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<unsigned int> Min(tTuple3<unsigned int> const&,
                                                        tTuple3<unsigned int> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<unsigned int> Max(tTuple3<unsigned int> const&,
                                                        tTuple3<unsigned int> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<unsigned int> Clamp(tTuple3<unsigned int> const&, tTuple3<unsigned int> const&,
                                                          tTuple3<unsigned int> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple3<unsigned int> Clamp(tTuple3<unsigned int> const&, unsigned int,
                                                          unsigned int) noexcept;
template BV_TEMPLATE_INSTANCE unsigned int GetMinComponent(tTuple3<unsigned int> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned int GetMaxComponent(tTuple3<unsigned int> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned char GetMinAxis(tTuple3<unsigned int> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned char GetMaxAxis(tTuple3<unsigned int> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<unsigned int> Min(tTuple2<unsigned int> const&,
                                                        tTuple2<unsigned int> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<unsigned int> Max(tTuple2<unsigned int> const&,
                                                        tTuple2<unsigned int> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<unsigned int> Clamp(tTuple2<unsigned int> const&, tTuple2<unsigned int> const&,
                                                          tTuple2<unsigned int> const&) noexcept;
template BV_TEMPLATE_INSTANCE tTuple2<unsigned int> Clamp(tTuple2<unsigned int> const&, unsigned int,
                                                          unsigned int) noexcept;
template BV_TEMPLATE_INSTANCE unsigned int GetMinComponent(tTuple2<unsigned int> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned int GetMaxComponent(tTuple2<unsigned int> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned char GetMinAxis(tTuple2<unsigned int> const&) noexcept;
template BV_TEMPLATE_INSTANCE unsigned char GetMaxAxis(tTuple2<unsigned int> const&) noexcept;
template BV_TEMPLATE_INSTANCE float Lerp(float, float, float) noexcept;
template BV_TEMPLATE_INSTANCE double Lerp(double, double, double) noexcept;

} // namespace bv::maths
