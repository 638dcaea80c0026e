#include "bv/maths/tDifferential2.h"
#include "bv/maths/tDifferential3.h"

namespace bv::maths
{

template class BV_TEMPLATE_INSTANCE tDifferential2<float>;
template class BV_TEMPLATE_INSTANCE tDifferential2<double>;
template class BV_TEMPLATE_INSTANCE tDifferential3<float>;
template class BV_TEMPLATE_INSTANCE tDifferential3<double>;

} // namespace bv::maths
