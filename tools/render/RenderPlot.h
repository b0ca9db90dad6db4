#pragma once

#include <juce_audio_basics/juce_audio_basics.h>
#include <juce_graphics/juce_graphics.h>

/** A picture of a render: the waveforms of input and output (minimum and maximum per pixel column) and
    their averaged spectra on a logarithmic frequency axis. Drawn with the software renderer, so it needs
    no display. */
class RenderPlot
{
public:
    static constexpr int width = 1200;
    static constexpr int height = 900;

    static juce::Image draw (const juce::AudioBuffer<float>& input, const juce::AudioBuffer<float>& output,
                             double sampleRate, const juce::String& caption);
};
