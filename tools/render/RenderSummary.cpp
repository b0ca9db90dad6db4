#include "RenderSummary.h"

#include <algorithm>
#include <cmath>
#include <limits>

RenderSummary::Level RenderSummary::measure (const juce::AudioBuffer<float>& buffer)
{
    Level level;
    double sumOfSquares = 0.0;
    for (int c = 0; c < buffer.getNumChannels(); ++c)
    {
        const float* data = buffer.getReadPointer (c);
        for (int i = 0; i < buffer.getNumSamples(); ++i)
        {
            const double x = data[i];
            level.peak = std::max (level.peak, std::abs (x));
            sumOfSquares += x * x;
        }
    }
    const double count = (double) buffer.getNumChannels() * buffer.getNumSamples();
    level.rms = count > 0.0 ? std::sqrt (sumOfSquares / count) : 0.0;
    return level;
}

double RenderSummary::toDecibels (double gain)
{
    return gain > 0.0 ? 20.0 * std::log10 (gain) : -std::numeric_limits<double>::infinity();
}

juce::String RenderSummary::formatDecibels (double decibels)
{
    if (!std::isfinite (decibels))
        return decibels < 0.0 ? "-inf" : "inf";
    return juce::String (decibels, 2);
}

RenderSummary::RenderSummary (const juce::AudioBuffer<float>& inputBuffer, const Renderer::Result& result,
                              const juce::String& presetDescription, int blockSizeUsed)
    : sampleRate (result.sampleRate)
    , numSamples (result.output.getNumSamples())
    , numChannels (result.output.getNumChannels())
    , blockSize (blockSizeUsed)
    , preset (presetDescription)
    , latencySamples (result.latencySamples)
    , compensated (result.compensated)
    , input (measure (inputBuffer))
    , output (measure (result.output))
    , realtimeFactor (result.getRealtimeFactor())
{
}

juce::String RenderSummary::toText() const
{
    auto levelText = [] (const Level& level)
    {
        return "peak " + formatDecibels (toDecibels (level.peak)) + " dBFS, RMS "
               + formatDecibels (toDecibels (level.rms)) + " dBFS";
    };

    const double seconds = sampleRate > 0.0 ? numSamples / sampleRate : 0.0;
    const double latencyMs = sampleRate > 0.0 ? 1000.0 * latencySamples / sampleRate : 0.0;

    juce::String text;
    text << "duration     " << juce::String (seconds, 3) << " s, " << numSamples << " samples, "
         << (numChannels == 1 ? "mono" : "stereo") << "\n";
    text << "sample rate  " << juce::String (juce::roundToInt (sampleRate)) << " Hz, blocks of " << blockSize
         << "\n";
    text << "preset       " << preset << "\n";
    text << "latency      " << latencySamples << " samples (" << juce::String (latencyMs, 2) << " ms)"
         << (compensated ? ", compensated" : "") << "\n";
    text << "input        " << levelText (input) << "\n";
    text << "output       " << levelText (output) << "\n";
    text << "speed        " << juce::String (realtimeFactor, 1) << "x real time\n";
    return text;
}
