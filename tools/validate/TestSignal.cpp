#include "TestSignal.h"

#include <cmath>

juce::AudioBuffer<float> TestSignal::makeMaterial (int numSamples, double sampleRate, juce::int64 seed)
{
    juce::AudioBuffer<float> buffer (2, numSamples);
    juce::Random random (seed);

    // Tone frequencies in Hz, below the core's Nyquist frequency so that the rate converters pass them.
    const double tones[2][2] = { { 220.0, 1375.0 }, { 330.0, 2750.0 } };
    const double noiseLevel = 0.05;
    const double swellHz = 3.0;

    for (int channel = 0; channel < 2; ++channel)
    {
        auto* samples = buffer.getWritePointer (channel);
        for (int i = 0; i < numSamples; ++i)
        {
            const double t = i / sampleRate;
            const double swell = 0.55 + 0.4 * std::sin (juce::MathConstants<double>::twoPi * swellHz * t);
            const double tone = 0.6 * std::sin (juce::MathConstants<double>::twoPi * tones[channel][0] * t)
                                + 0.3 * std::sin (juce::MathConstants<double>::twoPi * tones[channel][1] * t);
            const double noise = noiseLevel * (2.0 * random.nextDouble() - 1.0);
            samples[i] = (float) (swell * tone + noise);
        }
    }
    return buffer;
}

juce::AudioBuffer<float> TestSignal::makeSteadyTone (int numSamples, double sampleRate)
{
    juce::AudioBuffer<float> buffer (2, numSamples);
    const double frequency = 441.0; // a whole number of cycles per 100 samples at 44100 Hz
    const double level = 0.5;
    for (int channel = 0; channel < 2; ++channel)
    {
        auto* samples = buffer.getWritePointer (channel);
        for (int i = 0; i < numSamples; ++i)
            samples[i] =
                (float) (level * std::sin (juce::MathConstants<double>::twoPi * frequency * i / sampleRate));
    }
    return buffer;
}
