// Exceptions that are caught, thrown on, kept and derived from.
#include <exception>
#include <iostream>

#include <bv/Exception.h>
#include <bv/InvalidArgumentException.h>
#include <bv/maths/MatrixException.h>
#include <bv/maths/tMatrix4.h>

using bv::maths::Matrix4f;
using bv::maths::MatrixException;

//! [own]
/// A scene that cannot be drawn.
class SceneException : public bv::Exception
{
public:
    explicit SceneException(bv::String const& message) : bv::Exception(message, &SceneException::ThrowScene) {}

private:
    explicit SceneException(bv::Exception const& other) : bv::Exception(other) {}
    static void ThrowScene(bv::Exception const& other) { throw SceneException(other); }
};
//! [own]

namespace
{

/// Runs something that fails, and says which class of exception it throws.
template <typename Failing>
void ShowClass(char const* text, Failing fail)
{
    try
    {
        fail();
    }
    catch (SceneException const&)
    {
        std::cout << text << ": SceneException\n";
    }
    catch (MatrixException const&)
    {
        std::cout << text << ": MatrixException\n";
    }
    catch (bv::Exception const&)
    {
        std::cout << text << ": Exception\n";
    }
}

//! [raise]
float GetWidth(int pixels)
{
    if (pixels <= 0)
        throw bv::InvalidArgumentException("a picture has at least one pixel", "GetWidth.cpp", 7, __func__);
    return static_cast<float>(pixels);
}
//! [raise]

} // namespace

int main()
{
    //! [catch]
    try
    {
        Matrix4f::Scale(0).Invert();
    }
    catch (MatrixException const& failure)
    {
        std::cout << failure << '\n'; // for a log: message and place in one line
        std::cout << "line " << failure.LineNumber() << " of " << failure.Filename().ToCharArray() << '\n';
    }
    try
    {
        GetWidth(0);
    }
    catch (bv::Exception const& failure) // the root of all of them
    {
        std::cout << failure.Message().ToCharArray() << '\n'; // for the user: the message alone
    }
    //! [catch]

    //! [rethrow]
    ShowClass("thrown on",
              []
              {
                  try
                  {
                      Matrix4f::Scale(0).Invert();
                  }
                  catch (bv::Exception const& failure)
                  {
                      failure.Rethrow(); // with its own class
                  }
              });
    ShowClass("a copy, thrown on",
              []
              {
                  try
                  {
                      Matrix4f::Scale(0).Invert();
                  }
                  catch (bv::Exception const& failure)
                  {
                      bv::Exception const copy(failure); // texts and line alone
                      copy.Rethrow();
                  }
              });
    ShowClass("thrown on twice",
              []
              {
                  try
                  {
                      try
                      {
                          Matrix4f::Scale(0).Invert();
                      }
                      catch (bv::Exception const& failure)
                      {
                          failure.Rethrow(); // a copy of its own class
                      }
                  }
                  catch (bv::Exception const& copy)
                  {
                      copy.Rethrow(); // `throw;` would keep the class
                  }
              });
    //! [rethrow]

    //! [kept]
    std::exception_ptr kept; // may be handed to another thread
    try
    {
        Matrix4f::Scale(0).Invert();
    }
    catch (...)
    {
        kept = std::current_exception();
    }
    ShowClass("kept, and thrown later", [&] { std::rethrow_exception(kept); });
    //! [kept]

    ShowClass("a class of our own",
              []
              {
                  try
                  {
                      throw SceneException("no light");
                  }
                  catch (bv::Exception const& failure)
                  {
                      failure.Rethrow();
                  }
              });
}
