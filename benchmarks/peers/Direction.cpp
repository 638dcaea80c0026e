#include <cmath>

#include <Eigen/Dense>
#include <Imath/ImathVec.h>
#include <Imath/ImathVecAlgo.h>

#include "DirectionRows.h"
#include "Topics.h"

namespace bench::peers
{

namespace
{

/// Eigen names none of these but the norm: its users write the formulas.
template <typename T>
struct EigenOperations
{
    static constexpr char const* NAME = "Eigen";

    using Vector = Eigen::Matrix<T, 3, 1>;

    static Vector makeVector(double const* v) { return Vector(T(v[0]), T(v[1]), T(v[2])); }
    static void append(std::vector<double>& numbers, double number) { numbers.push_back(number); }
    static void append(std::vector<double>& numbers, Vector const& v)
    {
        numbers.insert(numbers.end(), v.data(), v.data() + 3);
    }

    static T distance(Vector const& a, Vector const& b) { return (b - a).norm(); }
    static Vector reflect(Vector const& v, Vector const& n) { return v - n * (2 * v.dot(n)); }
    static Vector faceForward(Vector const& v, Vector const& w) { return v.dot(w) < 0 ? Vector(-v) : v; }
    static Vector project(Vector const& v, Vector const& w) { return w * (v.dot(w) / w.squaredNorm()); }
    static Vector reject(Vector const& v, Vector const& w) { return v - w * (v.dot(w) / w.squaredNorm()); }
};

/// Imath's reflection points the other way.
template <typename T>
struct ImathOperations
{
    static constexpr char const* NAME = "Imath";

    using Vector = Imath::Vec3<T>;

    static Vector makeVector(double const* v) { return Vector(T(v[0]), T(v[1]), T(v[2])); }
    static void append(std::vector<double>& numbers, double number) { numbers.push_back(number); }
    static void append(std::vector<double>& numbers, Vector const& v)
    {
        numbers.insert(numbers.end(), {v.x, v.y, v.z});
    }

    static T distance(Vector const& a, Vector const& b) { return (b - a).length(); }
    static Vector reflect(Vector const& v, Vector const& n) { return -Imath::reflect(v, n); }
    static Vector project(Vector const& v, Vector const& w) { return Imath::project(w, v); }
    static Vector reject(Vector const& v, Vector const& w) { return Imath::orthogonal(w, v); }
};

/// What a program without a library would have.
template <typename T>
struct PlainOperations
{
    static constexpr char const* NAME = "hand-written";

    struct Vector
    {
        T x, y, z;

        friend Vector operator+(Vector const& a, Vector const& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
        friend Vector operator-(Vector const& a, Vector const& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
        friend Vector operator*(Vector const& v, T s) { return {v.x * s, v.y * s, v.z * s}; }
    };
    struct Axes
    {
        Vector first, second, third;
    };

    static Vector makeVector(double const* v) { return {T(v[0]), T(v[1]), T(v[2])}; }
    static void append(std::vector<double>& numbers, double number) { numbers.push_back(number); }
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

    static T dot(Vector const& a, Vector const& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
    static T length(Vector const& v) { return std::sqrt(dot(v, v)); }
    static Vector unit(Vector const& v) { return v * (1 / length(v)); }

    static T distance(Vector const& a, Vector const& b) { return length(b - a); }
    static T angle(Vector const& a, Vector const& b)
    {
        Vector const u = unit(a), v = unit(b);
        return 2 * std::atan2(length(u - v), length(u + v));
    }
    static Vector reflect(Vector const& v, Vector const& n) { return v - n * (2 * dot(v, n)); }
    static Vector refract(Vector const& v, Vector const& n)
    {
        T const ratio = T(REFRACTION), cosine = dot(v, n);
        T const square = 1 - ratio * ratio * (1 - cosine * cosine);
        return square < 0 ? Vector{0, 0, 0} : v * ratio - n * (ratio * cosine + std::sqrt(square));
    }
    static Vector faceForward(Vector const& v, Vector const& w) { return dot(v, w) < 0 ? v * T(-1) : v; }
    static Vector project(Vector const& v, Vector const& w) { return w * (dot(v, w) / dot(w, w)); }
    static Vector reject(Vector const& v, Vector const& w) { return v - project(v, w); }
    /// The process of Gram and Schmidt, once and without a test.
    static Axes orthonormal(Vector const& a, Vector const& b, Vector const& c)
    {
        Vector const first = unit(a), second = unit(b - first * dot(first, b));
        return {first, second, unit(c - first * dot(first, c) - second * dot(second, c))};
    }
    /// As Duff and others print it.
    static Axes basis(Vector const& n)
    {
        T const sign = std::copysign(T(1), n.z), a = -1 / (sign + n.z), b = n.x * n.y * a;
        return {{1 + sign * n.x * n.x * a, sign * b, -sign * n.x}, {b, sign + n.y * n.y * a, -n.y}, n};
    }
};

template <typename T>
void AddAll()
{
    AddDirectionRows<T, EigenOperations<T>>();
    AddDirectionRows<T, ImathOperations<T>>();
    AddDirectionRows<T, PlainOperations<T>>();
}

} // namespace

void AddDirection()
{
    AddAll<float>();
    AddAll<double>();
}

} // namespace bench::peers
