// Environment.cpp as Windows's newer C library compiles it, whose copy of a value is that library's to free. GoogleTest
// is made for the older one, which MinGW-w64 takes by itself: this program ends with the number of failures.

#include <cstdio>
#include <cstring>

#include "core/Environment.cpp"

#if !defined _UCRT
#error "This is for the newer C library alone."
#endif

namespace
{

int failures = 0;

void Expect(char const* name, char const* expected)
{
    bv::String const found = bv::BvGetEnv(name);
    if (std::strcmp(found.ToCharArray(), expected) == 0)
        return;
    std::printf("%s: \"%s\" instead of \"%s\"\n", name, found.ToCharArray(), expected);
    ++failures;
}

} // namespace

int main()
{
    char const* const name = "BV_ENVIRONMENT_TEST";
    Expect(name, "");
    _putenv_s(name, "some value, longer than any short-string buffer");
    Expect(name, "some value, longer than any short-string buffer");
    _putenv_s(name, "\xC3\xA9 \xE2\x82\xAC");
    Expect(name, "\xC3\xA9 \xE2\x82\xAC");
    _putenv_s(name, "caf\xE9 au lait"); // in a legacy code page
    Expect(name, "");
    _putenv_s(name, "");
    Expect(name, "");
    Expect("", "");
    if (!bv::BvGetEnv(nullptr).IsEmpty())
        ++failures;
    return failures;
}
