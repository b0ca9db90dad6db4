#include "common/NumberText.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{
constexpr int intMax = std::numeric_limits<int>::max();
constexpr int intMin = std::numeric_limits<int>::min();

struct IntegerCase
{
    const char* text;
    int leading;
    bool whole;
};

TEST (NumberText, IntegersSaturateInsteadOfWrapping)
{
    const IntegerCase cases[] = {
        { "42", 42, true },
        { "  42  ", 42, true },
        { "+7", 7, true },
        { "-7", -7, true },
        { "42abc", 42, false },
        { "4.5", 4, false },
        { "abc", 0, false },
        { "", 0, false },
        { "-", 0, false },
        { "- 5", 0, false },
        { "2147483647", intMax, true },
        { "2147483648", intMax, true },
        { "-2147483648", intMin, true },
        { "-2147483649", intMin, true },
        { "4294967296", intMax, true },
        { "99999999999999999999999999999", intMax, true },
        { "0x10", 0, false },
    };

    for (const auto& c : cases)
    {
        SCOPED_TRACE (c.text);
        EXPECT_EQ (NumberText::leadingInteger (c.text), c.leading);

        int result = -123;
        EXPECT_EQ (NumberText::readInteger (c.text, result), c.whole);
        EXPECT_EQ (result, c.whole ? c.leading : -123);
    }
}

TEST (NumberText, NarrowingAndUnitLimit)
{
    constexpr float infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ (NumberText::toFloat (1e300), infinity);
    EXPECT_EQ (NumberText::toFloat (-1e300), -infinity);
    EXPECT_FLOAT_EQ (NumberText::toFloat (0.25), 0.25f);

    EXPECT_FLOAT_EQ (NumberText::limitToUnit (std::numeric_limits<float>::quiet_NaN()), 0.0f);
    EXPECT_FLOAT_EQ (NumberText::limitToUnit (-infinity), 0.0f);
    EXPECT_FLOAT_EQ (NumberText::limitToUnit (infinity), 1.0f);
    EXPECT_FLOAT_EQ (NumberText::limitToUnit (0.3f), 0.3f);
}
} // namespace
