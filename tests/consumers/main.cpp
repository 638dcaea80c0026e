// A program as a user of the package would write it: one call that is inline, one into the library, one failure.
#include <iostream>
#include <sstream>

#include <BvBaseUtils.h>

int main()
{
    using namespace bv::maths;

    Matrix4f const move = Matrix4f::Translate(Vector3f{1, 2, 3});
    Vector3f const moved = Vector3f{1, 1, 1}.Transformed(move);
    std::ostringstream text;
    text << moved;
    if (text.str() != "2, 3, 4")
        return 1;

    try
    {
        Matrix4f{Vector3f{1, 0, 0}, Vector3f{1, 0, 0}, Vector3f{0, 0, 1}}.Invert();
    }
    catch (MatrixException const& failure)
    {
        std::cout << failure << '\n';
        return 0;
    }
    return 2;
}
