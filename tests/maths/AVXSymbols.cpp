// Every operation of the library in code that is compiled for AVX, and nothing else: avx_symbols.py looks at what this
// file defines.

#include <cstddef>
#include <cstdint>
#include <istream>
#include <ostream>
#include <span>
#include <string>
#include <type_traits>
#include <utility>

#include "BvBaseUtils.h"

namespace symbols
{

using namespace bv;
using namespace bv::maths;

struct Streams
{
    std::istream& in;
    std::ostream& out;
};

template <typename Tuple, typename T>
bool UseTuple(Streams const& streams, Tuple const& a, Tuple& b, T const* values, std::size_t index)
{
    Tuple const read(values);
    b[index] = read[index] + a[index];
    b += (a + read) * values[0] - a / values[1];
    b -= a;
    b *= values[0];
    b /= values[1];
    if constexpr (std::is_signed_v<T>)
        b = -b;
    b.Deserialise(streams.in).get();
    a.Serialise(streams.out) << b;
    return a == b && a.GetHash32() == b.GetHash32() && a.GetHash8() == Tuple().GetHash8();
}

template <typename Vector, typename T>
bool UseVector(Streams const& streams, Vector const& a, Vector& b, T const* values, std::size_t index)
{
    Vector const read(values);
    b[index] = read[index] + a[index];
    b += -a + b - (T{2} * a) * b / T{3} / read;
    b -= a;
    b *= values[0];
    b *= a;
    b /= values[1];
    b /= a.Normalised() * values[2];
    b.Normalise();
    b.Deserialise(streams.in).get();
    a.Serialise(streams.out) << b;
    return a == b && a.Dot(b) + a.LengthSquared() > b.Length() && b.IsInfinite();
}

template <typename T>
void UseIntegerVectors(Streams const& streams, tVector2<T>& two, tVector3<T>& three)
{
    two.Serialise(streams.out) << two;
    three.Serialise(streams.out) << three;
    two.Deserialise(streams.in);
    three.Deserialise(streams.in);
}

unsigned int UseIntegers(unsigned int value)
{
    return IntLog2(value) + IntSqrt(value) + RoundUpToPO2(value) + RoundToNearestPO2(value);
}

__m128 UseReciprocals(__m128 const& value)
{
    return _mm_rsqrt_nr(_mm_rcp_nr(value));
}

void UseLocalAxes(tVector3<float> const& normal, tVector3<float>& first, tVector3<float>& second)
{
    EvaluateLocalAxes(normal, first, second);
}

float UseProcedural(RNGenerator& generator, tVector2<float> const& two, tVector3<float> const& three)
{
    RNGenerator other(generator.GetInteger());
    other = RNGenerator();
    other.SetSeed(1).GetFloat();
    std::pair<float, unsigned int> const pair = other.GetFloatAndInteger();
    return generator.GetVector2D().x + generator.GetVector3D().y + pair.first + Log2(two.x, three.x) + Noise1(two.x) +
           Noise2(two) + Noise3(three) + Turbulence1(two.x, pair.second) + Turbulence2(two, pair.second) +
           Turbulence3(three, pair.second);
}

float UsePercentage(Percentage& a, Percentage const& b, unsigned int n)
{
    a = Percentage() + Percentage(n) * Percentage(n, 3);
    a += a + b + b;
    a *= a * b * b;
    a /= a / b / b;
    a /= a / n;
    a = a * n + n;
    a = b * n + (b + n) / n;
    a = b * b + (b + b) / (b / b) + b / n;
    a = b / 2 + b * static_cast<unsigned char>(n);
    return a * 2.0F + b + 1.0F + b / 3.0F + static_cast<float>(a * 2.0 + 1.0) +
           static_cast<float>(a.GetNumerator() + b.GetDenominator());
}

unsigned int UseServices(void const* data, std::size_t length, String& a, String const& b)
{
    Assert();
    a = BvGetEnv("HOME") + b + String(a);
    a += String("text") + String(L"text") + String();
    a = "text";
    a = L"text";
    a.Clear();
    bool const ordered = a == b || a != b || a < b || a > b || a.Contains(b) || a.IsEmpty();
    return FNVHash32(a) + GetLagaeHash(ordered ? 1 : 2, 3) + GetJenkinsHash(data, length, 1) +
           GetPearsonHash(data, length, 2) + static_cast<unsigned int>(*a.ToCharArray()) +
           static_cast<unsigned int>(*a.ToWCharArray());
}

template <typename Error>
void UseError(Error const& error)
{
    Error copy(error);
    copy = error;
    copy.Swap(copy);
    if (copy.LineNumber() == 0)
        Error::Throw(error);
    throw copy;
}

void UseErrors(Streams const& streams, Exception const& error)
{
    streams.out << error;
    UseError(error);
    UseError(FileIOException(error));
    UseError(InvalidArgumentException(error));
    UseError(InvalidObjectException(error));
    UseError(NotImplementedException(error));
    UseError(ObjectCreationException(error));
    UseError(ObjectDeletionException(error));
    UseError(OutOfMemoryException(error));
    UseError(ThreadExitException(error));
    UseError(MathsException(error));
    UseError(ArithmeticException(error));
    UseError(DivideByZeroException(error));
    UseError(MatrixException(error));
}

/// What boxes of both kinds have.
template <typename Box, typename Point, typename Round, typename T>
bool UseBox(Streams const& streams, Box& a, Box const& b, Point const& p, Round const& round, T x, unsigned char axis)
{
    a = Box(p, p);
    a.Expand(b);
    a.Expand(p);
    a.Expand(x);
    a.Offset(x);
    a.SetMin(b.GetMin());
    a.SetMax(b.GetMax());
    a.GetMin() += a.GetMax();
    Box half(p);
    b.Split(axis, a, half);
    half.Reset();
    a.Deserialise(streams.in).get();
    b.Serialise(streams.out).flush();
    return a.ExpandAndSignal(b) && a.ExpandAndSignal(p) && a == b && a != Box() && a.IsValid() && a.Contains(p, true) &&
           a.Overlaps(round) && a.GetLength(axis) > x && a.GetCentre() == a.GetDiagonal() &&
           a.Distance(p) < a.DistanceSquared(p);
}

/// What discs and spheres have.
template <typename Round, typename Box, typename Point, typename T>
bool UseRound(Streams const& streams, Round& a, Round const& b, Box const& box, Point const& p, T x)
{
    Round copy(b);
    Round moved(std::move(copy));
    copy = moved;
    a = std::move(copy);
    a = Round(p);
    a = Round(p, x);
    moved = Round(p, p);
    a.SetCentre(b.GetCentre());
    a.SetRadius(b.GetRadius());
    a.Deserialise(streams.in).get();
    b.Serialise(streams.out).flush();
    return a == b && a != moved && a.GetRadiusSquared() > x && a.Contains(p) && a.Overlaps(b) && a.Overlaps(box);
}

template <typename T>
struct DerivedSphere : tVolumeSphere<T>
{
    using tVolumeSphere<T>::tVolumeSphere;
};

template <typename To, typename From>
void Convert(To& to, From const& from)
{
    to = from;
    to = To(from);
}

template <typename Packet>
typename Packet::Vector UsePacket(DepthRayf const* rays, Matrix4f const& matrix, VolumeAABBf const& box,
                                  typename Packet::Vector (&t)[2])
{
    Packet packet;
    packet.Initialise(rays);
    Packet copy = packet;
    packet = copy.Transform(matrix);
    simd::tWatertightPacket<Packet> const prepared(packet);
    simd::tPacketHits<Packet> hits{t[0], t[0], t[1]};
    tVector3<float> const& corner = box.GetMin();
    t[0] += IntersectTriangle(packet, corner, corner, box.GetMax(), t[0], t[1], hits);
    t[0] += IntersectTriangle(prepared, corner, corner, box.GetMax(), t[0], t[1], hits) + hits.t + hits.u + hits.v;
    return packet.Clip(box, t[0], t[1]) + packet.GetOrigin()[0] + packet.GetDirection()[1] +
           packet.GetInvDirection()[2];
}

void UsePackets(DepthRayf const* rays, Matrix4f const& matrix, VolumeAABBf const& box, __m256 (&eight)[2],
                __m128 (&four)[2])
{
    eight[0] = UsePacket<simd::AVXRay>(rays, matrix, box, eight);
    four[0] = UsePacket<simd::SSERay>(rays, matrix, box, four);
}

/// What differentials of both kinds have.
template <typename Differential, typename Vector, typename T>
bool UseDifferential(Differential& a, Differential const& b, Vector const& v, T x)
{
    a = *new Differential;
    a = Differential(v, v);
    a.Set(v, v);
    a.Set(v);
    a = +a + -b - b * x * v;
    a += b;
    a -= b;
    a *= x;
    a *= v;
    a /= x;
    a /= v;
    a(0) = b[1];
    return a.GetRadius() > x && a.IsNull() && a.IsInfinite();
}

void UseNoiseBatch(std::span<float> values, std::span<tVector2<float>> two, std::span<tVector3<float>> three,
                   RNGenerator& generator)
{
    EvaluateNoise1(values, values);
    EvaluateNoise2(two, values);
    EvaluateNoise3(three, values);
    EvaluateTurbulence1(values, 2, values);
    EvaluateTurbulence2(two, 2, values);
    EvaluateTurbulence3(three, 2, values);
    GetFloats(generator, values);
    GetVectors2D(generator, two);
    GetVectors3D(generator, three);
}

/// What tuples have in all four instances.
/// What every tuple and vector has.
template <typename V, typename T>
T UseComponents(V const& a, V const& b, T c)
{
    V const within = Clamp(Clamp(Min(a, b), a, Max(a, b)), c, c);
    return within[GetMinAxis(a)] + within[GetMaxAxis(b)] + GetMinComponent(a) + GetMaxComponent(b);
}

template <typename T>
struct OfTuples
{
    static bool Tuples(Streams const& streams, T const* values, std::size_t index)
    {
        tTuple2<T> two(values[0], values[1]);
        tTuple3<T> three(values[0], values[1], values[2]);
        return UseTuple(streams, tTuple2<T>(values), two, values, index) &&
               UseTuple(streams, tTuple3<T>(values), three, values, index);
    }

