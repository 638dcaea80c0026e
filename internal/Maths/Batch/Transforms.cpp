#include "bv/maths/batch/Transforms.h"

#include <algorithm>

#include "Maths/Batch/Job.h"
#include "bv/maths/detail/MatrixAccess.h"
#include "bv/maths/tMatrix4.h"

namespace bv::maths
{

namespace
{

using namespace batch;

/// Vectors times a factor for each axis.
template <typename T>
void Scale(tVectorView<T const> const& in, tVectorView<T> const& out, T x, T y, T z) noexcept
{
    for (std::size_t i = 0; i < in.size(); ++i)
    {
        tVector3<T> const vector = in[i];
        out.Set(i, {vector.x * x, vector.y * y, vector.z * z});
    }
}

template <typename T>
void Copy(tVectorView<T const> const& in, tVectorView<T> const& out) noexcept
{
    for (std::size_t i = 0; i < in.size(); ++i)
        out.Set(i, in[i]);
}

/// Vectors by a matrix that is the identity or diagonal, whose fourth element does not count.
template <typename T>
void ScaleBy(tMatrix4<T> const& matrix, tVectorView<T const> const& in, tVectorView<T> const& out) noexcept
{
    T const* const m = matrix.Get();
    if (matrix.IsIdentity())
        Copy(in, out);
    else
        Scale(in, out, m[0], m[5], m[10]);
}

/// Points by such a matrix, as tVector3::Transformed() moves them.
template <typename T>
void ScalePoints(tMatrix4<T> const& matrix, tVectorView<T const> const& in, tVectorView<T> const& out) noexcept
{
    if (matrix.IsIdentity())
        return Copy(in, out);
    T const* const m = matrix.Get();
    T const reciprocal = T{1} / m[15];
    Scale(in, out, reciprocal * m[0], reciprocal * m[5], reciprocal * m[10]);
}

/// Whether a matrix that is the identity or diagonal would divide by too small a number.
template <typename T>
[[nodiscard]] bool CannotDivide(tMatrix4<T> const& matrix) noexcept
{
    return !matrix.IsIdentity() && detail::IsTooSmall(matrix.Get()[15], TOLERANCE<T>);
}

/// Points from an index on with the single form, which throws at one of them.
template <typename T>
[[gnu::noinline, gnu::cold]] void TransformUpToFailure(tMatrix4<T> const& matrix, tVectorView<T const> const& points,
                                                       tVectorView<T> const& results, std::size_t begin)
{
    for (std::size_t i = begin; i < points.size(); ++i)
        results.Set(i, points[i].Transformed(matrix));
}

template <typename T>
void CheckMatrices(std::span<tMatrix4<T> const> in, std::span<tMatrix4<T>> out, char const* function)
{
    if (in.size() != out.size())
        detail::ThrowDifferentLengths(function);
    CheckOverlap(Extent::Of(in), Extent::Of(out));
}

/// Inverses of a granule of matrices.
template <typename T>
class InvertedMatrices
{
    alignas(16) T values[GRANULE][16];
    T determinants[GRANULE];

public:
    explicit InvertedMatrices(std::span<tMatrix4<T> const> matrices)
    {
        GeometryKernels<T> const& kernels = ChosenKernels();
        kernels.invert(matrices.data(), values, determinants);
    }

