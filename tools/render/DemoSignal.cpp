#include "DemoSignal.h"

#include <cmath>
#include <vector>

namespace
{
constexpr double twoPi = juce::MathConstants<double>::twoPi;

// A chord per bar, as MIDI note numbers: A minor, F major, C major, G major.
constexpr int chords[DemoSignal::numBars][3] = { { 57, 60, 64 },
                                                 { 53, 57, 60 },
                                                 { 55, 60, 64 },
                                                 { 55, 59, 62 } };

// Peak level of the finished loop, a little below full scale so that the preamp has room to clip it.
constexpr float targetPeak = 0.8f;

// Equal temperament with A4, note 69, at 440 Hz.
double noteHz (int note) { return 440.0 * std::pow (2.0, (note - 69) / 12.0); }

/** Adds a kick of 350 ms: a sine whose pitch falls from 150 Hz to 50 Hz (time constant 33 ms) under a
    decay of 110 ms, at 0.9 of full scale. */
void addKick (juce::AudioBuffer<float>& out, int start, double rate)
{
    constexpr double seconds = 0.35, lowHz = 50.0, sweepHz = 100.0, sweepRate = 30.0, decayRate = 9.0;
    constexpr double level = 0.9;
    const int length = juce::jmin ((int) (seconds * rate), out.getNumSamples() - start);
    double phase = 0.0;
    for (int i = 0; i < length; ++i)
    {
        const double t = i / rate;
        const double hz = lowHz + sweepHz * std::exp (-t * sweepRate);
        phase += twoPi * hz / rate;
        const auto v = (float) (level * std::sin (phase) * std::exp (-t * decayRate));
        for (int c = 0; c < out.getNumChannels(); ++c)
            out.addSample (c, start + i, v);
    }
}

/** Adds a snare of 250 ms: a 180 Hz body decaying in 40 ms and a burst of noise decaying in 60 ms,
    the noise drawn separately for each side so that it sounds wide. */
void addSnare (juce::AudioBuffer<float>& out, int start, double rate, juce::Random& random)
{
    constexpr double seconds = 0.25, bodyHz = 180.0, bodyLevel = 0.35, bodyDecay = 25.0;
    constexpr double noiseLevel = 0.45, noiseDecay = 16.0;
    const int length = juce::jmin ((int) (seconds * rate), out.getNumSamples() - start);
    for (int i = 0; i < length; ++i)
    {
        const double t = i / rate;
        const double body = bodyLevel * std::sin (twoPi * bodyHz * t) * std::exp (-t * bodyDecay);
        const double decay = std::exp (-t * noiseDecay);
        const double left = body + noiseLevel * (random.nextDouble() * 2.0 - 1.0) * decay;
        const double right = body + noiseLevel * (random.nextDouble() * 2.0 - 1.0) * decay;
        out.addSample (0, start + i, (float) left);
        if (out.getNumChannels() > 1)
            out.addSample (1, start + i, (float) right);
    }
}

/** Adds a closed hat of 60 ms: noise through a first-order high-pass at 7 kHz, where hats live,
    decaying in 14 ms; pan from -1 (left) to 1 (right). */
void addHat (juce::AudioBuffer<float>& out, int start, double rate, juce::Random& random, float pan)
{
    constexpr double seconds = 0.06, cornerHz = 7000.0, level = 0.25, decayRate = 70.0;
    const int length = juce::jmin ((int) (seconds * rate), out.getNumSamples() - start);
    double previousIn = 0.0, previousOut = 0.0;
    const double pole = std::exp (-twoPi * cornerHz / rate);
    for (int i = 0; i < length; ++i)
    {
        const double t = i / rate;
        const double x = random.nextDouble() * 2.0 - 1.0;
        const double y = pole * (previousOut + x - previousIn);
        previousIn = x;
        previousOut = y;
        const double v = level * y * std::exp (-t * decayRate);
        out.addSample (0, start + i, (float) (v * (1.0 - pan)));
        if (out.getNumChannels() > 1)
            out.addSample (1, start + i, (float) (v * (1.0 + pan)));
    }
}

/** One period of a soft saw-like tone: five harmonics falling as 1/h, with a closing copy of the first
    point for interpolation. */
std::vector<double> chordWave()
{
    constexpr int size = 4096; // fine enough that linear interpolation adds no audible error
    std::vector<double> wave ((size_t) size + 1);
    for (int i = 0; i <= size; ++i)
        for (int h = 1; h <= 5; ++h)
            wave[(size_t) i] += std::sin (twoPi * h * i / size) / h;
    return wave;
}

/** Adds a chord of the tone above, slightly detuned between left and right. */
void addChord (juce::AudioBuffer<float>& out, int start, int length, const int (&notes)[3], double rate,
               const std::vector<double>& wave)
{
    constexpr double chordLevel = 0.05; // the three tones peak near 0.3, under the drums
    length = juce::jmin (length, out.getNumSamples() - start);
    const double fade = 0.02 * rate; // 20 ms edges keep the chord changes free of clicks
    const double size = (double) wave.size() - 1.0;
    for (int c = 0; c < out.getNumChannels(); ++c)
    {
        const double detune = c == 0 ? 0.999 : 1.001; // 3.5 cents apart: a gentle chorus
        double phases[3] = {};
        for (int i = 0; i < length; ++i)
        {
            const double envelope = juce::jmin (1.0, i / fade, (length - i) / fade);
            double v = 0.0;
            for (int n = 0; n < 3; ++n)
            {
                const double position = phases[n] * size;
                const int index = (int) position;
                const double f = position - index;
                v += wave[(size_t) index] * (1.0 - f) + wave[(size_t) index + 1] * f;
                phases[n] += noteHz (notes[n]) * detune / rate;
                phases[n] -= std::floor (phases[n]);
            }
            out.addSample (c, start + i, (float) (chordLevel * envelope * v));
        }
    }
}
} // namespace

juce::AudioBuffer<float> DemoSignal::create (double sampleRate)
{
    const double beat = 60.0 / tempoBpm;
    const int numSamples = (int) std::lround (getDurationSeconds() * sampleRate);
    juce::AudioBuffer<float> out (2, numSamples);
    out.clear();

    juce::Random snareNoise (1), hatNoise (2); // fixed seeds: the same loop on every run
    const auto wave = chordWave();
    auto at = [&] (double beats) { return (int) std::lround (beats * beat * sampleRate); };

    // Four beats a bar: kicks on 1 and 3 (and the "and" of 3 in the last bar), snares on 2 and 4, hats on
    // every eighth, alternating a little left and right.
    constexpr double beatsPerBar = 4.0, hatPan = 0.3;
    for (int bar = 0; bar < numBars; ++bar)
    {
        const double first = bar * beatsPerBar;
        addChord (out, at (first), at (beatsPerBar), chords[bar], sampleRate, wave);
        addKick (out, at (first), sampleRate);
        addKick (out, at (first + 2.0), sampleRate);
        if (bar == numBars - 1)
            addKick (out, at (first + 2.5), sampleRate);
        addSnare (out, at (first + 1.0), sampleRate, snareNoise);
        addSnare (out, at (first + 3.0), sampleRate, snareNoise);
        for (int eighth = 0; eighth < 8; ++eighth)
            addHat (out, at (first + eighth * 0.5), sampleRate, hatNoise,
                    (float) (eighth % 2 == 0 ? -hatPan : hatPan));
    }

    const float peak = out.getMagnitude (0, numSamples);
    if (peak > 0.0f)
        out.applyGain (targetPeak / peak);
    return out;
}