    static T Components(tTuple2<T> const& two, tTuple3<T> const& three)
    {
        T sum = UseComponents(two, two, three.x) + UseComponents(three, three, two.x);
        if constexpr (std::is_signed_v<T>)
            sum += Abs(two).x + Abs(three).x;
        return sum;
    }
};
template struct OfTuples<int>;
template struct OfTuples<unsigned int>;
template struct OfTuples<float>;
template struct OfTuples<double>;

template void UseIntegerVectors(Streams const&, tVector2<int>&, tVector3<int>&);
template void UseIntegerVectors(Streams const&, tVector2<unsigned int>&, tVector3<unsigned int>&);

/// What has an instance for each precision.
template <typename T>
struct OfPrecisions
{
    using Other = std::conditional_t<std::is_same_v<T, float>, double, float>;

    static T ConvertedTuples(tTuple2<Other> const& two, tTuple3<Other> const& three)
    {
        return tTuple2<T>(two).x + tTuple3<T>(three).x;
    }

    static bool Vectors(Streams const& streams, T const* values, std::size_t index, tMatrix4<T> const& matrix)
    {
        tVector2<T> two(values[0], values[1]);
        tVector3<T> three(values[0], values[1], values[2]);
        three.Transform(matrix);
        three.TransformAsVector(matrix);
        three = three.Cross(three.Transformed(matrix)).Cross(three.TransformedAsVector(matrix)) + tVector3<T>();
        tPreparedTransform<T> const map(matrix);
        three = map(three) + map.Direction(three) + tPreparedTransform<T>()(three);
        return UseVector(streams, tVector2<T>(values), two, values, index) &&
               UseVector(streams, tVector3<T>(values), three, values, index) && two == tVector2<T>();
    }

