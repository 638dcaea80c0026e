#include <bv/maths/Direction.h>

#include "DirectionRows.h"
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
    struct Axes
    {
        Vector first, second, third;
    };

    static Vector makeVector(double const* v) { return Vector(T(v[0]), T(v[1]), T(v[2])); }
    static void append(std::vector<double>& numbers, T number) { numbers.push_back(number); }
    static void append(std::vector<double>& numbers, Vector const& v)
    {
        numbers.insert(numbers.end(), {v.x, v.y, v.z});
    }
    static void append(std::vector<double>& numbers, Axes const& axes)
    {
        append(numbers, axes.first);
        append(numbers, axes.second);
        append(numbers, axes.third);
    }

    static T distance(Vector const& a, Vector const& b) { return bv::maths::Distance(a, b); }
    static T angle(Vector const& a, Vector const& b) { return bv::maths::GetAngle(a, b); }
    static Vector reflect(Vector const& v, Vector const& n) { return bv::maths::Reflect(v, n); }
    static Vector refract(Vector const& v, Vector const& n)
    {
        return bv::maths::Refract(v, n, T(REFRACTION)).value_or(Vector());
    }
    static Vector faceForward(Vector const& v, Vector const& w) { return bv::maths::FaceForward(v, w); }
    static Vector project(Vector const& v, Vector const& w) { return bv::maths::Project(v, w); }
    static Vector reject(Vector const& v, Vector const& w) { return bv::maths::Reject(v, w); }
    static Axes orthonormal(Vector const& a, Vector const& b, Vector const& c)
    {
        Axes axes{a, b, c};
        bv::maths::Orthonormalise(axes.first, axes.second, axes.third);
        return axes;
    }
    static Axes basis(Vector const& n)
    {
        Axes axes{{}, {}, n};
        bv::maths::EvaluateOrthonormalBasis(n, axes.first, axes.second);
        return axes;
    }
};

} // namespace

void AddDirection()
{
    AddDirectionRows<float, Operations<float>>();
    AddDirectionRows<double, Operations<double>>();
}

} // namespace bench
