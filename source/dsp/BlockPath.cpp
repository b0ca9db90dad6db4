#include "dsp/BlockPath.h"

#include "dsp/VantriceCore.h"

BlockPath::BlockPath (VantriceCore& owner)
    : core (owner)
{
}

BlockPath::~BlockPath() = default;

void BlockPath::processStereo (float* left, float* right, int numSamples) noexcept
{
    core.literalStereo (left, right, numSamples);
    ++core.formCounts.literalStretches;
    core.formCounts.literalSamples += (juce::uint64) numSamples;
}

void BlockPath::processMono (float* channel, int numSamples) noexcept
{
    core.literalMono (channel, numSamples);
    ++core.formCounts.literalStretches;
    core.formCounts.literalSamples += (juce::uint64) numSamples;
}
