#include <cstddef>
#include <string>
#include <string_view>

#include <bv/maths/FromChars.h>
#include <bv/maths/tQuaternion.h>

#include "Run.h"
#include "Streamed.h"
#include "Topics.h"

namespace digest
{

namespace
{

/// What is read from the text: how far, with which outcome, and the value.
template <typename Value>
void Read(Digest& digest, std::string_view text, Value value)
{
    auto const [end, error] = FromChars(text.data(), text.data() + text.size(), value);
    digest.Add(static_cast<std::size_t>(end - text.data()), error == std::errc{}, error == std::errc::invalid_argument);
    for (std::size_t i = 0; i < detail::tElements<Value>::COUNT; ++i)
        digest.Add(detail::tElements<Value>::Get(value, i));
}

/// The text of the value, and the same with a letter left out, another one in its place, or more digits.
template <typename Value>
void ReadVariants(Digest& digest, Workload& work, Value const& value)
{
    std::string const text = Text(value);
    Read(digest, text, Value());
    Read(digest, text + " and more", Value());
    for (int i = 0; i < 4; ++i)
    {
        std::size_t const place = work.Below(static_cast<unsigned int>(text.size()));
        std::string changed = text;
        Read(digest, changed.erase(place, 1), value);
        changed = text;
        changed[place] = "0123456789+-.,e \t\nx"[work.Below(19)];
        Read(digest, changed, value);
        Read(digest, changed.insert(place, work.OneIn(4) ? "e99" : "37"), value);
        Read(digest, std::string_view(text).substr(0, place), value);
    }
}

template <typename T>
void Readings(Digests& digests, Workload& work)
{
    for (int i = 0; i < 300; ++i)
    {
        T numbers[16];
        for (T& number : numbers)
            number = work.Ordered<T>(8);
        ReadVariants(digests["tuples"], work, tTuple3<T>(numbers[0], numbers[1], numbers[2]));
        ReadVariants(digests["vectors"], work, tVector2<T>(numbers[3], numbers[4]));
        ReadVariants(digests["vectors"], work, tVector3<T>(numbers[5], numbers[6], numbers[7]));
        ReadVariants(digests["quaternions"], work, tQuaternion<T>(numbers[8], numbers[9], numbers[10], numbers[11]));
        ReadVariants(digests["matrices"], work, tMatrix4<T>(numbers));
        ReadVariants(digests["planes"], work, tPlane<T>({T{3}, T{0}, T{4}}, numbers[12]));
        int const integer = static_cast<int>(work.Below(100000)) - 50000;
        ReadVariants(digests["integers"], work, tTuple2<int>(integer, 3));
        ReadVariants(digests["integers"], work, tVector3<unsigned int>(static_cast<unsigned int>(integer), 4, 5));
    }
}

} // namespace

void RunReadings()
{
    RunBoth("readings", Readings<float>, Readings<double>);
}

} // namespace digest
