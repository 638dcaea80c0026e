// Matrices of any elements that say any state: forms in place and copying forms, prepared and direct transformations.

#include "Fuzz.h"
#include "bv/maths/DivideByZeroException.h"
#include "bv/maths/MatrixException.h"
#include "bv/maths/View.h"
#include "bv/maths/tPreparedTransform.h"
#include "bv/maths/tVolumeAABB.h"

using namespace bv;
using namespace bv::fuzz;
using namespace bv::maths;

namespace
{

template <typename T>
bool HasSameElements(tMatrix4<T> const& a, tMatrix4<T> const& b)
{
    for (std::size_t i = 0; i < 16; ++i)
        if (!IsSame(a[i], b[i]))
            return false;
    return true;
}

/// Whether all elements count. By the rules for the other states, forms in place keep what copying forms set anew.
template <typename T>
bool IsGeneral(tMatrix4<T> const& matrix)
{
    return test::StateOf(matrix) >= test::GENERAL;
}

template <typename T>
void Multiply(tMatrix4<T> const& a, tMatrix4<T> const& b)
{
    bool const areGeneral = IsGeneral(a) && IsGeneral(b);
    tMatrix4<T> changed(a);
    changed *= b;
    Require(!areGeneral || IsSame(changed, a * b), "*= does what * does");
    changed = a;
    Require(HasSameElements(changed += b, a + b), "+= does what + does");
    changed = a;
    Require(HasSameElements(changed -= b, a - b), "-= does what - does");
    changed = a;
    tMatrix4<T> const square = a * a;
    changed *= changed;
    Require(!areGeneral || IsSame(changed, square), "a matrix can be multiplied by itself");
    Require((a == b) == !(a != b), "!= denies ==");
}

template <typename T>
void Transpose(tMatrix4<T> const& matrix)
{
    tMatrix4<T> changed(matrix);
    changed.Transpose();
    tMatrix4<T> const transposed = matrix.Transposed();
    Require(!IsGeneral(matrix) || HasSameElements(changed, transposed), "Transpose() moves what Transposed() does");
    changed.Transpose();
    Require(IsSame(changed, matrix), "two transpositions cancel");
}

template <typename T>
void Invert(tMatrix4<T> const& matrix)
{
    tMatrix4<T> changed(matrix);
    bool isSingular = false;
    try
    {
        changed.Invert();
    }
    catch (MatrixException const&)
    {
        isSingular = true;
        Require(IsSame(changed, matrix), "a matrix that cannot be inverted stays as it is");
    }
    try
    {
        tMatrix4<T> const inverse = matrix.Inverted();
        Require(!isSingular, "Inverted() refuses what Invert() refuses");
        Require(!IsGeneral(matrix) || HasSameElements(changed, inverse), "Invert() does what Inverted() does");
    }
    catch (MatrixException const&)
    {
        Require(isSingular, "Invert() refuses what Inverted() refuses");
    }
    static_cast<void>(TryInverted(matrix));
}

template <typename T>
void Transform(tMatrix4<T> const& matrix, tVector3<T> const& vector)
{
    tPreparedTransform<T> const prepared(matrix);
    tVector3<T> direction(vector);
    direction.TransformAsVector(matrix);
    Require(IsSame(direction, vector.TransformedAsVector(matrix)), "directions are changed as they are copied");
    Require(IsSame(direction, prepared.Direction(vector)), "prepared directions are the direct ones");

    tVector3<T> point(vector);
    bool isRefused = false;
    try
    {
        point.Transform(matrix);
    }
    catch (DivideByZeroException const&)
    {
        isRefused = true;
        Require(IsSame(point, vector), "a point that cannot be transformed stays as it is");
    }
    for (bool const isPrepared : {false, true})
    {
        try
        {
            tVector3<T> const result = isPrepared ? prepared(vector) : vector.Transformed(matrix);
            Require(!isRefused && IsSame(result, point), "points are changed as they are copied, prepared or not");
        }
        catch (DivideByZeroException const&)
        {
            Require(isRefused, "copies are refused where changes are");
        }
    }
}

template <typename T>
void Try(Input& input)
{
    tMatrix4<T> const a = input.Matrix<T>();
    tMatrix4<T> const b = input.Matrix<T>();
    Multiply(a, b);
    Transpose(a);
    Invert(a);
    for (int i = 0; i < 3; ++i)
        Transform(a, input.Vector3<T>());
    tVolumeAABB<T> box(input.Vector3<T>(), input.Vector3<T>());
    tVolumeAABB<T> const image = box * a;
    Require(IsSame(box *= a, image), "boxes are changed as they are copied");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Input input(data, size);
    if (input.Below(2) == 0)
        Try<float>(input);
    else
        Try<double>(input);
    return 0;
}
