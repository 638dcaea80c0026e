#include <array>
#include <exception>
#include <string>
#include <thread>
#include <vector>

#include <dlfcn.h>

#include <gtest/gtest.h>

#include "LoadedModule.h"

// A program that is not linked with the library. It gets it with two modules, whose names, like those of the library,
// reach neither the program nor each other.

namespace
{

using namespace bv::test;

class Module
{
    void* module;

    template <typename Function>
    Function Get(char const* name) const
    {
        return reinterpret_cast<Function>(dlsym(module, name));
    }

public:
    explicit Module(char const* path) : module{dlopen(path, RTLD_NOW | RTLD_LOCAL)}
    {
        if (module == nullptr)
            throw std::runtime_error(dlerror());
    }
    Module(Module const&) = delete;
    Module& operator=(Module const&) = delete;
    ~Module() { dlclose(module); }

    void Raise(Fault fault) const { Get<RaisingFunction>(RAISE)(fault); }
    [[nodiscard]] std::string Describe(std::exception_ptr const& failure) const
    {
        std::array<char, 500> text{};
        Get<DescribingFunction>(DESCRIBE)(failure, text.data(), text.size());
        return text.data();
    }
};

/// What each fault is shown as.
constexpr std::array<char const*, FAULT_COUNT> SHOWN{
    "MatrixException, rethrown as MatrixException: 'Attempt to invert singular matrix' - internal\\Maths\\Matrix4 "
    "(883) "
    ": bv::maths::tMatrix4<float>::Inverted.",
    "InvalidArgumentException, rethrown as InvalidArgumentException: 'Wrong axis argument to "
    "tVolumeAABB<T>::GetLength'",
    "DivideByZeroException, rethrown as DivideByZeroException: 'Integer division by zero' - "
    "internal\\Maths\\Percentage",
    "InvalidArgumentException, rethrown as InvalidArgumentException: 'Argument to IntLog2 must be positive' - "
    "internal\\Maths\\Integer (26)",
    "InvalidArgumentException, rethrown as InvalidArgumentException: 'Incorrectly defined coordinate frame' - "
    "internal\\Maths\\CoordinateFrame (46)",
    "InvalidArgumentException, rethrown as InvalidArgumentException: 'Spans of different lengths' - "
    "internal\\Maths\\Batch"};

std::exception_ptr Catch(Module const& module, Fault fault)
{
    try
    {
        module.Raise(fault);
    }
    catch (...)
    {
        return std::current_exception();
    }
    return nullptr;
}

void ExpectShown(std::string const& text, int fault)
{
    EXPECT_EQ(text.substr(0, std::string(SHOWN[static_cast<std::size_t>(fault)]).size()),
              SHOWN[static_cast<std::size_t>(fault)]);
    EXPECT_EQ(text.back(), '.');
}

TEST(LoadedLibrary, IsNotPartOfTheProgram)
{
    EXPECT_EQ(dlsym(RTLD_DEFAULT, "_ZTIN2bv9ExceptionE"), nullptr);
    Module const module(BV_FIRST_MODULE);
    EXPECT_EQ(dlsym(RTLD_DEFAULT, "_ZTIN2bv9ExceptionE"), nullptr);
}

TEST(LoadedLibrary, RaisesWhatTheProgramCatchesByTheStandardBase)
{
    Module const module(BV_FIRST_MODULE);
    for (int fault = 0; fault < FAULT_COUNT; ++fault)
    {
        try
        {
            module.Raise(static_cast<Fault>(fault));
            ADD_FAILURE() << "nothing was raised";
        }
        catch (std::exception const& caught)
        {
            EXPECT_STREQ(caught.what(), "Brevane exception");
        }
    }
}

TEST(LoadedLibrary, RaisesWhatEitherModuleCatchesByClassAndShows)
{
    Module const first(BV_FIRST_MODULE);
    Module const second(BV_SECOND_MODULE);
    for (int fault = 0; fault < FAULT_COUNT; ++fault)
    {
        std::exception_ptr const failure = Catch(first, static_cast<Fault>(fault));
        ASSERT_TRUE(failure);
        ExpectShown(first.Describe(failure), fault);
        ExpectShown(second.Describe(failure), fault);
    }
}

TEST(LoadedLibrary, RaisesInOneThreadWhatOthersCatch)
{
    constexpr std::size_t THREADS = 8;
    Module const first(BV_FIRST_MODULE);
    Module const second(BV_SECOND_MODULE);
    for (int fault = 0; fault < FAULT_COUNT; ++fault)
    {
        std::exception_ptr failure;
        std::thread([&] { failure = Catch(first, static_cast<Fault>(fault)); }).join();
        ASSERT_TRUE(failure);
        std::array<std::string, THREADS> shown;
        std::vector<std::thread> threads;
        for (std::string& text : shown)
            threads.emplace_back(
                [&] { text = (&text - shown.data()) % 2 == 0 ? first.Describe(failure) : second.Describe(failure); });
        for (std::thread& thread : threads)
            thread.join();
        for (std::string const& text : shown)
            ExpectShown(text, fault);
    }
}

TEST(LoadedLibrary, CanBeUnloadedAndLoadedAgain)
{
    for (int round = 0; round < 3; ++round)
    {
        Module const module(round % 2 == 0 ? BV_FIRST_MODULE : BV_SECOND_MODULE);
        ExpectShown(module.Describe(Catch(module, Fault::SingularMatrix)), 0);
    }
}

} // namespace
