#include "bv/maths/tPreparedTransform.h"

namespace bv::maths
{

template class BV_TEMPLATE_INSTANCE tPreparedTransform<float>;
template class BV_TEMPLATE_INSTANCE tPreparedTransform<double>;

} // namespace bv::maths
