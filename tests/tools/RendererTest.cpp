#include "Renderer.h"
#include "RenderError.h"
#include "RenderTestFolder.h"

#include "support/PluginHarness.h"

#include <gtest/gtest.h>

namespace
{
constexpr int volumeIndex = ParameterIndex::outputVolume;
constexpr int fxIndex = ParameterIndex::fx;
constexpr int volumeController = 7;

/** A sine with a little noise on it, different on each channel; never silent for long. */
juce::AudioBuffer<float> testSignal (int numChannels, int numSamples, double rate)
{
    juce::AudioBuffer<float> buffer (numChannels, numSamples);
    juce::Random random (42);
    for (int c = 0; c < numChannels; ++c)
        for (int i = 0; i < numSamples; ++i)
        {
            const double sine =
                0.4 * std::sin (juce::MathConstants<double>::twoPi * (330.0 + 110.0 * c) * i / rate);
            buffer.setSample (c, i, (float) (sine + 0.1 * (random.nextDouble() - 0.5)));
        }
    return buffer;
}

int presetIndex (Vantrice& processor, const juce::String& name)
{
    for (int i = 0; i < processor.getNumPresets(); ++i)
        if (processor.getPresetName (i) == name)
            return i;
    return -1;
}

/** The events of the block-size tests: a program change, a mapped controller, two events on one sample,
    one on a block boundary of most sizes and one on the last sample. */
MidiTimeline eventsFor (int numSamples, int programTarget)
{
    MidiTimeline midi;
    midi.addEvent (juce::MidiMessage::programChange (1, programTarget), 1000);
    midi.addEvent (juce::MidiMessage::controllerEvent (1, volumeController, 30), 2048);
    midi.addEvent (juce::MidiMessage::controllerEvent (1, volumeController, 90), 2048);
    midi.addEvent (juce::MidiMessage::controllerEvent (1, volumeController, 64), 4096);
    midi.addEvent (juce::MidiMessage::controllerEvent (1, volumeController, 10), numSamples - 1);
    return midi;
}

void mapVolumeController (Vantrice& processor)
{
    processor.getMidiControl().assign (volumeController,
                                       processor.getParameterManager().getParameter (volumeIndex), false);
}

struct BlockCase
{
    int blockSize;
    int numChannels;
    double rate;
};

class RendererBlocks : public ::testing::TestWithParam<BlockCase>
{
};

TEST_P (RendererBlocks, OutputIsTheProcessorsOwnForEveryBlockSize)
{
    const auto& c = GetParam();
    const int numSamples = (int) (0.15 * c.rate);
    const auto input = testSignal (c.numChannels, numSamples, c.rate);

    // The reference: a processor of the test's own, the whole signal in one block.
    PluginHarness reference;
    const int heavy = presetIndex (*reference, "Dist'n'Crush");
    const int target = presetIndex (*reference, "MPC 60");
    ASSERT_GE (heavy, 0);
    ASSERT_GE (target, 0);
    const auto midi = eventsFor (numSamples, target);

    reference->programChange (heavy);
    mapVolumeController (*reference);
    reference->setPlayConfigDetails (c.numChannels, c.numChannels, c.rate, numSamples);
    reference->prepareToPlay (c.rate, numSamples);
    auto expected = input;
    auto events = midi.getEvents();
    reference->processBlock (expected, events);

    Renderer renderer;
    renderer.selectPreset ("dist'n'crush");
    mapVolumeController (renderer.getProcessor());
    const auto result = renderer.render (input, c.rate, c.blockSize, midi);

    EXPECT_EQ (result.latencySamples, reference->getLatencySamples());
    EXPECT_EQ (renderer.getProcessor().getTotalNumInputChannels(), c.numChannels);
    ASSERT_EQ (result.output.getNumSamples(), numSamples);
    EXPECT_EQ (AudioComparison::firstDifference (result.output, expected), -1);
    EXPECT_EQ (renderer.getProcessor().getCurrentPreset(), target);
    EXPECT_FALSE (identical (result.output, input));
}

INSTANTIATE_TEST_SUITE_P (Table, RendererBlocks,
                          ::testing::Values (BlockCase{ 1, 2, 44100.0 }, BlockCase{ 7, 2, 44100.0 },
                                             BlockCase{ 64, 2, 44100.0 }, BlockCase{ 512, 2, 44100.0 },
                                             BlockCase{ 4096, 2, 44100.0 }, BlockCase{ 1, 1, 44100.0 },
                                             BlockCase{ 7, 1, 44100.0 }, BlockCase{ 4096, 1, 44100.0 },
                                             BlockCase{ 1, 2, 96000.0 }, BlockCase{ 7, 2, 96000.0 },
                                             BlockCase{ 512, 1, 48000.0 }, BlockCase{ 4096, 2, 192000.0 }));

struct CompensationCase
{
    double rate;
    int latency; // the processor's report at this rate
    bool exact;  // no converters: the dry path is the input itself
};

class RendererCompensation : public ::testing::TestWithParam<CompensationCase>
{
};

TEST_P (RendererCompensation, DryOutputLinesUpWithTheInput)
{
    const auto& c = GetParam();
    const int numSamples = (int) (0.1 * c.rate);
    const double hz = 1000.0;
    const double omega = juce::MathConstants<double>::twoPi * hz / c.rate;
    juce::AudioBuffer<float> input (2, numSamples);
    for (int ch = 0; ch < 2; ++ch)
        for (int i = 0; i < numSamples; ++i)
            input.setSample (ch, i, (float) (0.5 * std::sin (omega * i)));

    auto dryRender = [&] (bool compensate, float& volume)
    {
        Renderer r;
        r.setParameter ("FX", "0");
        r.setParameter ("Output Volume", "+6.0dB");
        volume = r.getProcessor().getParameterManager().getNormalizedValue (volumeIndex);
        return r.render (input, c.rate, 256, {}, compensate);
    };

    float volume = 0.0f;
    const auto aligned = dryRender (true, volume);
    const auto delayed = dryRender (false, volume);

    EXPECT_EQ (aligned.latencySamples, c.latency);
    EXPECT_TRUE (aligned.compensated);
    ASSERT_EQ (aligned.output.getNumSamples(), numSamples);

    // The output volume's gain: 4 v squared of the normalised value.
    const double gain = 4.0 * volume * volume;
    EXPECT_NEAR (20.0 * std::log10 (gain), 6.0, 0.05);

    if (c.exact)
    {
        for (int ch = 0; ch < 2; ++ch)
            for (int i = 0; i < numSamples; ++i)
                ASSERT_NEAR (aligned.output.getSample (ch, i), gain * input.getSample (ch, i), 1.0e-6)
                    << "channel " << ch << " sample " << i;
    }

    // Phase and level of the sine over the middle half: the latency is a whole number of samples, so
    // what is left of the converters' delay is under half a sample.
    for (int ch = 0; ch < 2; ++ch)
    {
        double sinePart = 0.0, cosinePart = 0.0;
        const int from = numSamples / 4, to = numSamples * 3 / 4;
        for (int i = from; i < to; ++i)
        {
            sinePart += aligned.output.getSample (ch, i) * std::sin (omega * i);
            cosinePart += aligned.output.getSample (ch, i) * std::cos (omega * i);
        }
        const double residualDelay = -std::atan2 (cosinePart, sinePart) / omega;
        const double amplitude = 2.0 * std::hypot (sinePart, cosinePart) / (to - from);
        EXPECT_LE (std::abs (residualDelay), 0.5) << "channel " << ch;
        EXPECT_NEAR (amplitude, 0.5 * gain, 1.0e-3 * gain) << "channel " << ch;
    }

    // The compensated output is the plain one moved forward by the latency, sample for sample.
    for (int ch = 0; ch < 2; ++ch)
        for (int i = 0; i + c.latency < numSamples; ++i)
            ASSERT_EQ (aligned.output.getSample (ch, i), delayed.output.getSample (ch, i + c.latency))
                << "channel " << ch << " sample " << i;
}

INSTANTIATE_TEST_SUITE_P (
    Table, RendererCompensation,
    ::testing::Values (CompensationCase{ 44100.0, 21, true }, CompensationCase{ 48000.0, 93, false },
                       CompensationCase{ 88200.0, 141, false }, CompensationCase{ 96000.0, 149, false },
                       CompensationCase{ 176400.0, 245, false }, CompensationCase{ 192000.0, 263, false }));

struct LandingCase
{
    bool programChange; // else a controller
    int position;
    int blockSize;
};

class RendererMidiLanding : public ::testing::TestWithParam<LandingCase>
{
};

TEST_P (RendererMidiLanding, EventTakesEffectAtItsExactSample)
{
    const auto& c = GetParam();
    const double rate = 44100.0;
    const auto input = testSignal (2, 6000, rate);

    // A preset whose output volume or mix differs from the first one's, so its change is heard at once.
    Renderer probe;
    auto& bank = probe.getProcessor();
    int target = -1;
    for (int i = 1; i < bank.getNumPresets() && target < 0; ++i)
        if (auto* p = bank.getPreset (i))
            if (p->getValue (volumeIndex) != bank.getPreset (0)->getValue (volumeIndex)
                || p->getValue (fxIndex) != bank.getPreset (0)->getValue (fxIndex))
                target = i;
    ASSERT_GT (target, 0);

    MidiTimeline midi;
    midi.addEvent (c.programChange ? juce::MidiMessage::programChange (1, target)
                                   : juce::MidiMessage::controllerEvent (1, volumeController, 0),
                   c.position);

    auto renderWith = [&] (const MidiTimeline& events)
    {
        Renderer r;
        mapVolumeController (r.getProcessor());
        return r.render (input, rate, c.blockSize, events).output;
    };

    EXPECT_EQ (AudioComparison::firstDifference (renderWith (midi), renderWith ({})), c.position);
}

INSTANTIATE_TEST_SUITE_P (Table, RendererMidiLanding,
                          ::testing::Values (LandingCase{ true, 100, 512 }, LandingCase{ true, 511, 512 },
                                             LandingCase{ true, 512, 512 }, LandingCase{ true, 513, 7 },
                                             LandingCase{ true, 4321, 4096 }, LandingCase{ false, 100, 512 },
                                             LandingCase{ false, 511, 512 }, LandingCase{ false, 512, 512 },
                                             LandingCase{ false, 513, 7 }, LandingCase{ false, 4321, 1 }));

} // namespace
