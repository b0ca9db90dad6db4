#pragma once

#include <juce_core/juce_core.h>

/** One line per check, "PASS ..." or "FAIL ...: why", and "SKIP ...: why" for what a format cannot do;
    the closing line counts them. Lines go out as they happen, so a crash still shows how far it got. */
class ValidationReport
{
public:
    ValidationReport() = default;

    /** The words in front of every line that follows, such as the format's name. */
    void setScope (const juce::String& newScope);

    /** Counts and prints one check; returns whether it passed. */
    bool check (bool passed, const juce::String& what, const juce::String& whyNot = {});
    void skip (const juce::String& what, const juce::String& why);

    int getNumPassed() const noexcept { return numPassed; }
    int getNumFailed() const noexcept { return numFailed; }
    void printSummary() const;

private:
    void print (const char* verdict, const juce::String& what, const juce::String& detail) const;

    juce::String scope;
    int numPassed = 0, numFailed = 0, numSkipped = 0;
};
