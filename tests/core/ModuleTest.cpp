#include "ThrowingModule.h"

#include <exception>

#include <dlfcn.h>

#include <gtest/gtest.h>

#include "bv/FileIOException.h"
#include "bv/maths/DivideByZeroException.h"
#include "bv/maths/MatrixException.h"
#include "support/Throws.h"

namespace
{

using bv::test::ExpectThrows;

/// A module of a program, loaded so that none of its names reach the program.
class ModuleTest : public testing::Test
{
    void* module = dlopen(BV_THROWING_MODULE, RTLD_NOW | RTLD_LOCAL);

protected:
    ThrowingFunction raise = nullptr;

    void SetUp() override
    {
        ASSERT_NE(module, nullptr) << dlerror();
        raise = reinterpret_cast<ThrowingFunction>(dlsym(module, THROW_FROM_MODULE));
        ASSERT_NE(raise, nullptr) << dlerror();
    }

    ~ModuleTest() override
    {
        if (module != nullptr)
            dlclose(module);
    }
};

TEST_F(ModuleTest, WhatTheModuleThrowsIsCaughtByItsClass)
{
    ExpectThrows<bv::Exception>([this] { raise(0, false); }, "message", "Raise", "module", 7);
    ExpectThrows<bv::FileIOException>([this] { raise(1, false); }, "message", "Raise", "module", 7);
    ExpectThrows<bv::maths::DivideByZeroException>([this] { raise(2, false); }, "message", "Raise", "module", 7);
    ExpectThrows<bv::maths::MatrixException>([this] { raise(3, false); }, "message", "Raise", "module", 7);
}

TEST_F(ModuleTest, WhatTheLibraryThrowsForTheModuleIsCaughtByItsClass)
{
    ExpectThrows<bv::Exception>([this] { raise(0, true); }, "message", "Raise", "module", 7);
    ExpectThrows<bv::FileIOException>([this] { raise(1, true); }, "message", "Raise", "module", 7);
    ExpectThrows<bv::maths::DivideByZeroException>([this] { raise(2, true); }, "message", "Raise", "module", 7);
    ExpectThrows<bv::maths::MatrixException>([this] { raise(3, true); }, "message", "Raise", "module", 7);
}

TEST_F(ModuleTest, AHandlerForAnyBaseOrForTheClassItselfTakesIt)
{
    EXPECT_THROW(raise(2, false), bv::maths::DivideByZeroException);
    EXPECT_THROW(raise(2, false), bv::maths::ArithmeticException);
    EXPECT_THROW(raise(2, false), bv::maths::MathsException);
    EXPECT_THROW(raise(2, false), bv::Exception);
    EXPECT_THROW(raise(2, false), std::exception);
    EXPECT_THROW(raise(3, true), bv::maths::MatrixException);
    EXPECT_THROW(raise(3, true), bv::maths::MathsException);
}

TEST_F(ModuleTest, AnExceptionOfTheModuleIsRethrownWithItsClass)
{
    try
    {
        raise(3, false);
        ADD_FAILURE() << "nothing was thrown";
    }
    catch (bv::Exception const& caught)
    {
        ExpectThrows<bv::maths::MatrixException>([&] { caught.Rethrow(); }, "message", "Raise", "module", 7);
    }
}

} // namespace
