// Every operation of the packets and of matrices in code that is compiled for AVX, and nothing else: avx_symbols.py
// looks at what this file defines.

#include "bv/maths/simd/AVXRay.h"
#include "bv/maths/simd/SSERay.h"
#include "bv/maths/tMatrix4.h"

namespace symbols
{

template <typename Packet>
typename Packet::Vector UseEverything(bv::maths::DepthRayf const* rays, bv::maths::Matrix4f const& matrix,
                                      bv::maths::VolumeAABBf const& box, typename Packet::Vector (&t)[2])
{
    Packet packet;
    packet.Initialise(rays);
    Packet copy = packet;
    packet = copy.Transform(matrix);
    return packet.Clip(box, t[0], t[1]) + packet.GetOrigin()[0] + packet.GetDirection()[1] +
           packet.GetInvDirection()[2];
}

void UseBoth(bv::maths::DepthRayf const* rays, bv::maths::Matrix4f const& matrix, bv::maths::VolumeAABBf const& box,
             __m256 (&eight)[2], __m128 (&four)[2])
{
    eight[0] = UseEverything<bv::maths::simd::AVXRay>(rays, matrix, box, eight);
    four[0] = UseEverything<bv::maths::simd::SSERay>(rays, matrix, box, four);
}

template <typename T>
bool UseMatrix(bv::maths::tMatrix4<T>& a, bv::maths::tMatrix4<T> const& b, bv::maths::tVector3<T>& v)
{
    using Matrix = bv::maths::tMatrix4<T>;
    Matrix const sum = a * b + b.Inverted() - b.Transposed();
    a *= sum;
    a += Matrix::PerspectiveProjection(v.x, v.y, v.z, v.x, v.y, v.z);
    a -= Matrix();
    a.Invert().Transpose();
    v.Transform(a);
    v.TransformAsVector(b);
    return a == Matrix(b) && a.Determinant() > v.x;
}

bool UseMatrices(bv::maths::Matrix4f& a, bv::maths::Matrix4f const& b, bv::maths::tVector3<float>& v,
                 bv::maths::tMatrix4<double>& c, bv::maths::tMatrix4<double> const& d, bv::maths::tVector3<double>& w)
{
    return UseMatrix(a, b, v) && UseMatrix(c, d, w);
}

} // namespace symbols