    static T Samples(tVector2<T> const& square, tVector3<T> const& direction, tVector3<T> const& normal, T cosine)
    {
        tVector3<T> const sum = SquareToTriangle(square) + SquareToTriangle(square, direction, normal, direction) +
                                SquareToSphere(square) + SquareToHemisphere(square) +
                                SquareToHemisphere(square, normal) + SquareToCosineHemisphere(square) +
                                SquareToCosineHemisphere(square, normal) + SquareToCone(square, cosine) +
                                SquareToCone(square, normal, cosine);
        tVector2<T> const back = SquareToDisc(square) + DiscToSquare(square) + TriangleToSquare(direction) +
                                 SphereToSquare(direction) + HemisphereToSquare(direction) +
                                 HemisphereToSquare(direction, normal) + CosineHemisphereToSquare(direction) +
                                 CosineHemisphereToSquare(direction, normal) + ConeToSquare(direction, cosine) +
                                 ConeToSquare(direction, normal, cosine);
        return sum.x + back.x + GetDiscDensity(square) + GetTriangleDensity(direction, normal, direction) +
               GetSphereDensity<T>() + GetHemisphereDensity(direction) + GetHemisphereDensity(direction, normal) +
               GetCosineHemisphereDensity(direction) + GetCosineHemisphereDensity(direction, normal) +
               GetConeDensity(direction, cosine) + GetConeDensity(direction, normal, cosine);
    }

