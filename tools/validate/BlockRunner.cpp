#include "BlockRunner.h"

std::vector<int> BlockRunner::fixedBlocks (int totalSamples, int blockSize)
{
    std::vector<int> blocks;
    for (int done = 0; done < totalSamples; done += blockSize)
        blocks.push_back (juce::jmin (blockSize, totalSamples - done));
    return blocks;
}

std::vector<int> BlockRunner::randomBlocks (int totalSamples, int maxBlockSize, juce::int64 seed)
{
    juce::Random random (seed);
    std::vector<int> blocks;
    for (int done = 0; done < totalSamples;)
    {
        const int size = juce::jmin (1 + random.nextInt (maxBlockSize), totalSamples - done);
        blocks.push_back (size);
        done += size;
    }
    return blocks;
}

std::vector<int> BlockRunner::splitAtEvents (const std::vector<int>& blocks, const juce::MidiBuffer& events)
{
    std::vector<int> result;
    int start = 0;
    for (const int size : blocks)
    {
        int cut = start;
        for (const auto metadata : events)
            if (metadata.samplePosition > cut && metadata.samplePosition < start + size)
            {
                result.push_back (metadata.samplePosition - cut);
                cut = metadata.samplePosition;
            }
        result.push_back (start + size - cut);
        start += size;
    }
    return result;
}

void BlockRunner::run (juce::AudioProcessor& processor, juce::AudioBuffer<float>& audio,
                       const std::vector<int>& blocks, const juce::MidiBuffer& events)
{
    runFrom (processor, audio, 0, blocks, events);
}

void BlockRunner::runFrom (juce::AudioProcessor& processor, juce::AudioBuffer<float>& audio, int startSample,
                           const std::vector<int>& blocks, const juce::MidiBuffer& events)
{
    juce::MidiBuffer blockEvents;
    int position = startSample;
    for (const int size : blocks)
    {
        const int length = juce::jmin (size, audio.getNumSamples() - position);
        if (length <= 0)
            break;

        blockEvents.clear();
        for (const auto metadata : events)
            if (metadata.samplePosition >= position && metadata.samplePosition < position + length)
                blockEvents.addEvent (metadata.getMessage(), metadata.samplePosition - position);

        juce::AudioBuffer<float> block (audio.getArrayOfWritePointers(), audio.getNumChannels(), position,
                                        length);
        processor.processBlock (block, blockEvents);
        position += length;
    }
}
