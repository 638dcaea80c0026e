#include <bv/maths/Componentwise.h>

#include "ComponentwiseRows.h"
#include "Topics.h"

namespace bench
{

namespace
{

template <typename T>
struct Operations
{
    static constexpr char const* NAME = "BvBaseUtils";

    using Vector = bv::maths::tVector3<T>;

    static Vector makeVector(double const* v) { return Vector(T(v[0]), T(v[1]), T(v[2])); }
    static void append(std::vector<double>& numbers, T number) { numbers.push_back(number); }
    static void append(std::vector<double>& numbers, unsigned char axis) { numbers.push_back(axis); }
    static void append(std::vector<double>& numbers, Vector const& v)
    {
        numbers.insert(numbers.end(), {v.x, v.y, v.z});
    }

    static Vector min(Vector const& a, Vector const& b) { return bv::maths::Min(a, b); }
    static Vector abs(Vector const& v) { return bv::maths::Abs(v); }
    static Vector clamp(Vector const& v) { return bv::maths::Clamp(v, -1, 1); }
    static Vector lerp(Vector const& a, Vector const& b, T t) { return bv::maths::Lerp(a, b, t); }
    static Vector floor(Vector const& v) { return bv::maths::Floor(v); }
    static Vector ceil(Vector const& v) { return bv::maths::Ceil(v); }
    static T minComponent(Vector const& v) { return bv::maths::GetMinComponent(v); }
    static unsigned char maxAxis(Vector const& v) { return bv::maths::GetMaxAxis(v); }
};

} // namespace

void AddComponentwise()
{
    AddComponentwiseRows<float, Operations<float>>();
    AddComponentwiseRows<double, Operations<double>>();
}

} // namespace bench
