#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

#include <vector>

/** Runs audio through a processor block by block, as a host's audio callback does, with MIDI events handed
    to the block they fall into at their offset. The same runner drives the hosted plug-ins and the
    in-process reference, so both are processed the same way. */
class BlockRunner
{
public:
    /** Block sizes covering total samples: all of one size, the last one shorter. */
    static std::vector<int> fixedBlocks (int totalSamples, int blockSize);

    /** Block sizes covering total samples, each drawn from 1 to maxBlockSize by a seeded generator. */
    static std::vector<int> randomBlocks (int totalSamples, int maxBlockSize, juce::int64 seed);

    /** The same blocks, with a block starting at each event's position. */
    static std::vector<int> splitAtEvents (const std::vector<int>& blocks, const juce::MidiBuffer& events);

    /** Processes audio in place. events holds absolute sample positions; the processor must have been
        prepared for the largest block. */
    static void run (juce::AudioProcessor& processor, juce::AudioBuffer<float>& audio,
                     const std::vector<int>& blocks, const juce::MidiBuffer& events = {});

    /** Processes audio in place from one sample position on, for as many samples as the blocks cover. */
    static void runFrom (juce::AudioProcessor& processor, juce::AudioBuffer<float>& audio, int startSample,
                         const std::vector<int>& blocks, const juce::MidiBuffer& events = {});
};
