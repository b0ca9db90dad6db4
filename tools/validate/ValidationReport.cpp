#include "ValidationReport.h"

#include <iostream>

void ValidationReport::setScope (const juce::String& newScope) { scope = newScope; }

bool ValidationReport::check (bool passed, const juce::String& what, const juce::String& whyNot)
{
    if (passed)
    {
        ++numPassed;
        print ("PASS", what, {});
    }
    else
    {
        ++numFailed;
        print ("FAIL", what, whyNot.isNotEmpty() ? whyNot : juce::String ("not as expected"));
    }
    return passed;
}

void ValidationReport::skip (const juce::String& what, const juce::String& why)
{
    ++numSkipped;
    print ("SKIP", what, why);
}

void ValidationReport::print (const char* verdict, const juce::String& what, const juce::String& detail) const
{
    juce::String line (verdict);
    line << " ";
    if (scope.isNotEmpty())
        line << scope << " ";
    line << what;
    if (detail.isNotEmpty())
        line << ": " << detail;
    std::cout << line << std::endl;
}

void ValidationReport::printSummary() const
{
    std::cout << numPassed << " passed, " << numFailed << " failed";
    if (numSkipped > 0)
        std::cout << ", " << numSkipped << " skipped";
    std::cout << std::endl;
}
