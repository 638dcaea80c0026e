#include "bv/Environment.h"

#include <cstddef>
#include <cstdlib>
#include <memory>

namespace bv
{

String const BvGetEnv(char const* name)
{
    if (name == nullptr)
        return String();
#if defined _UCRT || defined _MSC_VER
    char* value = nullptr;
    std::size_t size = 0;
    if (_dupenv_s(&value, &size, name) != 0)
        return String();
    // Owned before the string is made, which may run out of memory.
    std::unique_ptr<char, void (*)(void*)> const copy(value, &std::free);
    return String(copy.get());
#else
    return String(std::getenv(name));
#endif
}

} // namespace bv
