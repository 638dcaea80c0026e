#pragma once

// What Glm.cpp, which is compiled twice, has to say to the rows of QuaternionRows.h: included behind GLM itself.

#include <vector>

#include <glm/glm.hpp>
#include <glm/gtc/quaternion.hpp>
#include <glm/gtx/quaternion.hpp>

#include "QuaternionRows.h"

namespace bench::BENCH_GLM
{

template <typename T>
struct QuaternionOperations
{
    static constexpr char const* NAME = LIBRARY;

    using Quaternion = glm::qua<T>;
    using Matrix = glm::mat<4, 4, T>;
    using Vector = glm::vec<3, T>;

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
    static constexpr auto rotated = [](Quaternion const& q, Vector const& v) { return q * v; };
    static constexpr auto normalised = [](Quaternion const& q) { return glm::normalize(q); };
    static constexpr auto inverse = [](Quaternion const& q) { return glm::inverse(q); };
    static constexpr auto toMatrix = [](Quaternion const& q) { return glm::mat4_cast(q); };
    static constexpr auto fromMatrix = [](Matrix const& m) { return glm::quat_cast(m); };
    static constexpr auto fromAxis = [](Vector const& axis, T angle) { return glm::angleAxis(angle, axis); };
    static constexpr auto between = [](Vector const& a, Vector const& b) { return glm::rotation(a, b); };
    static constexpr auto slerp = [](Quaternion const& a, Quaternion const& b, T t) { return glm::slerp(a, b, t); };
    static constexpr auto nlerp = [](Quaternion const& a, Quaternion const& b, T t)
    { return glm::normalize(a * (1 - t) + b * (glm::dot(a, b) < 0 ? -t : t)); };
    static constexpr auto exp = [](Quaternion const& q) { return glm::exp(q); };
    static constexpr auto log = [](Quaternion const& q) { return glm::log(q); };

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
        for (int i = 0; i < 9; ++i)
            numbers.push_back(m[i % 3][i / 3]);
    }
};

} // namespace bench::BENCH_GLM
