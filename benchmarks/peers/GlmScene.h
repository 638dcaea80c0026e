#pragma once

// What Glm.cpp, which is compiled twice, has to say to the rows of SceneRows.h: included behind GLM itself.

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <glm/glm.hpp>
#include <glm/gtc/matrix_access.hpp>
#include <glm/gtc/matrix_inverse.hpp>
#include <glm/gtx/component_wise.hpp>

#include "SceneRows.h"

namespace bench::BENCH_GLM
{

/// GLM has no boxes and planes: they are vectors of its own.
template <typename T>
struct SceneOperations
{
    static constexpr char const* NAME = LIBRARY;

    using Matrix = glm::mat<4, 4, T>;
    using Affine = Matrix;
    using Vector = glm::vec<3, T>;
    using Plane = glm::vec<4, T>;
    struct Box
    {
        Vector lower, upper;
    };
    using View = std::array<Plane, 6>;

    static Matrix makeMatrix(double const* m)
    {
        Matrix matrix;
        for (int i = 0; i < 16; ++i)
            matrix[i % 4][i / 4] = static_cast<T>(m[i]);
        return matrix;
    }
    static Affine makeAffine(double const* m) { return makeMatrix(m); }
    static Vector makeVector(double const* v) { return Vector(T(v[0]), T(v[1]), T(v[2])); }
    static Box makeBox(double const* b) { return {makeVector(b), makeVector(b + 3)}; }

    static Matrix chain(Matrix const& a, Matrix const& b, Matrix const& c, Matrix const& d) { return a * b * c * d; }

    static Matrix product(Matrix const& a, Matrix const& b) { return a * b; }
    static Matrix inverse(Matrix const& m) { return glm::inverse(m); }
    static View view(Matrix const& combined)
    {
        Matrix const rows = glm::transpose(combined);
        View planes{rows[3] + rows[0], rows[3] - rows[0], rows[3] + rows[1],
                    rows[3] - rows[1], rows[3] + rows[2], rows[3] - rows[2]};
        for (Plane& plane : planes)
            plane *= glm::inversesqrt(glm::dot(Vector(plane), Vector(plane)));
        return planes;
    }

    static Affine composed(Affine const& parent, Affine const& local) { return parent * local; }
    static Affine inverted(Affine const& m) { return glm::affineInverse(m); }
    static Box moved(Box const& box, Affine const& m)
    {
        Vector const middle = (box.lower + box.upper) * T(0.5);
        Vector const half = (box.upper - box.lower) * T(0.5);
        Vector const centre(m * Plane(middle, T(1)));
        Vector const reach =
            glm::abs(Vector(m[0])) * half.x + glm::abs(Vector(m[1])) * half.y + glm::abs(Vector(m[2])) * half.z;
        return {centre - reach, centre + reach};
    }
    static View mainView() { return view(makeMatrix(MainView().projection.data())); }
    static std::size_t cull(View const& view, std::vector<Box> const& boxes, std::uint32_t* visible)
    {
        return ListVisible(boxes, visible,
                           [&](Box const& box)
                           {
                               Vector const centre = (box.lower + box.upper) * T(0.5);
                               Vector const half = (box.upper - box.lower) * T(0.5);
                               for (Plane const& plane : view)
                               {
                                   Vector const normal(plane);
                                   if (glm::dot(normal, centre) + plane.w + glm::dot(glm::abs(normal), half) < 0)
                                       return false;
                               }
                               return true;
                           });
    }

    static Vector skinned(Affine const* bones, Influences<T> const& influences, Vector const& point)
    {
        glm::vec<4, T> const homogeneous(point, T(1));
        glm::vec<4, T> sum(0);
        for (std::size_t i = 0; i < INFLUENCE_COUNT; ++i)
            sum += (bones[influences.bones[i]] * homogeneous) * influences.weights[i];
        return Vector(sum);
    }

    static Vector normalised(Vector const& v) { return glm::normalize(v); }
    static T enter(Vector const& origin, Vector const& direction, Box const& box)
    {
        Vector const reciprocal = T(1) / direction;
        Vector const low = (box.lower - origin) * reciprocal;
        Vector const high = (box.upper - origin) * reciprocal;
        T const tNear = glm::max(T(0), glm::compMax(glm::min(low, high)));
        return tNear <= glm::compMin(glm::max(low, high)) ? tNear : T(-1);
    }

    static void append(std::vector<double>& numbers, Matrix const& m)
    {
        for (int i = 0; i < 16; ++i)
            numbers.push_back(static_cast<double>(m[i % 4][i / 4]));
    }
    static void append(std::vector<double>& numbers, Vector const& v)
    {
        for (int i = 0; i < 3; ++i)
            numbers.push_back(static_cast<double>(v[i]));
    }
    static void append(std::vector<double>& numbers, Box const& box)
    {
        append(numbers, box.lower);
        append(numbers, box.upper);
    }
    static void append(std::vector<double>& numbers, View const& view)
    {
        for (Plane const& plane : view)
            for (int i = 0; i < 4; ++i)
                numbers.push_back(static_cast<double>(plane[i]));
    }
};

} // namespace bench::BENCH_GLM