    static T Sequences(std::uint32_t index, unsigned int dimension, T shift)
    {
        tVector2<T> const sum = GetHaltonPoint<T>(index) + GetR2Point<T>(index) + GetSobolPoint<T>(index) +
                                GetOwenSobolPoint<T>(GetShuffledIndex(index, dimension), dimension);
        return ShiftAround(sum, sum).x + ShiftAround(sum.y, shift) + GetRadicalInverse<T>(index, dimension) +
               GetHalton<T>(index, dimension) + GetSobol<T>(index, dimension) +
               GetOwenSobol<T>(index, dimension, dimension);
    }

    static T ConvertedVectors(tVector2<Other> const& two, tVector3<Other> const& three)
    {
        return tVector2<T>(two).x + tVector3<T>(three).x;
    }

    static bool Quaternions(Streams const& streams, T const* values, std::size_t index, tMatrix4<T> const& matrix,
                            tVector3<T> const& v)
    {
        using Quaternion = tQuaternion<T>;
        Quaternion const read(values);
        Quaternion a(values[0], values[1], values[2], values[3]);
        a[index] = read[index];
        a *= read * Quaternion(matrix) * Quaternion::RotateAxis(v, values[0]) * Quaternion::RotateBetween(v, v);
        a += -read + a - (T{2} * read) * values[1] / values[2] + Quaternion();
        a -= read.Normalised() + read.Conjugated() + read.Inverted();
        a *= values[0];
        a /= values[1];
        a.Normalise().Conjugate().Invert();
        a += Slerp(a, read, values[2]) + Nlerp(a, read, values[3]) + Exp(a) + Log(read) + Pow(a, values[0]);
        a.Deserialise(streams.in).get();
        a.Serialise(streams.out) << a;
        return a == read && a.IsSameRotation(read) && a.Dot(read) + a.LengthSquared() > a.Length() &&
               a.GetAngle() > values[0] && a.GetAxis() == a.Rotate(v) && a.GetMatrix().IsOrthonormal() &&
               a.GetHash32() == a.GetHash8();
    }

    static T ConvertedQuaternion(tQuaternion<Other> const& q) { return tQuaternion<T>(q).x; }

    static T Scalars(T a, T b, T c)
    {
        tVector3<T> const offset = GetPositionOffset(tVector3<T>(a, b, c), tVector3<T>(c, b, a));
        return (IsEqual(a, b) ? TOLERANCE<T> : CubicSmoothStep(a, b, c)) + QuinticSmoothStep(a, b, c) +
               SmoothStep(a, b, c) + SawTooth(a, b) + offset.x;
    }

    template <typename V>
    static T Components(V const& a, V const& b, T c)
    {
        V const sum = Lerp(Floor(a), Ceil(b), c) + Lerp(a, b, b);
        return UseComponents(a, b, sum.x) + GetMaxComponent(Abs(sum)) + Lerp(c, c, c);
    }

    template <typename V>
    static T Directions(V const& a, V const& b, V& c)
    {
        c = Reflect(a, b) + Refract(a, b, a.x).value_or(a) + FaceForward(a, b) + Project(a, b) + Reject(a, b);
        return Distance(a, b) + DistanceSquared(a, b) + GetAngle(a, b) + (Orthonormalise(c, c) ? T{1} : T{0});
    }

    static T VectorsByComponent(tTuple2<T> const& a, tTuple3<T> const& b, tVector2<T>& c, tVector3<T>& d)
    {
        EvaluateOrthonormalBasis(d, d, d);
        T const sum = Directions(c, c, c) + Directions(d, d, d) + (Orthonormalise(d, d, d) ? T{1} : T{0});
        return Components(a, a, sum) + Components(b, b, sum) + Components(c, c, sum) + Components(d, d, sum);
    }

