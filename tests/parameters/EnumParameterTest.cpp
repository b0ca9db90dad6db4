#include "parameters/EnumParameter.h"

#include <gtest/gtest.h>

namespace
{
struct SplitCase
{
    const char* itemList;
    juce::StringArray expected;
};

TEST (EnumParameter, ItemListSplitsAtEverySemicolon)
{
    const SplitCase cases[] = {
        { "a;b;c", { "a", "b", "c" } },
        { "a;b;", { "a", "b" } },
        { "a;;b", { "a", "", "b" } },
        { ";a", { "", "a" } },
        { ";", { "" } },
        { ";;", { "", "" } },
        { "a", { "a" } },
        { "", {} },
        { "low pass; high pass", { "low pass", " high pass" } },
    };

    for (const auto& c : cases)
    {
        SCOPED_TRACE (c.itemList);
        EXPECT_EQ (EnumParameter::splitItems (c.itemList), c.expected);
    }
}

struct TextCase
{
    const char* text;
    int expected;
};

TEST (EnumParameter, TextIsAnItemNameOrANormalisedNumber)
{
    const TextCase cases[] = {
        { "a", 0 }, { "b", 1 },  { "c", 2 },   { "0.5", 1 }, { "1", 2 }, { "0", 0 }, { "x", 0 },
        { "B", 0 }, { "b ", 0 }, { "0.3", 1 }, { "0.2", 0 }, { "7", 2 }, { "", 0 },  { "-0.5", 0 },
    };

    for (const auto& c : cases)
    {
        SCOPED_TRACE (c.text);
        EnumParameter parameter (0, "e", "a;b;c", "c");
        parameter.setStringValue (c.text, true);
        EXPECT_EQ (parameter.getIntValue(), c.expected);
    }
}

TEST (EnumParameter, ConstructorTakesTheStartTextAndTheItemCount)
{
    const EnumParameter parameter (0, "e", "a;b;c", "c");
    EXPECT_EQ (parameter.getMinimum(), 0);
    EXPECT_EQ (parameter.getMaximum(), 2);
    EXPECT_EQ (parameter.getIntValue(), 2);
    EXPECT_EQ (parameter.getStringValue(), "c");
    EXPECT_EQ (parameter.getItemList(), "a;b;c");
    EXPECT_FALSE (parameter.isUpdatePending());

    EXPECT_EQ (EnumParameter (0, "e", "a;b;c", "0.5").getStringValue(), "b");
    EXPECT_EQ (EnumParameter (0, "e", "a;b;c", "nothing").getStringValue(), "a");
}

TEST (EnumParameter, FirstOfTwoEqualItemsWins)
{
    EXPECT_EQ (EnumParameter (0, "e", "a;b;a", "a").getIntValue(), 0);
}

TEST (EnumParameter, EmptyItemListGivesEmptyTextWithoutCrashing)
{
    EnumParameter parameter (0, "e", "", "x");
    parameter.setNormalizedValue (1.0f, true);
    parameter.setStringValue ("anything", true);
    EXPECT_EQ (parameter.getStringValue(), "");
    EXPECT_EQ (parameter.getIntValue(), 0);
}

TEST (EnumParameter, CloneKeepsItemsAndValue)
{
    EnumParameter parameter (4, "e", "a;b;c", "b");
    parameter.setAutomatable (true);
    const auto copy = parameter.clone();
    auto* copyAsEnum = dynamic_cast<EnumParameter*> (copy.get());
    ASSERT_NE (copyAsEnum, nullptr);
    EXPECT_EQ (copyAsEnum->getItems(), parameter.getItems());
    EXPECT_EQ (copyAsEnum->getStringValue(), "b");
    EXPECT_EQ (copyAsEnum->getIndex(), 4);
    EXPECT_TRUE (copyAsEnum->isAutomatable());
}
} // namespace
