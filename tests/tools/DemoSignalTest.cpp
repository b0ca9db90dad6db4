#include "DemoSignal.h"

#include <gtest/gtest.h>

namespace
{
class DemoSignalRates : public ::testing::TestWithParam<double>
{
};

TEST_P (DemoSignalRates, EightSecondsOfStereoAtAnyRate)
{
    const double rate = GetParam();
    const auto demo = DemoSignal::create (rate);
    EXPECT_EQ (demo.getNumChannels(), 2);
    EXPECT_EQ (demo.getNumSamples(), (int) std::lround (8.0 * rate));
    EXPECT_NEAR (demo.getMagnitude (0, demo.getNumSamples()), 0.8f, 1.0e-6f);

    // Every beat has something on it, and the two channels differ.
    const int beat = (int) (0.5 * rate);
    for (int b = 0; b < 16; ++b)
        EXPECT_GT (demo.getRMSLevel (0, b * beat, beat), 0.01f) << "beat " << b;
    bool differ = false;
    for (int i = 0; i < demo.getNumSamples() && !differ; ++i)
        differ = demo.getSample (0, i) != demo.getSample (1, i);
    EXPECT_TRUE (differ);
}

INSTANTIATE_TEST_SUITE_P (Rates, DemoSignalRates, ::testing::Values (44100.0, 48000.0, 96000.0));

TEST (DemoSignal, IsTheSameEveryTime)
{
    const auto a = DemoSignal::create();
    const auto b = DemoSignal::create();
    ASSERT_EQ (a.getNumSamples(), b.getNumSamples());
    for (int c = 0; c < 2; ++c)
        EXPECT_EQ (std::memcmp (a.getReadPointer (c), b.getReadPointer (c),
                                sizeof (float) * (size_t) a.getNumSamples()),
                   0);
    EXPECT_EQ (DemoSignal::getDurationSeconds(), 8.0);
}
} // namespace
