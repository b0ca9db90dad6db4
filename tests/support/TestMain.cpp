#include <gtest/gtest.h>
#include <juce_events/juce_events.h>

int main (int argc, char** argv)
{
    ::testing::InitGoogleTest (&argc, argv);

    // Deferred listeners and async updates need a message manager on this thread.
    juce::ScopedJuceInitialiser_GUI juce;
    return RUN_ALL_TESTS();
}
