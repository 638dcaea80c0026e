// GoogleTest names the types of tests by what the standard library's demangler returns, which MemorySanitizer does not
// see being written. This one stands before it and tells.

#include <cstddef>

#include <dlfcn.h>
#include <sanitizer/msan_interface.h>

extern "C" char* __cxa_demangle(char const* name, char* buffer, std::size_t* length, int* status)
{
    static auto const demangle = reinterpret_cast<decltype(&__cxa_demangle)>(dlsym(RTLD_NEXT, "__cxa_demangle"));
    char* const text = demangle(name, buffer, length, status);
    if (text != nullptr)
        __msan_unpoison_string(text);
    return text;
}
