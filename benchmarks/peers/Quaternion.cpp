#include <cmath>

#include <Eigen/Dense>
#include <Imath/ImathMatrix.h>
#include <Imath/ImathMatrixAlgo.h>
#include <Imath/ImathQuat.h>

#include "QuaternionRows.h"
#include "Topics.h"

namespace bench::peers
{

namespace
{

template <typename T>
struct EigenOperations
{
    static constexpr char const* NAME = "Eigen";

    using Quaternion = Eigen::Quaternion<T>;
    using Matrix = Eigen::Matrix<T, 3, 3>;
    using Vector = Eigen::Matrix<T, 3, 1>;

    static Quaternion makeQuaternion(double const* q) { return Quaternion(T(q[3]), T(q[0]), T(q[1]), T(q[2])); }
    static Matrix makeMatrix(double const* m)
    {
        Matrix matrix;
        for (int i = 0; i < 9; ++i)
            matrix(i / 3, i % 3) = static_cast<T>(m[i / 3 * 4 + i % 3]);
        return matrix;
    }
    static Vector makeVector(double const* v) { return Vector(T(v[0]), T(v[1]), T(v[2])); }

    static constexpr auto product = [](Quaternion const& a, Quaternion const& b) -> Quaternion { return a * b; };
    static constexpr auto rotated = [](Quaternion const& q, Vector const& v) -> Vector { return q * v; };
    static constexpr auto normalised = [](Quaternion const& q) -> Quaternion { return q.normalized(); };
    static constexpr auto inverse = [](Quaternion const& q) -> Quaternion { return q.inverse(); };
    static constexpr auto toMatrix = [](Quaternion const& q) -> Matrix { return q.toRotationMatrix(); };
    static constexpr auto fromMatrix = [](Matrix const& m) { return Quaternion(m); };
    static constexpr auto fromAxis = [](Vector const& axis, T angle)
    { return Quaternion(Eigen::AngleAxis<T>(angle, axis)); };
    static constexpr auto between = [](Vector const& a, Vector const& b) -> Quaternion
    { return Quaternion::FromTwoVectors(a, b); };
    static constexpr auto slerp = [](Quaternion const& a, Quaternion const& b, T t) -> Quaternion
    { return a.slerp(t, b); };
    static constexpr auto nlerp = [](Quaternion const& a, Quaternion const& b, T t) -> Quaternion
    {
        T const share = a.dot(b) < 0 ? -t : t;
        return Quaternion(a.coeffs() * (1 - t) + b.coeffs() * share).normalized();
    };

    static void append(std::vector<double>& numbers, Quaternion const& q)
    {
        numbers.insert(numbers.end(), {q.x(), q.y(), q.z(), q.w()});
    }
    static void append(std::vector<double>& numbers, Vector const& v)
    {
        numbers.insert(numbers.end(), {v[0], v[1], v[2]});
    }
    static void append(std::vector<double>& numbers, Matrix const& m)
    {
        for (int i = 0; i < 9; ++i)
            numbers.push_back(m(i / 3, i % 3));
    }
};

/// Imath multiplies rows from the left: every matrix is the transpose of ours.
template <typename T>
struct ImathOperations
{
    static constexpr char const* NAME = "Imath";

    using Quaternion = Imath::Quat<T>;
    using Matrix = Imath::Matrix44<T>;
    using Vector = Imath::Vec3<T>;

    static Quaternion makeQuaternion(double const* q) { return Quaternion(T(q[3]), T(q[0]), T(q[1]), T(q[2])); }
    static Matrix makeMatrix(double const* m)
    {
        Matrix matrix;
        for (int i = 0; i < 16; ++i)
            matrix[i % 4][i / 4] = static_cast<T>(m[i]);
        return matrix;
    }
    static Vector makeVector(double const* v) { return Vector(T(v[0]), T(v[1]), T(v[2])); }