    static bool Matrix(Streams const& streams, tMatrix4<T>& a, tMatrix4<T> const& b, tVector3<T> const& v,
                       T const* values, std::size_t index)
    {
        using Matrix = tMatrix4<T>;
        tTuple2<unsigned int> const position(1, 2);
        T const x = values[0];
        Matrix const sum = a * b + b.Inverted() - b.Transposed() + Matrix(values) + Matrix(v, v, v) +
                           Matrix(x, x, x, x, x, x, x, x, x, x, x, x, x, x, x, x);
        a = values;
        a *= sum;
        a += Matrix::PerspectiveProjection(x, x, v.x, v.y, v.z, v.x);
        a += Matrix::OrthogonalProjection(x, x, v.x, v.y, v.z, v.x);
        a -= Matrix::RotateX(x) * Matrix::RotateY(x) * Matrix::RotateZ(x) * Matrix::RotateAxis(v, v, x) *
             Matrix::Scale(x) * Matrix::Scale(v) * Matrix::Translate(v) * Matrix::Translate(x, x, x);
        a.Invert().Transpose();
        a(index) = b[index] + b[position] + b.GetElement(index) + b.GetElement(position);
        a(position) = b.Get()[0];
        a.GetElement(index) = a.GetElement(position);
        a.Deserialise(streams.in).get();
        a.Serialise(streams.out) << b << std::string(a);
        a = b;
        return a == Matrix(b) && a != Matrix() && a.Determinant() > x && a.IsIdentity() && a.IsDiagonal() &&
               a.IsOrthonormal();
    }

    static void ConvertedMatrix(tMatrix4<T>& a, tMatrix4<Other> const& b, Other const* values)
    {
        a = b;
        a *= tMatrix4<T>(b) * tMatrix4<T>(values);
        a = values;
    }

    static bool Shapes(Streams const& streams, tAreaAABB<T> (&areas)[2], tVolumeAABB<T> (&volumes)[2],
                       tAreaDisc<T> (&discs)[2], tVolumeSphere<T> (&spheres)[2], tMatrix4<T> const& matrix,
                       tVector2<T> const& p, tVector3<T> const& q, unsigned char axis)
    {
        volumes[0] *= matrix;
        spheres[0] *= matrix;
        tVolumeSphere<T>* const derived = new DerivedSphere<T>(q, p.x);
        *derived = spheres[0] * matrix;
        delete derived;
        delete new tAreaDisc<T>(discs[0]);
        return UseBox(streams, areas[0], areas[1], p, discs[0], p.x, axis) &&
               UseBox(streams, volumes[0], volumes[1], q, spheres[0], p.x, axis) &&
               UseRound(streams, discs[0], discs[1], areas[0], p, p.x) &&
               UseRound(streams, spheres[0], spheres[1], volumes[0], q, p.x) && discs[0].GetArea() > p.x &&
               areas[0].GetArea() > spheres[0].GetVolume() && volumes[0].GetArea(axis) > volumes[0].GetVolume() &&
               volumes[0] == volumes[1] * matrix;
    }

    static bool Bounds(tAreaAABB<T> (&areas)[2], tVolumeAABB<T> (&volumes)[2], tAreaDisc<T> const& disc,
                       tVolumeSphere<T> const& sphere, tMatrix4<T> const& matrix, tVector2<T> (&p)[4],
                       tVector3<T> (&q)[8], unsigned int index)
    {
        areas[0] = Union(Union(areas[0], areas[1]), p[0]);
        areas[1] = Intersection(areas[0], GetBound(Union(Union(disc, p[1]), GetBoundingDisc(areas[1]))));
        volumes[0] = Union(Union(volumes[0], volumes[1]), q[0]);
        volumes[1] = Intersection(volumes[0], GetBound(Union(Union(sphere, q[1]), GetBoundingSphere(volumes[1]))));
        GetCorners(areas[0], p);
        GetCorners(volumes[0], q);
        return Overlaps(areas[0], areas[1]) && Contains(areas[0], areas[1]) && Overlaps(volumes[0], volumes[1]) &&
               Contains(volumes[0], volumes[1]) && GetPerimeter(areas[0]) > GetSurfaceArea(volumes[0]) &&
               GetCorner(areas[0], index) == GetClosestPoint(areas[1], p[2]) &&
               GetCorner(volumes[0], index) == GetClosestPoint(volumes[1], q[2]) &&
               ProjectBox(volumes[0], matrix).has_value();
    }

