#pragma once

#include <juce_core/juce_core.h>

// Reading numbers out of texts that come from documents, presets and the host. JUCE's own readers wrap
// around on overlong digit runs, which would put a huge number at the wrong end of a range; these
// saturate instead.
namespace NumberText
{
// The leading base-10 integer of text after any blanks, with an optional sign; 0 if there is none.
int leadingInteger (const juce::String& text);

// Whether text, blanks aside, is one base-10 integer and nothing else; if so its value goes to result.
bool readInteger (const juce::String& text, int& result);

// d as a float; values beyond the float range become the infinity of their sign, NaN stays NaN.
float toFloat (double d);

// v limited to 0..1, a NaN counting as 0.
float limitToUnit (float v);
} // namespace NumberText
