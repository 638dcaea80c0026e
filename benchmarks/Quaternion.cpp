#include <bv/maths/tMatrix4.h>
#include <bv/maths/tQuaternion.h>
#include <bv/maths/tVector3.h>

#include "QuaternionRows.h"
#include "Topics.h"

namespace bench
{

namespace
{

template <typename T>
struct Operations
{
    static constexpr char const* NAME = "BvBaseUtils";

    using Quaternion = bv::maths::tQuaternion<T>;
    using Matrix = bv::maths::tMatrix4<T>;
    using Vector = bv::maths::tVector3<T>;

    static Quaternion makeQuaternion(double const* q) { return Quaternion(T(q[0]), T(q[1]), T(q[2]), T(q[3])); }
    static Matrix makeMatrix(double const* m)
    {
        T elements[16];
        for (std::size_t i = 0; i < 16; ++i)
            elements[i] = static_cast<T>(m[i]);
        return Matrix(elements);
    }
    static Vector makeVector(double const* v) { return Vector(T(v[0]), T(v[1]), T(v[2])); }

    static constexpr auto product = [](Quaternion const& a, Quaternion const& b) { return a * b; };
    static constexpr auto rotated = [](Quaternion const& q, Vector const& v) { return q.Rotate(v); };
    static constexpr auto normalised = [](Quaternion const& q) { return q.Normalised(); };
    static constexpr auto inverse = [](Quaternion const& q) { return q.Inverted(); };
    static constexpr auto toMatrix = [](Quaternion const& q) { return q.GetMatrix(); };
    static constexpr auto fromMatrix = [](Matrix const& m) { return Quaternion(m); };
    static constexpr auto fromAxis = [](Vector const& axis, T angle) { return Quaternion::RotateAxis(axis, angle); };
    static constexpr auto between = [](Vector const& a, Vector const& b) { return Quaternion::RotateBetween(a, b); };
    static constexpr auto slerp = [](Quaternion const& a, Quaternion const& b, T t) { return Slerp(a, b, t); };
    static constexpr auto nlerp = [](Quaternion const& a, Quaternion const& b, T t) { return Nlerp(a, b, t); };
    static constexpr auto exp = [](Quaternion const& q) { return Exp(q); };
    static constexpr auto log = [](Quaternion const& q) { return Log(q); };

    static void append(std::vector<double>& numbers, Quaternion const& q)
    {
        numbers.insert(numbers.end(), {q.x, q.y, q.z, q.w});
    }
    static void append(std::vector<double>& numbers, Vector const& v)
    {
        numbers.insert(numbers.end(), {v.x, v.y, v.z});
    }
    static void append(std::vector<double>& numbers, Matrix const& m)
    {
        for (std::size_t i = 0; i < 12; ++i)
            if (i % 4 != 3)
                numbers.push_back(m[i]);
    }
};

} // namespace

void AddQuaternion()
{
    AddQuaternionRows<float, Operations<float>>();
    AddQuaternionRows<double, Operations<double>>();
}

} // namespace bench
