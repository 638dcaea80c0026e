#pragma once

// What Glm.cpp, which is compiled twice, has to say to the rows of ComponentwiseRows.h and DirectionRows.h: included
// behind GLM itself.

#include <vector>

#include <glm/glm.hpp>
#include <glm/gtx/component_wise.hpp>
#include <glm/gtx/orthonormalize.hpp>
#include <glm/gtx/perpendicular.hpp>
#include <glm/gtx/projection.hpp>

#include "ComponentwiseRows.h"
#include "DirectionRows.h"

namespace bench::BENCH_GLM
{

template <typename T>
struct VectorOperations
{
    static constexpr char const* NAME = LIBRARY;

    using Vector = glm::vec<3, T>;
    using Axes = glm::mat<3, 3, T>;

    static Vector makeVector(double const* v) { return Vector(T(v[0]), T(v[1]), T(v[2])); }
    static void append(std::vector<double>& numbers, double number) { numbers.push_back(number); }
    static void append(std::vector<double>& numbers, Vector const& v)
    {
        numbers.insert(numbers.end(), {v.x, v.y, v.z});
    }
    static void append(std::vector<double>& numbers, Axes const& axes)
    {
        for (int i = 0; i < 3; ++i)
            append(numbers, Vector(axes[i]));
    }

    static Vector min(Vector const& a, Vector const& b) { return glm::min(a, b); }
    static Vector abs(Vector const& v) { return glm::abs(v); }
    static Vector clamp(Vector const& v) { return glm::clamp(v, T(-1), T(1)); }
    static Vector lerp(Vector const& a, Vector const& b, T t) { return glm::mix(a, b, t); }
    static Vector floor(Vector const& v) { return glm::floor(v); }
    static Vector ceil(Vector const& v) { return glm::ceil(v); }
    static T minComponent(Vector const& v) { return glm::compMin(v); }

    static T distance(Vector const& a, Vector const& b) { return glm::distance(a, b); }
    static Vector reflect(Vector const& v, Vector const& n) { return glm::reflect(v, n); }
    static Vector refract(Vector const& v, Vector const& n) { return glm::refract(v, n, T(REFRACTION)); }
    static Vector faceForward(Vector const& v, Vector const& w) { return glm::faceforward(-v, w, v); }
    static Vector project(Vector const& v, Vector const& w) { return glm::proj(v, w); }
    static Vector reject(Vector const& v, Vector const& w) { return glm::perp(v, w); }
    static Axes orthonormal(Vector const& a, Vector const& b, Vector const& c)
    {
        return glm::orthonormalize(Axes(a, b, c));
    }
};

} // namespace bench::BENCH_GLM
