#include "common/NumberText.h"

#include <limits>

namespace
{
struct IntegerScan
{
    int value;
    bool hasDigits;
    juce::String::CharPointerType end;
};

IntegerScan scanInteger (const juce::String& text)
{
    auto p = text.getCharPointer().findEndOfWhitespace();
    bool negative = false;

    if (*p == '-' || *p == '+')
    {
        negative = (*p == '-');
        ++p;
    }

    // One past the int range is enough to tell that a run saturates.
    constexpr juce::int64 limit = juce::int64 (std::numeric_limits<int>::max()) + 1;
    juce::int64 magnitude = 0;
    bool hasDigits = false;

    while (p.isDigit())
    {
        hasDigits = true;
        magnitude = juce::jmin (limit, magnitude * 10 + (*p - '0'));
        ++p;
    }

    const auto signedValue = negative ? -magnitude : magnitude;
    const auto value = (int) juce::jlimit (juce::int64 (std::numeric_limits<int>::min()),
                                           juce::int64 (std::numeric_limits<int>::max()), signedValue);
    return { value, hasDigits, p };
}
} // namespace

namespace NumberText
{
int leadingInteger (const juce::String& text) { return scanInteger (text).value; }

bool readInteger (const juce::String& text, int& result)
{
    const auto scan = scanInteger (text);

    if (!scan.hasDigits || !scan.end.findEndOfWhitespace().isEmpty())
        return false;

    result = scan.value;
    return true;
}

float toFloat (double d)
{
    constexpr double largest = std::numeric_limits<float>::max();

    if (d > largest)
        return std::numeric_limits<float>::infinity();

    if (d < -largest)
        return -std::numeric_limits<float>::infinity();

    return (float) d;
}

float limitToUnit (float v)
{
    if (v >= 0.0f && v <= 1.0f)
        return v;

    return v > 1.0f ? 1.0f : 0.0f;
}
} // namespace NumberText
