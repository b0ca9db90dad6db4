#pragma once

#include "Renderer.h"

/** The figures of a render that the summary shows, and their text. */
class RenderSummary
{
public:
    /** Peak and RMS of a buffer, over all its channels, as gains (1 is full scale). */
    struct Level
    {
        double peak = 0.0;
        double rms = 0.0;
    };

    static Level measure (const juce::AudioBuffer<float>& buffer);

    /** 20 log10 of a gain; minus infinity for silence. */
    static double toDecibels (double gain);

    /** Decibels with two decimals, or "-inf". */
    static juce::String formatDecibels (double decibels);

    RenderSummary (const juce::AudioBuffer<float>& input, const Renderer::Result& result,
                   const juce::String& presetDescription, int blockSize);

    /** Several lines, each a label and its figures. */
    juce::String toText() const;

    double sampleRate = 0.0;
    int numSamples = 0;
    int numChannels = 0;
    int blockSize = 0;
    juce::String preset;
    int latencySamples = 0;
    bool compensated = false;
    Level input, output;
    double realtimeFactor = 0.0;
};