    /// Whether there is an inverse at an index, as tMatrix4::Inverted() decides it.
    [[nodiscard]] bool Exists(std::size_t index) const noexcept
    {
        return !detail::IsTooSmall(determinants[index], TOLERANCE<T>);
    }
    void CopyTo(tMatrix4<T>& result, std::size_t index) const noexcept
    {
        detail::MatrixAccess::Set(result, detail::LoadRows<T>(values[index]), tMatrix4<T>::GENERAL);
    }
};

// The single forms, out of line: each is inlined by force.

template <typename T>
[[gnu::noinline]] void InvertOne(tMatrix4<T> const& matrix, tMatrix4<T>& result)
{
    result = matrix.Inverted();
}
template <typename T>
[[gnu::noinline]] void TransposeOne(tMatrix4<T> const& matrix, tMatrix4<T>& result) noexcept
{
    result = matrix.Transposed();
}
template <typename T>
[[gnu::noinline]] void MultiplyOne(tMatrix4<T> const& left, tMatrix4<T> const& right, tMatrix4<T>& result) noexcept
{
    result = left * right;
}

/// Inverts a whole granule of matrices, most of them by a loop.
template <typename T>
void InvertGranule(std::span<tMatrix4<T> const> in, std::span<tMatrix4<T>> out, std::size_t& done)
{
    InvertedMatrices<T> const inverses(in);
    for (done = 0; done < GRANULE; ++done)
        if (detail::MatrixAccess::IsGeneral(in[done]) && inverses.Exists(done))
            inverses.CopyTo(out[done], done);
        else
            InvertOne(in[done], out[done]);
}

/// Inverts the matrices from an index on that a granule holds.
/// @param[out] done how many are: fewer if one is singular, which is thrown then.
template <typename T>
void InvertSome(std::span<tMatrix4<T> const> matrices, std::span<tMatrix4<T>> results, std::size_t begin,
                std::size_t& done)
{
    auto const in = matrices.subspan(begin, std::min(GRANULE, matrices.size() - begin));
    auto const out = results.subspan(begin, in.size());
    if (in.size() == GRANULE && std::any_of(in.begin(), in.end(), detail::MatrixAccess::IsGeneral<T>))
        return InvertGranule(in, out, done);
    for (done = 0; done < in.size(); ++done)
        InvertOne(in[done], out[done]);
}

template <typename T>
void Invert(std::span<tMatrix4<T> const> matrices, std::span<tMatrix4<T>> results)
{
    CheckMatrices(matrices, results, "InvertMatrices");
    std::size_t done = 0;
    for (std::size_t begin = 0; begin < matrices.size(); begin += done)
        InvertSome(matrices, results, begin, done);
}

template <typename T>
void ComputeNormals(std::span<tMatrix4<T> const> matrices, std::span<tMatrix4<T>> results)
{
    CheckMatrices(matrices, results, "ComputeNormalMatrices");
    // The inverses in front of a singular matrix are transposed, too, before it is reported.
    struct Finish
    {
        std::span<tMatrix4<T>> results;
        std::size_t begin, count;

        ~Finish()
        {
            for (std::size_t i = begin; i < begin + count; ++i)
                TransposeOne(results[i], results[i]);
        }
    };
    for (std::size_t begin = 0; begin < matrices.size(); begin += GRANULE)
    {
        Finish finish{results, begin, 0};
        InvertSome(matrices, results, begin, finish.count);
    }
}

template <typename T>
void Multiply(tMatrix4<T> const& left, std::span<tMatrix4<T> const> rights, std::span<tMatrix4<T>> results)
{
    CheckMatrices(rights, results, "MultiplyMatrices");
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the factor may be one of the results.
    tMatrix4<T> const factor = left;
    for (std::size_t i = 0; i < rights.size(); ++i)
        MultiplyOne(factor, rights[i], results[i]);
}

template <typename T>
void Multiply(std::span<tMatrix4<T> const> lefts, std::span<tMatrix4<T> const> rights, std::span<tMatrix4<T>> results)
{
    CheckMatrices(lefts, results, "MultiplyMatrices");
    CheckMatrices(rights, results, "MultiplyMatrices");
    for (std::size_t i = 0; i < rights.size(); ++i)
        MultiplyOne(lefts[i], rights[i], results[i]);
}

} // namespace

template <typename T>
void TransformPoints(tMatrix4<T> const& matrix, tVectorsIn<T> points, tVectorsOut<T> results)
{
    Job<T> job("TransformPoints", points.size());
    job.Read(points).Write(results);
    std::size_t done = 0;
    if (!matrix.IsDiagonal())
    {
        GeometryKernels<T> const& kernels = ChosenKernels();
        done = job.Run(kernels.project, matrix.Get());
    }
    else if (!CannotDivide(matrix))
        return ScalePoints<T>(matrix, points, results);
    if (done != points.size())
        TransformUpToFailure<T>(matrix, points, results, done);
}

template <typename T>
std::size_t TryTransformPoints(tMatrix4<T> const& matrix, tVectorsIn<T> points, tVectorsOut<T> results,
                               BitSpan undivided)
{
    Job<T> job("TryTransformPoints", points.size());
    job.Read(points).Write(results).WriteBits(undivided);
    T const* const m = matrix.Get();
    if (!matrix.IsDiagonal())
    {
        GeometryKernels<T> const& kernels = ChosenKernels();
        return job.Count(kernels.project, m);
    }
    std::fill(undivided.begin(), undivided.end(), std::uint64_t{0});
    if (!CannotDivide(matrix))
    {
        ScalePoints<T>(matrix, points, results);
        return 0;
    }
    Scale<T>(points, results, m[0], m[5], m[10]);
    for (std::size_t i = 0; i < points.size(); ++i)
        undivided[i / 64] |= std::uint64_t{1} << i % 64;
    return points.size();
}

template <typename T>
void TransformPointsAffinely(tMatrix4<T> const& matrix, tVectorsIn<T> points, tVectorsOut<T> results)
{
    Job<T> job("TransformPointsAffinely", points.size());
    job.Read(points).Write(results);
    if (matrix.IsDiagonal())
        return ScaleBy<T>(matrix, points, results);
    GeometryKernels<T> const& kernels = ChosenKernels();
    job.Run(kernels.move, matrix.Get());
}

template <typename T>
void TransformPointsToClip(tMatrix4<T> const& matrix, tVectorsIn<T> points, tVectorsOut<T> results, tNumbersOut<T> w)
{
    Job<T> job("TransformPointsToClip", points.size());
    job.Read(points).Write(results).Write(w);
    if (!matrix.IsDiagonal())
    {
        GeometryKernels<T> const& kernels = ChosenKernels();
        job.Run(kernels.toClip, matrix.Get());
        return;
    }
    ScaleBy<T>(matrix, points, results);
    for (std::size_t i = 0; i < w.size(); ++i)
        w[i] = matrix.IsIdentity() ? T{1} : matrix.Get()[15];
}

template <typename T>
void TransformDirections(tMatrix4<T> const& matrix, tVectorsIn<T> directions, tVectorsOut<T> results)
{
    Job<T> job("TransformDirections", directions.size());
    job.Read(directions).Write(results);
    if (matrix.IsDiagonal())
        return ScaleBy<T>(matrix, directions, results);
    GeometryKernels<T> const& kernels = ChosenKernels();
    job.Run(kernels.rotate, matrix.Get(), matrix.IsOrthonormal() ? 1 : 0);
}

template <typename T>
void TransformBoxes(tMatrix4<T> const& matrix, tBoxesIn<T> boxes, tBoxesOut<T> results)
{
    GeometryKernels<T> const& kernels = ChosenKernels();
    Job<T> job("TransformBoxes", boxes.size());
    job.Read(boxes).Write(results).Run(kernels.moveBoxes, matrix.Get());
}

void NormaliseVectors(tVectorView<float const> const& vectors, tVectorView<float> const& results)
{
    GeometryKernels<float> const& kernels = ChosenKernels();
    Job<float>("NormaliseVectors", vectors.size()).Read(vectors).Write(results).Run(kernels.normalise);
}
void NormaliseVectors(tVectorView<double const> const& vectors, tVectorView<double> const& results)
{
    GeometryKernels<double> const& kernels = ChosenKernels();
    Job<double>("NormaliseVectors", vectors.size()).Read(vectors).Write(results).Run(kernels.normalise);
}

void InvertMatrices(std::span<tMatrix4<float> const> matrices, std::span<tMatrix4<float>> results)
{
    Invert(matrices, results);
}
void InvertMatrices(std::span<tMatrix4<double> const> matrices, std::span<tMatrix4<double>> results)
{
    Invert(matrices, results);
}

void ComputeNormalMatrices(std::span<tMatrix4<float> const> matrices, std::span<tMatrix4<float>> results)
{
    ComputeNormals(matrices, results);
}
void ComputeNormalMatrices(std::span<tMatrix4<double> const> matrices, std::span<tMatrix4<double>> results)
{
    ComputeNormals(matrices, results);
}

void MultiplyMatrices(tMatrix4<float> const& left, std::span<tMatrix4<float> const> rights,
                      std::span<tMatrix4<float>> results)
{
    Multiply(left, rights, results);
}
void MultiplyMatrices(tMatrix4<double> const& left, std::span<tMatrix4<double> const> rights,
                      std::span<tMatrix4<double>> results)
{
    Multiply(left, rights, results);
}
void MultiplyMatrices(std::span<tMatrix4<float> const> lefts, std::span<tMatrix4<float> const> rights,
                      std::span<tMatrix4<float>> results)
{
    Multiply(lefts, rights, results);
}
void MultiplyMatrices(std::span<tMatrix4<double> const> lefts, std::span<tMatrix4<double> const> rights,
                      std::span<tMatrix4<double>> results)
{
    Multiply(lefts, rights, results);
}

template BV_TEMPLATE_INSTANCE void TransformPoints(tMatrix4<float> const&, tVectorsIn<float>, tVectorsOut<float>);
template BV_TEMPLATE_INSTANCE void TransformPoints(tMatrix4<double> const&, tVectorsIn<double>, tVectorsOut<double>);
template BV_TEMPLATE_INSTANCE std::size_t TryTransformPoints(tMatrix4<float> const&, tVectorsIn<float>,
                                                             tVectorsOut<float>, BitSpan);
template BV_TEMPLATE_INSTANCE std::size_t TryTransformPoints(tMatrix4<double> const&, tVectorsIn<double>,
                                                             tVectorsOut<double>, BitSpan);
template BV_TEMPLATE_INSTANCE void TransformPointsAffinely(tMatrix4<float> const&, tVectorsIn<float>,
                                                           tVectorsOut<float>);
template BV_TEMPLATE_INSTANCE void TransformPointsAffinely(tMatrix4<double> const&, tVectorsIn<double>,
                                                           tVectorsOut<double>);
template BV_TEMPLATE_INSTANCE void TransformPointsToClip(tMatrix4<float> const&, tVectorsIn<float>, tVectorsOut<float>,
                                                         tNumbersOut<float>);
template BV_TEMPLATE_INSTANCE void TransformPointsToClip(tMatrix4<double> const&, tVectorsIn<double>,
                                                         tVectorsOut<double>, tNumbersOut<double>);
template BV_TEMPLATE_INSTANCE void TransformDirections(tMatrix4<float> const&, tVectorsIn<float>, tVectorsOut<float>);
template BV_TEMPLATE_INSTANCE void TransformDirections(tMatrix4<double> const&, tVectorsIn<double>,
                                                       tVectorsOut<double>);
template BV_TEMPLATE_INSTANCE void TransformBoxes(tMatrix4<float> const&, tBoxesIn<float>, tBoxesOut<float>);
template BV_TEMPLATE_INSTANCE void TransformBoxes(tMatrix4<double> const&, tBoxesIn<double>, tBoxesOut<double>);

} // namespace bv::maths
