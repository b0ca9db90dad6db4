#pragma once

#include "FormatUnderTest.h"

/** MIDI from the host: a mapped controller moves its parameter at its exact sample; a program change
    selects and applies a preset, at once or, with the silent changing type, behind a fade. */
class MidiChecks
{
public:
    explicit MidiChecks (FormatUnderTest& format);
    void run();

private:
    void checkController (double sampleRate);
    void checkProgramChange();
    void checkSilentProgramChange();

    bool isVst3() const { return format.getFormatName() == "VST3"; }

    FormatUnderTest& format;
    ValidationReport& report;
};