    static constexpr auto product = [](Quaternion const& a, Quaternion const& b) { return a * b; };
    static constexpr auto rotated = [](Quaternion const& q, Vector const& v) { return q.rotateVector(v); };
    static constexpr auto normalised = [](Quaternion const& q) { return q.normalized(); };
    static constexpr auto inverse = [](Quaternion const& q) { return q.inverse(); };
    static constexpr auto toMatrix = [](Quaternion const& q) { return q.toMatrix44(); };
    static constexpr auto fromMatrix = [](Matrix const& m) { return Imath::extractQuat(m); };
    static constexpr auto fromAxis = [](Vector const& axis, T angle)
    {
        Quaternion q;
        q.setAxisAngle(axis, angle);
        return q;
    };
    static constexpr auto between = [](Vector const& a, Vector const& b)
    {
        Quaternion q;
        q.setRotation(a, b);
        return q;
    };
    static constexpr auto slerp = [](Quaternion const& a, Quaternion const& b, T t)
    { return Imath::slerpShortestArc(a, b, t); };
    static constexpr auto nlerp = [](Quaternion const& a, Quaternion const& b, T t)
    {
        T const share = (a ^ b) < 0 ? -t : t;
        return (a * (1 - t) + b * share).normalized();
    };
    static constexpr auto exp = [](Quaternion const& q) { return q.exp(); };
    static constexpr auto log = [](Quaternion const& q) { return q.log(); };

    static void append(std::vector<double>& numbers, Quaternion const& q)
    {
        numbers.insert(numbers.end(), {q.v.x, q.v.y, q.v.z, q.r});
    }
    static void append(std::vector<double>& numbers, Vector const& v)
    {
        numbers.insert(numbers.end(), {v.x, v.y, v.z});
    }
    static void append(std::vector<double>& numbers, Matrix const& m)
    {
        for (int i = 0; i < 9; ++i)
            numbers.push_back(m[i % 3][i / 3]);
    }
};

/// What a program writes for itself, one number after the other.
template <typename T>
struct PlainOperations
{
    static constexpr char const* NAME = "plain C++";

    struct Quaternion
    {
        T x, y, z, w;
    };
    struct Vector
    {
        T x, y, z;
    };
    struct Matrix
    {
        T m[16];
    };

    static Quaternion makeQuaternion(double const* q) { return {T(q[0]), T(q[1]), T(q[2]), T(q[3])}; }
    static Matrix makeMatrix(double const* m)
    {
        Matrix matrix;
        for (int i = 0; i < 16; ++i)
            matrix.m[i] = static_cast<T>(m[i]);
        return matrix;
    }
    static Vector makeVector(double const* v) { return {T(v[0]), T(v[1]), T(v[2])}; }

    static T dot(Quaternion const& a, Quaternion const& b) { return a.x * b.x + a.y * b.y + a.z * b.z + a.w * b.w; }
    static Quaternion scaled(Quaternion const& q, T s) { return {q.x * s, q.y * s, q.z * s, q.w * s}; }
    static Vector cross(Vector const& a, Vector const& b)
    {
        return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
    }
    static Quaternion mixed(Quaternion const& a, T s, Quaternion const& b, T t)
    {
        return {a.x * s + b.x * t, a.y * s + b.y * t, a.z * s + b.z * t, a.w * s + b.w * t};
    }

