#include "LoadedModule.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "bv/Exception.h"
#include "bv/InvalidArgumentException.h"
#include "bv/maths/Batch.h"
#include "bv/maths/DivideByZeroException.h"
#include "bv/maths/Integer.h"
#include "bv/maths/MatrixException.h"
#include "bv/maths/Percentage.h"
#include "bv/maths/tCoordinateFrame.h"
#include "bv/maths/tMatrix4.h"
#include "bv/maths/tVector3.h"
#include "bv/maths/tVolumeAABB.h"

using namespace bv;
using namespace bv::maths;
using namespace bv::test;

namespace
{

/// The class that an exception is caught as, by the most special handler there is.
std::string GetClass(void (*raise)(Exception const&), Exception const& given)
{
    try
    {
        raise(given);
    }
    catch (MatrixException const&)
    {
        return "MatrixException";
    }
    catch (DivideByZeroException const&)
    {
        return "DivideByZeroException";
    }
    catch (InvalidArgumentException const&)
    {
        return "InvalidArgumentException";
    }
    catch (Exception const&)
    {
        return "Exception";
    }
    return "nothing";
}

/// What is shown of an exception that was just caught as the class of this name.
template <typename Caught>
std::string Show(Caught const& caught, char const* name)
{
    std::ostringstream text;
    text << name << ", rethrown as " << GetClass([](Exception const& exception) { exception.Rethrow(); }, caught)
         << ": " << caught;
    return text.str();
}

std::string ShowByClass(std::exception_ptr const& failure)
{
    try
    {
        std::rethrow_exception(failure);
    }
    catch (MatrixException const& caught)
    {
        return Show(caught, "MatrixException");
    }
    catch (DivideByZeroException const& caught)
    {
        return Show(caught, "DivideByZeroException");
    }
    catch (InvalidArgumentException const& caught)
    {
        return Show(caught, "InvalidArgumentException");
    }
    catch (Exception const& caught)
    {
        return Show(caught, "Exception");
    }
    catch (std::exception const& caught)
    {
        return caught.what();
    }
}

} // namespace

extern "C" __attribute__((visibility("default"))) void BvTestRaise(Fault fault)
{
    switch (fault)
    {
    case Fault::SingularMatrix:
    {
        float const zeros[16] = {};
        static_cast<void>(tMatrix4<float>(zeros).Inverted());
        break;
    }
    case Fault::WrongAxis:
        static_cast<void>(tVolumeAABB<double>({0, 0, 0}, {1, 1, 1}).GetLength(3));
        break;
    case Fault::DivisionByZero:
        Percentage(0, 0);
        break;
    case Fault::LogarithmOfZero:
        static_cast<void>(IntLog2(0));
        break;
    case Fault::WrongFrame:
        tCoordinateFrame<float>(0, 0, 0);
        break;
    case Fault::DifferentLengths:
    {
        std::vector<tVector3<float>> points(3);
        std::vector<tVector3<float>> results(2);
        TransformPoints(tMatrix4<float>(), points, results);
        break;
    }
    }
}

extern "C" __attribute__((visibility("default"))) void BvTestDescribe(std::exception_ptr const& failure, char* text,
                                                                      std::size_t size)
{
    std::string const shown = ShowByClass(failure);
    std::size_t const length = std::min(shown.size(), size - 1);
    shown.copy(text, length);
    text[length] = '\0';
}