    static bool Clouds(std::span<tVector2<T> const> two, std::span<tVector3<T> const> three)
    {
        return GetBoundingDisc(two) == GetSmallestDisc(two) && GetBoundingSphere(three) == GetSmallestSphere(three);
    }

    static bool OrientedBoxes(Streams const& streams, tOrientedBox<T>& a, tVolumeAABB<T> const& box,
                              tMatrix4<T> const& matrix, tVector3<T> (&corners)[8], unsigned int index)
    {
        tOrientedBox<T>* const empty = new tOrientedBox<T>; // no constant
        *empty = tOrientedBox<T>(corners[0], corners[1], corners[2], corners[3], corners[4]);
        a = tOrientedBox<T>(box, matrix) * matrix;
        a *= matrix;
        a.SetCentre(corners[5]);
        a.SetAxes(corners[6], corners[7], a.GetAxis(index));
        a.SetHalfExtents(a.GetCentre() + a.GetHalfExtents());
        a.Deserialise(streams.in).get();
        a.Serialise(streams.out).flush();
        a.GetCorners(corners);
        return a.IsValid() && a.Contains(a.GetCorner(index)) && a.GetBound() == box && a.GetVolume() > corners[0].x &&
               a == *empty && a != tOrientedBox<T>(box);
    }

    static bool Visibility(tFrustum<T>& view, tOrientedBox<T> const& box, tVolumeSphere<T> const& sphere,
                           tMatrix4<T> const& matrix, tAreaAABB<T> const& area, tVector3<T> (&corners)[8])
    {
        view = GetParallelView(box);
        view = GetScreenView(matrix, area);
        GetCorners(view, corners);
        tPlane<T> const& plane = view.GetNearPlane();
        tFrustum<T> const* const planes = new tFrustum<T>(plane, plane, plane, plane, plane, plane);
        return Classify(view, box) == Classify(view, sphere) && Classify(*planes, GetCorner(view, 1)) == 0;
    }

    static bool Plane(Streams const& streams, tPlane<T>& a, tPlane<T> const& b, tVector3<T> const& p, T const* values)
    {
        a = tPlane<T>(p, values[0]);
        a = tPlane<T>(values);
        a = values;
        a.Set(p, values[1]).SetNormal(p);
        a.SetOffset(values[2]);
        a.Deserialise(streams.in).get();
        b.Serialise(streams.out) << b << std::string(a);
        return a == b && a != tPlane<T>() && a.GetDistance(p) > a.GetAbsoluteDistance(p) && a.GetNormal() == p &&
               a.GetIntersection(p, p) == b.GetIntersection(p, p) && a.GetOffset() > values[3];
    }

    static bool Frustum(tFrustum<T>& view, tMatrix4<T> const& matrix, tVolumeAABB<T> const& box, tRay<T> const& ray)
    {
        tFrustum<T> const* const empty = new tFrustum<T>;
        view = *empty;
        view = tFrustum<T>(matrix);
        return view.ContainsAABB(box) == tFrustum<T>::INSIDE && view.IntersectNear(ray) == ray.IntersectScreen(view) &&
               view.GetEdgeVector(tFrustum<T>::EDGE_TOP_LEFT) == view.GetLeftPlane().GetNormal() &&
               view.GetRightPlane() == view.GetBottomPlane() && view.GetTopPlane() == view.GetNearPlane() &&
               view.GetFarPlane() == view.GetLeftPlane();
    }

