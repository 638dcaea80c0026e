#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "SamplingData.h"
#include "Topics.h"

// The maps and the sequences as they are published and commonly written. No library of vectors has them.

namespace bench::peers
{

namespace
{

template <typename T>
struct Two
{
    T x, y;
};

template <typename T>
struct Three
{
    T x, y, z;
};

template <typename T>
constexpr T PI = static_cast<T>(3.14159265358979323846);

template <typename T>
Two<T> Disc(Two<T> const& square)
{
    T const a = 2 * square.x - 1;
    T const b = 2 * square.y - 1;
    if (a == 0 && b == 0)
        return {0, 0};
    T radius, angle;
    if (std::abs(a) > std::abs(b))
    {
        radius = a;
        angle = PI<T> / 4 * (b / a);
    }
    else
    {
        radius = b;
        angle = PI<T> / 2 - PI<T> / 4 * (a / b);
    }
    return {radius * std::cos(angle), radius * std::sin(angle)};
}

template <typename T>
Two<T> DiscInverse(Two<T> const& point)
{
    T const radius = std::sqrt(point.x * point.x + point.y * point.y);
    T angle = std::atan2(point.y, point.x);
    if (angle < -PI<T> / 4)
        angle += 2 * PI<T>;
    T a, b;
    if (angle < PI<T> / 4)
    {
        a = radius;
        b = angle * a / (PI<T> / 4);
    }
    else if (angle < 3 * PI<T> / 4)
    {
        b = radius;
        a = -(angle - PI<T> / 2) * b / (PI<T> / 4);
    }
    else if (angle < 5 * PI<T> / 4)
    {
        a = -radius;
        b = (angle - PI<T>)*a / (PI<T> / 4);
    }
    else
    {
        b = -radius;
        a = -(angle - 3 * PI<T> / 2) * b / (PI<T> / 4);
    }
    return {(a + 1) / 2, (b + 1) / 2};
}

template <typename T>
Three<T> Triangle(Two<T> const& square)
{
    T first, second;
    if (square.y > square.x)
    {
        first = square.x / 2;
        second = square.y - first;
    }
    else
    {
        second = square.y / 2;
        first = square.x - second;
    }
    return {first, second, 1 - first - second};
}

template <typename T>
Three<T> Sphere(Two<T> const& square)
{
    T const z = 1 - 2 * square.x;
    T const radius = std::sqrt(std::max(T{0}, 1 - z * z));
    T const angle = 2 * PI<T> * square.y;
    return {radius * std::cos(angle), radius * std::sin(angle), z};
}

template <typename T>
Two<T> SphereInverse(Three<T> const& direction)
{
    T const angle = std::atan2(direction.y, direction.x);
    return {(1 - direction.z) / 2, (angle < 0 ? angle + 2 * PI<T> : angle) / (2 * PI<T>)};
}

template <typename T>
Three<T> Cone(Two<T> const& square, T cosine)
{
    Two<T> const disc = Disc(square);
    T const height = (1 - cosine) * (disc.x * disc.x + disc.y * disc.y);
    T const scale = std::sqrt((1 - cosine) * (2 - height));
    return {disc.x * scale, disc.y * scale, 1 - height};
}

template <typename T>
Three<T> CosineHemisphere(Two<T> const& square)
{
    Two<T> const disc = Disc(square);
    return {disc.x, disc.y, std::sqrt(std::max(T{0}, 1 - disc.x * disc.x - disc.y * disc.y))};
}

template <typename T>
Three<T> Turn(Three<T> const& d, Three<T> const& n)
{
    T const sign = std::copysign(T{1}, n.z);
    T const a = -1 / (sign + n.z);
    T const b = n.x * n.y * a;
    Three<T> const s = {1 + sign * n.x * n.x * a, sign * b, -sign * n.x};
    Three<T> const t = {b, sign + n.y * n.y * a, -n.y};
    return {s.x * d.x + t.x * d.y + n.x * d.z, s.y * d.x + t.y * d.y + n.y * d.z, s.z * d.x + t.z * d.y + n.z * d.z};
}

template <typename T>
T ConeDensity(Three<T> const& d, Three<T> const& n, T cosine)
{
    return d.x * n.x + d.y * n.y + d.z * n.z < cosine ? T{0} : 1 / (2 * PI<T> * (1 - cosine));
}

template <typename T>
constexpr T BELOW_ONE = 1 - std::numeric_limits<T>::epsilon() / 2;

template <typename T>
T RadicalInverse(std::uint32_t index, std::uint32_t base)
{
    T const inverse = T{1} / static_cast<T>(base);
    T scale = 1;
    std::uint64_t reversed = 0;
    while (index != 0)
    {
        std::uint32_t const rest = index / base;
        reversed = reversed * base + (index - rest * base);
        scale *= inverse;
        index = rest;
    }
    return std::min(static_cast<T>(reversed) * scale, BELOW_ONE<T>);
}

constexpr std::uint32_t PRIMES[] = {2, 3, 5, 7, 11, 13, 17, 19, 23, 29, 31, 37, 41, 43, 47, 53};

template <typename T>
Two<T> R2(std::uint32_t index)
{
    double const x = 0.5 + index * 0.75487766624669276005;
    double const y = 0.5 + index * 0.56984029099805326591;
    return {static_cast<T>(x - std::floor(x)), static_cast<T>(y - std::floor(y))};
}

std::uint32_t ReverseBits(std::uint32_t bits)
{
    bits = bits << 16 | bits >> 16;
    bits = (bits & 0x00FF00FFU) << 8 | (bits & 0xFF00FF00U) >> 8;
    bits = (bits & 0x0F0F0F0FU) << 4 | (bits & 0xF0F0F0F0U) >> 4;
    bits = (bits & 0x33333333U) << 2 | (bits & 0xCCCCCCCCU) >> 2;
    return (bits & 0x55555555U) << 1 | (bits & 0xAAAAAAAAU) >> 1;
}

/// Kollig, Keller, "Efficient Multidimensional Sampling", 2002.
std::uint32_t SobolOfSecond(std::uint32_t index)
{
    std::uint32_t digits = 0;
    for (std::uint32_t direction = 0x80000000U; index != 0; index >>= 1, direction ^= direction >> 1)
        if ((index & 1) != 0)
            digits ^= direction;
    return digits;
}

/// Directions of the tenth dimension.
struct Directions
{
    std::uint32_t of[32];

