#include "bv/maths/PositionOffset.h"

namespace bv::maths
{

template BV_TEMPLATE_INSTANCE tVector3<float> GetPositionOffset(tVector3<float> const&,
                                                                tVector3<float> const&) noexcept;
template BV_TEMPLATE_INSTANCE tVector3<double> GetPositionOffset(tVector3<double> const&,
                                                                 tVector3<double> const&) noexcept;

} // namespace bv::maths
