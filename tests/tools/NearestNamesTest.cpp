#include "NearestNames.h"

#include <gtest/gtest.h>

namespace
{
struct DistanceCase
{
    const char* a;
    const char* b;
    int expected;
};

class NearestNamesDistance : public ::testing::TestWithParam<DistanceCase>
{
};

TEST_P (NearestNamesDistance, CountsEditsIgnoringCase)
{
    const auto& c = GetParam();
    EXPECT_EQ (NearestNames::distance (c.a, c.b), c.expected);
    EXPECT_EQ (NearestNames::distance (c.b, c.a), c.expected);
}

INSTANTIATE_TEST_SUITE_P (Table, NearestNamesDistance,
                          ::testing::Values (DistanceCase{ "", "", 0 }, DistanceCase{ "abc", "", 3 },
                                             DistanceCase{ "MPC60", "MPC 60", 1 },
                                             DistanceCase{ "kitten", "sitting", 3 },
                                             DistanceCase{ "FX", "fx", 0 },
                                             DistanceCase{ "Left Bits", "Right Bits", 4 }));

struct SuggestionCase
{
    const char* query;
    const char* expected; // the text behind the unknown name
};

class NearestNamesSuggestion : public ::testing::TestWithParam<SuggestionCase>
{
};

TEST_P (NearestNamesSuggestion, NamesTheLikelyMeant)
{
    const juce::StringArray names{ "MPC 60", "16bit 8kHz", "Left Bits", "Right Bits", "FX", "Output Volume" };
    EXPECT_EQ (NearestNames::didYouMean (GetParam().query, names), juce::String (GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P (
    Table, NearestNamesSuggestion,
    ::testing::Values (SuggestionCase{ "MPC60", "; did you mean 'MPC 60'?" },
                       SuggestionCase{ "bits", "; did you mean 'Left Bits' or 'Right Bits'?" },
                       SuggestionCase{ "Ouput Volume", "; did you mean 'Output Volume'?" },
                       SuggestionCase{ "16bit 8khz ", "; did you mean '16bit 8kHz'?" },
                       SuggestionCase{ "Reverb Time", "" }, SuggestionCase{ "", "" }));
} // namespace