    static constexpr auto product = [](Quaternion const& a, Quaternion const& b)
    {
        return Quaternion{a.w * b.x + a.x * b.w + a.y * b.z - a.z * b.y, a.w * b.y + a.y * b.w + a.z * b.x - a.x * b.z,
                          a.w * b.z + a.z * b.w + a.x * b.y - a.y * b.x, a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z};
    };
    static constexpr auto rotated = [](Quaternion const& q, Vector const& v)
    {
        Vector const u{q.x, q.y, q.z};
        Vector const c = cross(u, v);
        Vector const t{c.x + c.x, c.y + c.y, c.z + c.z};
        Vector const d = cross(u, t);
        return Vector{v.x + q.w * t.x + d.x, v.y + q.w * t.y + d.y, v.z + q.w * t.z + d.z};
    };
    static constexpr auto normalised = [](Quaternion const& q) { return scaled(q, 1 / std::sqrt(dot(q, q))); };
    static constexpr auto inverse = [](Quaternion const& q)
    {
        T const s = 1 / dot(q, q);
        return Quaternion{-q.x * s, -q.y * s, -q.z * s, q.w * s};
    };
    static constexpr auto toMatrix = [](Quaternion const& q)
    {
        T const x = q.x + q.x, y = q.y + q.y, z = q.z + q.z;
        T const xx = q.x * x, xy = q.x * y, xz = q.x * z, yy = q.y * y, yz = q.y * z, zz = q.z * z;
        T const wx = q.w * x, wy = q.w * y, wz = q.w * z;
        return Matrix{{1 - (yy + zz), xy - wz, xz + wy, 0, xy + wz, 1 - (xx + zz), yz - wx, 0, xz - wy, yz + wx,
                       1 - (xx + yy), 0, 0, 0, 0, 1}};
    };
    static constexpr auto fromMatrix = [](Matrix const& matrix)
    {
        T const* const m = matrix.m;
        T const trace = m[0] + m[5] + m[10];
        if (trace > 0)
        {
            T const s = std::sqrt(trace + 1);
            T const q = T(0.5) / s;
            return Quaternion{(m[9] - m[6]) * q, (m[2] - m[8]) * q, (m[4] - m[1]) * q, T(0.5) * s};
        }
        int const i = m[0] >= m[5] ? (m[0] >= m[10] ? 0 : 2) : (m[5] >= m[10] ? 1 : 2);
        int const j = (i + 1) % 3, k = (j + 1) % 3;
        T const s = std::sqrt(m[5 * i] - m[5 * j] - m[5 * k] + 1);
        T const q = T(0.5) / s;
        T v[3];
        v[i] = T(0.5) * s;
        v[j] = (m[4 * j + i] + m[4 * i + j]) * q;
        v[k] = (m[4 * k + i] + m[4 * i + k]) * q;
        return Quaternion{v[0], v[1], v[2], (m[4 * k + j] - m[4 * j + k]) * q};
    };
    static constexpr auto fromAxis = [](Vector const& axis, T angle)
    {
        T const s = std::sin(angle / 2) / std::sqrt(axis.x * axis.x + axis.y * axis.y + axis.z * axis.z);
        return Quaternion{axis.x * s, axis.y * s, axis.z * s, std::cos(angle / 2)};
    };
    static constexpr auto between = [](Vector const& a, Vector const& b)
    {
        T const squares = (a.x * a.x + a.y * a.y + a.z * a.z) * (b.x * b.x + b.y * b.y + b.z * b.z);
        T const lengths = std::sqrt(squares);
        T const w = lengths + (a.x * b.x + a.y * b.y + a.z * b.z);
        if (w < lengths * T(1e-6)) // opposite: any axis that is perpendicular
            return normalised(a.x * a.x > a.z * a.z ? Quaternion{-a.y, a.x, 0, 0} : Quaternion{0, -a.z, a.y, 0});
        Vector const c = cross(a, b);
        return normalised(Quaternion{c.x, c.y, c.z, w});
    };
    static constexpr auto slerp = [](Quaternion const& a, Quaternion const& b, T t)
    {
        T const cosine = dot(a, b);
        T const sign = cosine < 0 ? T(-1) : T(1);
        if (cosine * sign > T(0.9999))
            return normalised(mixed(a, 1 - t, b, sign * t));
        T const angle = std::acos(cosine * sign);
        T const q = 1 / std::sin(angle);
        return mixed(a, std::sin((1 - t) * angle) * q, b, sign * std::sin(t * angle) * q);
    };
    static constexpr auto nlerp = [](Quaternion const& a, Quaternion const& b, T t)
    { return normalised(mixed(a, 1 - t, b, dot(a, b) < 0 ? -t : t)); };

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
                numbers.push_back(m.m[i]);
    }
};

} // namespace

void AddQuaternion()
{
    AddQuaternionRows<float, EigenOperations<float>>();
    AddQuaternionRows<double, EigenOperations<double>>();
    AddQuaternionRows<float, ImathOperations<float>>();
    AddQuaternionRows<double, ImathOperations<double>>();
    AddQuaternionRows<float, PlainOperations<float>>();
    AddQuaternionRows<double, PlainOperations<double>>();
}

} // namespace bench::peers
