#include "bv/maths/batch/Rays.h"

#include "Maths/Batch/Job.h"
#include "bv/maths/tWatertightRay.h"

namespace bv::maths
{

using batch::Job;

template <typename T>
std::size_t ClipBoxes(tRay<T> const& ray, std::type_identity_t<T> tNear, std::type_identity_t<T> tFar,
                      tBoxesIn<T> boxes, tSpanOut<T> entries, BitSpan hits)
{
    T constants[] = {ray.origin.x, ray.origin.y, ray.origin.z, 0, 0, 0, tNear, tFar};
    unsigned int crossed = 0;
    for (std::size_t axis = 0; axis < 3; ++axis)
        if (T const along = ray.direction[axis]; detail::Magnitude(along) > TOLERANCE<T>)
        {
            constants[3 + axis] = T{1} / along;
            crossed |= 1U << axis;
        }
    GeometryKernels<T> const& kernels = ChosenKernels();
    Job<T> job("ClipBoxes", boxes.size());
    return job.Read(boxes).Write(entries).WriteBits(hits).Count(kernels.clipBoxes, constants, crossed);
}

template <typename T>
std::size_t ClipRays(tRaysIn<T> rays, tVolumeSphere<T> const& sphere, tSpanOut<T> entries, tSpanOut<T> exits,
                     BitSpan hits)
{
    tVector3<T> const& centre = sphere.GetCentre();
    T const constants[] = {centre.x, centre.y, centre.z, sphere.GetRadiusSquared()};
    GeometryKernels<T> const& kernels = ChosenKernels();
    Job<T> job("ClipRays", rays.size());
    return job.Read(rays).Write(entries).Write(exits).WriteBits(hits).Count(kernels.clipRays, constants);
}

template <typename T>
std::size_t ClipSpheres(tRay<T> const& ray, tSpheresIn<T> spheres, tSpanOut<T> entries, tSpanOut<T> exits, BitSpan hits)
{
    T const constants[] = {ray.origin.x, ray.origin.y, ray.origin.z, ray.direction.x, ray.direction.y, ray.direction.z};
    GeometryKernels<T> const& kernels = ChosenKernels();
    Job<T> job("ClipSpheres", spheres.size());
    return job.Read(spheres).Write(entries).Write(exits).WriteBits(hits).Count(kernels.clipSpheres, constants);
}

namespace
{

template <typename T>
std::size_t CountHits(Loop<T> loop, tVector3<T> const& first, tVector3<T> const& second, unsigned int options,
                      tVectorsIn<T> a, tVectorsIn<T> b, tVectorsIn<T> c, T tNear, T tFar, tSpanOut<T> t, tSpanOut<T> u,
                      tSpanOut<T> v, BitSpan hits)
{
    T const constants[] = {first.x, first.y, first.z, second.x, second.y, second.z, tNear, tFar};
    Job<T> job("IntersectTriangles", a.size());
    return job.Read(a).Read(b).Read(c).Write(t).Write(u).Write(v).WriteBits(hits).Count(loop, constants, options);
}

} // namespace

template <typename T>
std::size_t IntersectTriangles(tRay<T> const& ray, tVectorsIn<T> a, tVectorsIn<T> b, tVectorsIn<T> c,
                               std::type_identity_t<T> tNear, std::type_identity_t<T> tFar, tSpanOut<T> t,
                               tSpanOut<T> u, tSpanOut<T> v, BitSpan hits)
{
    GeometryKernels<T> const& kernels = ChosenKernels();
    return CountHits<T>(kernels.intersect, ray.origin, ray.direction, 0, a, b, c, tNear, tFar, t, u, v, hits);
}

template <typename T>
std::size_t IntersectTriangles(tWatertightRay<T> const& ray, tVectorsIn<T> a, tVectorsIn<T> b, tVectorsIn<T> c,
                               std::type_identity_t<T> tNear, std::type_identity_t<T> tFar, tSpanOut<T> t,
                               tSpanOut<T> u, tSpanOut<T> v, BitSpan hits)
{
    GeometryKernels<T> const& kernels = ChosenKernels();
    unsigned int const axes = ray.GetAxis(0) | ray.GetAxis(1) << 2 | ray.GetAxis(2) << 4;
    return CountHits<T>(kernels.intersectWatertight, ray.GetStart(), ray.GetShear(), axes, a, b, c, tNear, tFar, t, u,
                        v, hits);
}

template BV_TEMPLATE_INSTANCE std::size_t ClipBoxes(tRay<float> const&, float, float, tBoxesIn<float>, tSpanOut<float>,
                                                    BitSpan);
template BV_TEMPLATE_INSTANCE std::size_t ClipBoxes(tRay<double> const&, double, double, tBoxesIn<double>,
                                                    tSpanOut<double>, BitSpan);
template BV_TEMPLATE_INSTANCE std::size_t ClipRays(tRaysIn<float>, tVolumeSphere<float> const&, tSpanOut<float>,
                                                   tSpanOut<float>, BitSpan);
template BV_TEMPLATE_INSTANCE std::size_t ClipRays(tRaysIn<double>, tVolumeSphere<double> const&, tSpanOut<double>,
                                                   tSpanOut<double>, BitSpan);
template BV_TEMPLATE_INSTANCE std::size_t ClipSpheres(tRay<float> const&, tSpheresIn<float>, tSpanOut<float>,
                                                      tSpanOut<float>, BitSpan);
template BV_TEMPLATE_INSTANCE std::size_t ClipSpheres(tRay<double> const&, tSpheresIn<double>, tSpanOut<double>,
                                                      tSpanOut<double>, BitSpan);
template BV_TEMPLATE_INSTANCE std::size_t IntersectTriangles(tRay<float> const&, tVectorsIn<float>, tVectorsIn<float>,
                                                             tVectorsIn<float>, float, float, tSpanOut<float>,
                                                             tSpanOut<float>, tSpanOut<float>, BitSpan);
template BV_TEMPLATE_INSTANCE std::size_t IntersectTriangles(tRay<double> const&, tVectorsIn<double>,
                                                             tVectorsIn<double>, tVectorsIn<double>, double, double,
                                                             tSpanOut<double>, tSpanOut<double>, tSpanOut<double>,
                                                             BitSpan);
template BV_TEMPLATE_INSTANCE std::size_t IntersectTriangles(tWatertightRay<float> const&, tVectorsIn<float>,
                                                             tVectorsIn<float>, tVectorsIn<float>, float, float,
                                                             tSpanOut<float>, tSpanOut<float>, tSpanOut<float>,
                                                             BitSpan);
template BV_TEMPLATE_INSTANCE std::size_t IntersectTriangles(tWatertightRay<double> const&, tVectorsIn<double>,
                                                             tVectorsIn<double>, tVectorsIn<double>, double, double,
                                                             tSpanOut<double>, tSpanOut<double>, tSpanOut<double>,
                                                             BitSpan);

} // namespace bv::maths