    static bool View(tMatrix4<T>& matrix, tVector3<T>& v, tVector2<T> const& size, tRay<T>& ray, T x)
    {
        matrix *= LookAt(v, v, v) * PlaceCamera(v, v, v);
        matrix += PerspectiveFromFieldOfView(x, x, x, x) + PerspectiveFromTangent(x, x, x, x);
        matrix -= PerspectiveProjection(x, x, x, x, x, x) - OrthographicProjection(x, x, x, x, x, x);
        tPixelRays<T> const rays(size, matrix, matrix);
        ray = rays(size);
        ray.direction += rays.GetDirection(size) + rays.GetStepRight() + rays.GetStepDown();
        ray.origin = GetPixelRay(size, size, matrix, matrix).origin;
        v = GetPixel(v, matrix, size).value_or(v) + TransformNormal(matrix, v).value_or(v);
        tMatrixParts<T> const parts = Decompose(matrix).value_or(tMatrixParts<T>());
        matrix = TryInverted(matrix).value_or(Compose(parts)) + GetNormalMatrix(matrix).value_or(matrix) +
                 Compose(tMatrixParts<T>(v, parts.rotation, v));
        matrix += Compose(v, parts.rotation, v);
        return GetViewDistance(x, matrix) > x;
    }

    static bool Rays(tVolumeAABB<T> const& box, tVolumeSphere<T> const& sphere, tVector3<T> const& p, T (&t)[2],
                     tVector2<T> (&d)[2])
    {
        tRay<T>& ray = *new tRay<T>; // no constant
        ray = tRay<T>(p, p);
        tDepthRay<T, IRayPayloadInternal>& depthRay = *new tDepthRay<T, IRayPayloadInternal>;
        depthRay = tDepthRay<T, IRayPayloadInternal>(p, p);
        return ray.Clip(box, t[0], t[1]) && ray.Clip(sphere, t[0], t[1]) && depthRay.Clip(box, t[0], t[1]) &&
               depthRay.ClipDiff(sphere, t[0], t[1], d[0], d[1]);
    }

    static bool Intersections(tRay<T> const& ray, tVolumeAABB<T> const& box, tOrientedBox<T> const& turned,
                              tPlane<T> const& plane, tVector3<T> const& p, T (&t)[2])
    {
        tTriangleHit<T> hit{};
        tWatertightRay<T>& prepared = *new tWatertightRay<T>; // no constant
        prepared = tWatertightRay<T>(ray);
        tReciprocalRay<T>& slabs = *new tReciprocalRay<T>;
        slabs = tReciprocalRay<T>(ray);
        return IntersectTriangle(ray, p, p, p, 0, 1, hit) && IntersectTriangle(prepared, p, p, p, 0, 1, hit) &&
               IntersectPlane(ray, plane, 0, 1, t[0]) && IntersectDisc(ray, p, p, 1, 0, 1, t[0]) &&
               ClipOrientedBox(ray, turned, t[0], t[1]) && OverlapsTriangle(box, p, p, p) &&
               GetBarycentric(p, p, p, p, t[0], t[1]) && slabs.Clip(box, t[0], t[1]) &&
               slabs.GetOrigin() == slabs.GetReciprocal() && prepared.GetStart() == prepared.GetShear() &&
               prepared.GetAxis(0) == prepared.GetAxis(1);
    }

    static bool MovedRays(tDepthRay<T, IRayPayloadInternal> const& ray, tMatrix4<T> const& matrix, tVector3<T> const& p,
                          tDifferential3<T>& position, tDifferential2<T>& weights)
    {
        tRay<T> const& plain = ray;
        tRay<T> const moved = TransformRay(plain, matrix);
        return TransformRay(ray, matrix).origin == moved.origin &&
               GetHitDifferentials(ray, p, p, p, 1, position, weights);
    }

    static std::size_t Triangles(tRay<T> const& ray, std::span<tVector3<T>> points, std::span<T> numbers, BitSpan bits)
    {
        return IntersectTriangles(ray, points, points, points, 0, 1, numbers, numbers, numbers, bits) +
               IntersectTriangles(tWatertightRay<T>(ray), points, points, points, 0, 1, numbers, numbers, numbers,
                                  bits);
    }

    static bool Differentials(tDifferential2<T> (&two)[2], tDifferential3<T> (&three)[2], tMatrix4<T> const& matrix,
                              tVector2<T> const& v, tVector3<T> const& w)
    {
        three[0].Transform(matrix, w, v.x).TransformAsVector(matrix);
        three[0] += three[1].TransformedAsVector(matrix) + three[1].Transformed(matrix, w, v.x);
        return UseDifferential(two[0], two[1], v, v.x) && UseDifferential(three[0], three[1], w, v.x);
    }

