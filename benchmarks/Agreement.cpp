#include "Agreement.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <map>
#include <string_view>
#include <utility>

namespace bench
{

namespace
{

/// The numbers of a row's libraries, by the row's name without a library.
using Rows = std::map<std::string, std::map<std::string, std::function<std::vector<double>()>>>;

Rows& AllRows()
{
    static Rows rows;
    return rows;
}

/// How far apart two libraries may be, as a part of the number or of 1, whichever is larger: the inverse of a view and
/// projection loses four digits.
double GetTolerance(std::string_view row)
{
    return row.ends_with("/float") ? 1e-3 : 1e-10;
}

bool IsNear(double a, double b, double tolerance)
{
    return std::abs(a - b) <= tolerance * std::max({1.0, std::abs(a), std::abs(b)});
}

/// Whether two libraries agree on all numbers of a row; the first that differs goes to the error stream.
bool Agree(std::string const& row, std::string const& library, std::vector<double> const& ours,
           std::vector<double> const& theirs)
{
    if (ours.empty() || ours.size() != theirs.size())
    {
        std::fprintf(stderr, "benchmarks: %s/%s has %zu numbers instead of %zu\n", row.c_str(), library.c_str(),
                     theirs.size(), ours.size());
        return false;
    }
    double const tolerance = GetTolerance(row);
    for (std::size_t i = 0; i < ours.size(); ++i)
    {
        if (IsNear(ours[i], theirs[i], tolerance))
            continue;
        std::fprintf(stderr, "benchmarks: %s/%s: number %zu is %.9g instead of %.9g\n", row.c_str(), library.c_str(), i,
                     theirs[i], ours[i]);
        return false;
    }
    return true;
}

} // namespace

void AddNumbers(std::string const& name, std::function<std::vector<double>()> numbers)
{
    std::size_t const slash = name.rfind('/');
    AllRows()[name.substr(0, slash)][name.substr(slash + 1)] = std::move(numbers);
}

bool DoNumbersAgree()
{
    bool agree = true;
    for (auto const& [row, libraries] : AllRows())
    {
        auto const own = libraries.find("BvBaseUtils");
        if (own == libraries.end() || libraries.size() < 2)
        {
            std::fprintf(stderr, "benchmarks: %s has nobody to agree with\n", row.c_str());
            agree = false;
            continue;
        }
        std::vector<double> const ours = own->second();
        for (auto const& [library, numbers] : libraries)
            agree = Agree(row, library, ours, numbers()) && agree;
    }
    return agree;
}

} // namespace bench
