#pragma once

#include "FormatUnderTest.h"

/** The host's saved state: restored in a fresh instance it brings back the sound and every parameter,
    preset, group and controller mapping; a damaged chunk changes nothing. */
class StateChecks
{
public:
    explicit StateChecks (FormatUnderTest& format);
    void run();

    /** Edits a state as a user's session would leave it: parameters moved away from the preset, another
        preset selected, a preset and a group renamed, a stored value changed, a controller mapped. */
    static void makeSessionState (juce::XmlElement& state, juce::int64 seed);

    /** What a session state must bring back, checked in a restored instance's state; empty when all came
        back. */
    static juce::String findMissing (const juce::XmlElement& restored, juce::int64 seed);

private:
    void checkRoundTrip();
    void checkDamagedChunks();

    FormatUnderTest& format;
    ValidationReport& report;
};