    static bool Frame(Streams const& streams, tCoordinateFrame<T>& a, unsigned char x, unsigned char* faces)
    {
        tCoordinateFrame<T> const b(x, x, x);
        a = tCoordinateFrame<T>();
        a.Set(x, x, x);
        a.Deserialise(streams.in).get();
        b.Serialise(streams.out).flush();
        a.MapCubeMap(x, x, x, faces);
        a.MapCubeMap(b, faces);
        return a.GetX() + a.GetY() == a.GetZ() && a.GetVector(x) == b.GetVector(x) &&
               a.CreateRotationMatrix(x, x, x).IsIdentity() && a.GetHandedness() == b.GetHandedness() &&
               a.CreateRotationMatrix(b).IsIdentity();
    }

    static void Batch(tMatrix4<T> const& matrix, std::span<tVector3<T>> points, tVolumeAABB<T>& box,
                      tFrustum<T> const& frustum, std::span<tVolumeAABB<T> const> boxes,
                      std::span<typename tFrustum<T>::IntersectionResult> results)
    {
        TransformPoints(matrix, points, points);
        TransformDirections(matrix, points, points);
        ExpandBox(box, points);
        ClassifyBoxes(frustum, boxes, results);
    }

    static std::size_t MoreBatches(tMatrix4<T> const& matrix, std::span<tVector3<T>> points, std::span<T> numbers,
                                   std::span<tMatrix4<T>> matrices, BitSpan bits)
    {
        TransformPointsAffinely(matrix, points, points);
        TransformPointsToClip(matrix, points, points, numbers);
        NormaliseVectors(points, points);
        InvertMatrices(matrices, matrices);
        ComputeNormalMatrices(matrices, matrices);
        MultiplyMatrices(matrix, matrices, matrices);
        MultiplyMatrices(matrices, matrices, matrices);
        tExtremes<T> const ends = FindExtremes(tVectorView<T const>(points).GetAxis(1));
        return TryTransformPoints(matrix, points, points, bits) + CompareNumbers(numbers, numbers, bits) +
               static_cast<std::size_t>(ends.max > ends.min);
    }

    static std::size_t ShapeBatches(tFrustum<T> const& frustum, tMatrix4<T> const& matrix,
                                    std::span<tVolumeAABB<T>> boxes, std::span<tVolumeSphere<T>> spheres,
                                    std::span<tRay<T>> rays, std::span<T> numbers, BitSpan bits,
                                    std::span<std::uint32_t> indices, std::span<std::uint8_t> planes,
                                    std::span<typename tFrustum<T>::IntersectionResult> results)
    {
        TransformBoxes(matrix, boxes, boxes);
        ClassifyBoxesByPlane(frustum, PLANES_ALL, boxes, planes);
        ClassifySpheres(frustum, spheres, results);
        tBoxView<T const> const view(boxes);
        return FindVisibleBoxes(frustum, view, bits) + ListVisibleBoxes(frustum, boxes, indices) +
               FindVisibleSpheres(frustum, spheres, bits) + ListVisibleSpheres(frustum, spheres, indices) +
               FindPointsInside(boxes[0], true, view.GetMin(), bits) + ClipBoxes(rays[0], 0, 1, boxes, numbers, bits) +
               ClipRays(tRayView<T const>(rays), spheres[0], numbers, numbers, bits) +
               ClipSpheres(rays[0], spheres, numbers, numbers, bits);
    }

    static void Conversions(tAreaAABB<T>& area, tAreaAABB<Other> const& otherArea, tVolumeAABB<T>& volume,
                            tVolumeAABB<Other> const& otherVolume, tAreaDisc<T>& disc,
                            tAreaDisc<Other> const& otherDisc, tVolumeSphere<T>& sphere,
                            tVolumeSphere<Other> const& otherSphere, tPlane<T>& plane, tPlane<Other> const& otherPlane,
                            tOrientedBox<T>& turned, tOrientedBox<Other> const& otherTurned)
    {
        Convert(area, otherArea);
        Convert(volume, otherVolume);
        Convert(disc, otherDisc);
        Convert(sphere, otherSphere);
        Convert(plane, otherPlane);
        Convert(turned, otherTurned);
    }
};
template struct OfPrecisions<float>;
template struct OfPrecisions<double>;

} // namespace symbols
