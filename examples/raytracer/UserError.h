#pragma once

#include <stdexcept>

namespace raytracer
{

/// What the user can mend: one line that says what is wrong and where. The program prints it and ends with code 2.
class UserError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace raytracer
