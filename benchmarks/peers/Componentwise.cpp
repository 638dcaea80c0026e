#include <algorithm>
#include <cmath>

#include <Eigen/Dense>
#include <Imath/ImathBoxAlgo.h>
#include <Imath/ImathFun.h>
#include <Imath/ImathVec.h>

#include "ComponentwiseRows.h"
#include "Topics.h"

namespace bench::peers
{

namespace
{

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

    static Vector min(Vector const& a, Vector const& b) { return a.cwiseMin(b); }
    static Vector abs(Vector const& v) { return v.cwiseAbs(); }
    static Vector clamp(Vector const& v) { return v.cwiseMax(T(-1)).cwiseMin(T(1)); }
    static Vector lerp(Vector const& a, Vector const& b, T t) { return a * (1 - t) + b * t; }
    static Vector floor(Vector const& v) { return v.array().floor(); }
    static Vector ceil(Vector const& v) { return v.array().ceil(); }
    static T minComponent(Vector const& v) { return v.minCoeff(); }
    static unsigned char maxAxis(Vector const& v)
    {
        Eigen::Index index;
        v.maxCoeff(&index);
        return static_cast<unsigned char>(index);
    }
};

/// Imath has these alone for whole vectors.
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

    static Vector clamp(Vector const& v) { return Imath::clip(v, Imath::Box<Vector>(Vector(-1), Vector(1))); }
    static Vector lerp(Vector const& a, Vector const& b, T t) { return Imath::lerp(a, b, t); }
};

/// What a program without a library would have.
template <typename T>
struct PlainOperations
{
    static constexpr char const* NAME = "hand-written";

    struct Vector
    {
        T x, y, z;
    };

    static Vector makeVector(double const* v) { return {T(v[0]), T(v[1]), T(v[2])}; }
    static void append(std::vector<double>& numbers, double number) { numbers.push_back(number); }
    static void append(std::vector<double>& numbers, Vector const& v)
    {
        numbers.insert(numbers.end(), {v.x, v.y, v.z});
    }

    static Vector min(Vector const& a, Vector const& b)
    {
        return {std::min(a.x, b.x), std::min(a.y, b.y), std::min(a.z, b.z)};
    }
    static Vector abs(Vector const& v) { return {std::abs(v.x), std::abs(v.y), std::abs(v.z)}; }
    static Vector clamp(Vector const& v)
    {
        return {std::clamp(v.x, T(-1), T(1)), std::clamp(v.y, T(-1), T(1)), std::clamp(v.z, T(-1), T(1))};
    }
    static Vector lerp(Vector const& a, Vector const& b, T t)
    {
        return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t, a.z + (b.z - a.z) * t};
    }
    static Vector floor(Vector const& v) { return {std::floor(v.x), std::floor(v.y), std::floor(v.z)}; }
    static Vector ceil(Vector const& v) { return {std::ceil(v.x), std::ceil(v.y), std::ceil(v.z)}; }
    static T minComponent(Vector const& v) { return std::min(std::min(v.x, v.y), v.z); }
    static unsigned char maxAxis(Vector const& v) { return v.x >= v.y ? (v.x >= v.z ? 0 : 2) : v.y >= v.z ? 1 : 2; }
};

template <typename T>
void AddAll()
{
    AddComponentwiseRows<T, EigenOperations<T>>();
    AddComponentwiseRows<T, ImathOperations<T>>();
    AddComponentwiseRows<T, PlainOperations<T>>();
}

} // namespace

void AddComponentwise()
{
    AddAll<float>();
    AddAll<double>();
}

} // namespace bench::peers
