#include "AudioComparison.h"

#include <cmath>
#include <cstring>

int AudioComparison::firstDifference (const juce::AudioBuffer<float>& a, const juce::AudioBuffer<float>& b)
{
    const int channels = juce::jmin (a.getNumChannels(), b.getNumChannels());
    const int samples = juce::jmin (a.getNumSamples(), b.getNumSamples());
    for (int i = 0; i < samples; ++i)
        for (int c = 0; c < channels; ++c)
            if (std::memcmp (a.getReadPointer (c, i), b.getReadPointer (c, i), sizeof (float)) != 0)
                return i;
    return a.getNumSamples() == b.getNumSamples() ? -1 : samples;
}

bool AudioComparison::identical (const juce::AudioBuffer<float>& a, const juce::AudioBuffer<float>& b,
                                 juce::String& whyNot)
{
    if (a.getNumChannels() != b.getNumChannels() || a.getNumSamples() != b.getNumSamples())
    {
        whyNot = "sizes differ";
        return false;
    }
    const int first = firstDifference (a, b);
    if (first < 0)
        return true;

    float largest = 0.0f;
    int differing = 0;
    for (int c = 0; c < a.getNumChannels(); ++c)
        for (int i = 0; i < a.getNumSamples(); ++i)
        {
            const float d = std::abs (a.getSample (c, i) - b.getSample (c, i));
            if (std::memcmp (a.getReadPointer (c, i), b.getReadPointer (c, i), sizeof (float)) != 0)
                ++differing;
            largest = juce::jmax (largest, d);
        }
    whyNot = "first difference at sample " + juce::String (first) + " ("
             + juce::String (a.getSample (0, first), 9) + " against "
             + juce::String (b.getSample (0, first), 9) + " on the left), " + juce::String (differing)
             + " samples differ, by up to " + juce::String (largest, 9);
    return false;
}

float AudioComparison::peak (const juce::AudioBuffer<float>& audio, int start, int length)
{
    float result = 0.0f;
    const int end = juce::jmin (audio.getNumSamples(), start + length);
    for (int c = 0; c < audio.getNumChannels(); ++c)
        for (int i = juce::jmax (0, start); i < end; ++i)
            result = juce::jmax (result, std::abs (audio.getSample (c, i)));
    return result;
}

bool AudioComparison::allFinite (const juce::AudioBuffer<float>& audio)
{
    for (int c = 0; c < audio.getNumChannels(); ++c)
        for (int i = 0; i < audio.getNumSamples(); ++i)
            if (!std::isfinite (audio.getSample (c, i)))
                return false;
    return true;
}
