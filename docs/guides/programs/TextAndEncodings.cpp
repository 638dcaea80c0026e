// Text that comes in, is looked at, and goes out.
#include <cstring>
#include <cwchar>
#include <iostream>

#include <bv/String.h>

int main()
{
    std::cout << std::boolalpha;

    //! [forms]
    bv::String const greeting("Grüße 🙂");
    std::cout << greeting.ToCharArray() << '\n';
    std::cout << "UTF-8: " << std::strlen(greeting.ToCharArray()) << " bytes\n";
    std::cout << "UTF-16: " << std::wcslen(greeting.ToWCharArray()) << " units\n";
    std::cout << "from wide text: " << (bv::String(L"Grüße 🙂") == greeting) << '\n';
    //! [forms]

    //! [malformed]
    wchar_t const lone[] = {0xD83D, 0}; // the first half of a surrogate pair
    std::cout << "cut short: " << bv::String("Gr\xC3").IsEmpty() << '\n';
    std::cout << "a lone surrogate: " << bv::String(lone).IsEmpty() << '\n';
    std::cout << "no text: " << bv::String(static_cast<char const*>(nullptr)).IsEmpty() << '\n';
    //! [malformed]

    //! [bytes]
    std::cout << "é as one code point and as two: " << (bv::String("\u00E9") == bv::String("e\u0301")) << '\n';
    std::cout << "Z before a: " << (bv::String("Z") < bv::String("a")) << '\n';
    std::cout << "z before ä: " << (bv::String("z") < bv::String("ä")) << '\n';
    //! [bytes]

    //! [lifetime]
    bv::String name("left");
    bv::String const kept(name); // a copy of its own
    name = "right";              // whatever name.ToCharArray() gave before is gone
    std::cout << kept.ToCharArray() << ", " << name.ToCharArray() << '\n';
    //! [lifetime]
}
