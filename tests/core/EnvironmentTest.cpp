#include "bv/Environment.h"

#include <type_traits>

#include <gtest/gtest.h>

#include "support/Environment.h"

namespace
{

using bv::BvGetEnv;
using bv::String;

static_assert(std::is_same_v<decltype(BvGetEnv("")), String const>, "by value, and constant");

constexpr char NAME[] = "BV_ENVIRONMENT_TEST";

void Set(char const* value)
{
    bv::test::SetVariable(NAME, value);
}

void Unset()
{
    bv::test::UnsetVariable(NAME);
}

class EnvironmentTest : public testing::Test
{
protected:
    EnvironmentTest() { Unset(); }
    ~EnvironmentTest() override { Unset(); }
};

TEST_F(EnvironmentTest, AVariableGivesItsValue)
{
    Set("some value, longer than any short-string buffer");
    EXPECT_STREQ(BvGetEnv(NAME).ToCharArray(), "some value, longer than any short-string buffer");
    Set("x");
    EXPECT_STREQ(BvGetEnv(NAME).ToCharArray(), "x");
}

TEST_F(EnvironmentTest, AValueMayHoldEqualsSignsAndSpaces)
{
    Set(" a=b=c ");
    EXPECT_STREQ(BvGetEnv(NAME).ToCharArray(), " a=b=c ");
}

TEST_F(EnvironmentTest, TheValueIsReadAsUTF8)
{
    Set("\xC3\xA9 \xE2\x82\xAC");
    EXPECT_TRUE(BvGetEnv(NAME) == L"\u00E9 \u20AC");
}

TEST_F(EnvironmentTest, AMissingVariableGivesAnEmptyString)
{
    EXPECT_TRUE(BvGetEnv(NAME).IsEmpty());
}

TEST_F(EnvironmentTest, AnEmptyValueGivesAnEmptyString)
{
    Set("");
    EXPECT_TRUE(BvGetEnv(NAME).IsEmpty());
}

TEST_F(EnvironmentTest, AValueInALegacyCodePageGivesAnEmptyString)
{
    Set("caf\xE9 au lait");
    EXPECT_TRUE(BvGetEnv(NAME).IsEmpty());
}

TEST_F(EnvironmentTest, AnEmptyNameGivesAnEmptyString)
{
    EXPECT_TRUE(BvGetEnv("").IsEmpty());
}

TEST_F(EnvironmentTest, ANullNameGivesAnEmptyString)
{
    EXPECT_TRUE(BvGetEnv(nullptr).IsEmpty());
}

TEST_F(EnvironmentTest, TheResultIsACopyThatOutlivesTheVariable)
{
    Set("before");
    String const value = BvGetEnv(NAME);
    Set("afterwards");
    EXPECT_STREQ(value.ToCharArray(), "before");
    Unset();
    EXPECT_STREQ(value.ToCharArray(), "before");
}

TEST_F(EnvironmentTest, NoCallThrows)
{
    EXPECT_NO_THROW(static_cast<void>(BvGetEnv(NAME)));
    EXPECT_NO_THROW(static_cast<void>(BvGetEnv(nullptr)));
    Set("caf\xE9");
    EXPECT_NO_THROW(static_cast<void>(BvGetEnv(NAME)));
}

} // namespace