    Directions()
    {
        // Degree 5, inner coefficients 0111, and the numbers 1, 1, 7, 11, 19.
        std::uint32_t const start[] = {1, 1, 7, 11, 19};
        for (int k = 0; k < 5; ++k)
            of[k] = start[k] << (31 - k);
        for (int k = 5; k < 32; ++k)
            of[k] = of[k - 5] ^ of[k - 5] >> 5 ^ of[k - 2] ^ of[k - 3] ^ of[k - 4];
    }
};

std::uint32_t SobolOfTenth(std::uint32_t index)
{
    static Directions const DIRECTIONS;
    std::uint32_t digits = 0;
    for (int k = 0; index != 0; index >>= 1, ++k)
        if ((index & 1) != 0)
            digits ^= DIRECTIONS.of[k];
    return digits;
}

std::uint32_t Mix(std::uint32_t bits)
{
    bits ^= bits >> 16;
    bits *= 0x85EBCA6BU;
    bits ^= bits >> 13;
    bits *= 0xC2B2AE35U;
    return bits ^ bits >> 16;
}

template <typename T>
T Fraction(std::uint32_t digits)
{
    return std::min(static_cast<T>(digits) * T(0x1p-32), BELOW_ONE<T>);
}

template <typename T>
T Scrambled(std::uint32_t digits, std::uint32_t dimension)
{
    std::uint32_t const seed = Mix(SCRAMBLE + dimension * 0x9E3779B9U);
    std::uint32_t bits = ReverseBits(digits) + seed;
    bits ^= bits * 0x6C50B47CU;
    bits ^= bits * 0xB82F1E52U;
    bits ^= bits * 0xC7AFE638U;
    bits ^= bits * 0x8D22F6E6U;
    bits = ReverseBits(bits);
    if constexpr (sizeof(T) == sizeof(float))
        return Fraction<T>(bits);
    else
        return static_cast<T>((std::uint64_t{bits} << 32 | Mix(bits ^ ~seed)) >> 11) * T(0x1p-53);
}

template <typename T>
void AddAll()
{
    constexpr char const* LIBRARY = "hand-written";
    auto const squares = Squares<Two<T>>();
    auto const normals = Normals<Three<T>>(63);
    auto const directions = Normals<Three<T>>(64);
    constexpr T COSINE = static_cast<T>(CONE);

    AddRow<T>(
        LIBRARY, "disc", [](Two<T> const& s) { return Disc(s); }, squares);
    AddRow<T>(
        LIBRARY, "disc, inverse", [](Two<T> const& p) { return DiscInverse(p); }, DiscPoints<Two<T>>());
    AddRow<T>(
        LIBRARY, "triangle", [](Two<T> const& s) { return Triangle(s); }, squares);
    AddRow<T>(
        LIBRARY, "sphere", [](Two<T> const& s) { return Sphere(s); }, squares);
    AddRow<T>(
        LIBRARY, "sphere, inverse", [](Three<T> const& d) { return SphereInverse(d); }, directions);
    AddRow<T>(
        LIBRARY, "hemisphere", [](Two<T> const& s) { return Cone(s, T{0}); }, squares);
    AddRow<T>(
        LIBRARY, "cosine hemisphere", [](Two<T> const& s) { return CosineHemisphere(s); }, squares);
    AddRow<T>(
        LIBRARY, "cosine hemisphere around a normal",
        [](Two<T> const& s, Three<T> const& n) { return Turn(CosineHemisphere(s), n); }, squares, normals);
    AddRow<T>(
        LIBRARY, "cone around an axis", [](Two<T> const& s, Three<T> const& n) { return Turn(Cone(s, COSINE), n); },
        squares, normals);
    AddRow<T>(
        LIBRARY, "density, cone around an axis",
        [](Three<T> const& d, Three<T> const& n) { return ConeDensity(d, n, COSINE); }, directions, normals);

    auto const indices = Indices();
    AddRow<T>(
        LIBRARY, "Halton, base 3", [](std::uint32_t i) { return RadicalInverse<T>(i, 3); }, indices);
    AddRow<T>(
        LIBRARY, "Halton, dimension 9", [](std::uint32_t i) { return RadicalInverse<T>(i, PRIMES[9]); }, indices);
    AddRow<T>(
        LIBRARY, "R2", [](std::uint32_t i) { return R2<T>(i); }, indices);
    AddRow<T>(
        LIBRARY, "Sobol",
        [](std::uint32_t i) {
            return Two<T>{Fraction<T>(ReverseBits(i)), Fraction<T>(SobolOfSecond(i))};
        },
        indices);
    AddRow<T>(
        LIBRARY, "Sobol, dimension 9", [](std::uint32_t i) { return Fraction<T>(SobolOfTenth(i)); }, indices);
    AddRow<T>(
        LIBRARY, "scrambled Sobol",
        [](std::uint32_t i) {
            return Two<T>{Scrambled<T>(ReverseBits(i), 0), Scrambled<T>(SobolOfSecond(i), 1)};
        },
        indices);
    AddRow<T>(
        LIBRARY, "scrambled Sobol, dimension 9", [](std::uint32_t i) { return Scrambled<T>(SobolOfTenth(i), 9); },
        indices);
}

} // namespace

void AddSampling()
{
    AddAll<float>();
    AddAll<double>();
}

} // namespace bench::peers
