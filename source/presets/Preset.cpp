#include "presets/Preset.h"

Preset::Preset (int numValuesToUse, int numberInRow)
    : values (new std::atomic<float>[(size_t) juce::jmax (0, numValuesToUse)])
    , numValues (juce::jmax (0, numValuesToUse))
    , number (numberInRow)
{
    for (int i = 0; i < numValues; ++i)
        values[(size_t) i].store (0.0f);
}

// Every caller of ours passes a parameter's own index, checked against the preset's size: a position
// outside stops a debug build, and reads 0 or writes nothing in a release one.
float Preset::getValue (int index) const noexcept
{
    jassert (index >= 0 && index < numValues);
    return index >= 0 && index < numValues ? values[(size_t) index].load() : 0.0f;
}

void Preset::setValue (int index, float value) noexcept
{
    jassert (index >= 0 && index < numValues);
    if (index >= 0 && index < numValues)
        values[(size_t) index].store (value);
}

void Preset::copyValuesFrom (const Preset& other) noexcept
{
    for (int i = 0; i < numValues; ++i)
        values[(size_t) i].store (other.getValue (i));
}
