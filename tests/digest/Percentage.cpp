#include <bv/maths/Percentage.h>

#include "Run.h"
#include "Topics.h"

namespace digest
{

namespace
{

void Percentages(Digests& digests, Workload& work)
{
    auto const fields = [](Percentage const& p)
    {
        Digest inner;
        inner.Add(p.GetNumerator(), p.GetDenominator(), static_cast<float>(p));
        return inner.GetHash();
    };
    auto const draw = [&]
    { return work.OneIn(4) ? work.Below(4) : static_cast<unsigned int>(work.Bits()) >> work.Below(32); };
    digests["default"].Add(fields(Percentage()));
    for (int i = 0; i < 4000; ++i)
    {
        unsigned int const n = draw();
        unsigned int const d = draw();
        unsigned int const m = draw();
        unsigned int const e = draw();
        digests["construction"].Try([&] { return fields(Percentage(n, d)); });
        digests["products"].Try([&] { return fields(Percentage(n, d) * Percentage(m, e)); });
        digests["sums"].Try([&] { return fields(Percentage(n, d) + Percentage(m, e)); });
        digests["quotients"].Try([&] { return fields(Percentage(n, d) / Percentage(m, e)); });
        digests["quotients"].Try([&] { return fields(Percentage(n, d) / m); });
        digests["products"].Try([&] { return fields(Percentage(n, d) * m); });
        digests["sums"].Try([&] { return fields(Percentage(n, d) + m); });
        for (int operation = 0; operation < 4; ++operation)
            digests["of-constants"].Try(
                [&]
                {
                    Percentage const p(n, d);
                    Percentage const q(m, e);
                    return fields(operation == 0 ? p * q : operation == 1 ? p + q : operation == 2 ? p / q : p / m);
                });
        for (int operation = 0; operation < 3; ++operation)
        {
            auto const with = [&](auto number)
            {
                Percentage const p(n, d);
                return operation == 0 ? p * number : operation == 1 ? p + number : p / number;
            };
            digests["with-integers"].Try([&] { return fields(with(static_cast<int>(m >> 1))); });
            digests["with-integers"].Try([&] { return fields(with(static_cast<unsigned short>(e))); });
            digests["with-numbers"].Try([&] { return with(static_cast<float>(m)); });
            digests["with-numbers"].Try([&] { return with(-static_cast<double>(e)); });
        }
        Percentage p(n);
        Percentage const& itself = p;
        Digest& inPlace = digests["in-place"];
        for (int k = 0; k < 6; ++k)
        {
            unsigned int const a = draw();
            unsigned int const b = draw();
            unsigned int const operation = work.Below(4);
            inPlace.Try(
                [&]
                {
                    Percentage const q(a, b);
                    return fields(operation == 0 ? p *= q : operation == 1 ? p += q : operation == 2 ? p /= q : p /= a);
                });
            inPlace.Add(fields(p));
            inPlace.Try(
                [&] {
                    return fields(operation == 0 ? p *= itself : operation == 1 ? p += itself : p /= itself);
                });
            inPlace.Add(fields(p));
        }
    }
}

} // namespace

void RunPercentages()
{
    Run("percentages", Percentages);
}

} // namespace digest
