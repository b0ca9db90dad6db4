#pragma once

class VantriceCore;

/** The block form of VantriceCore's loop: the same arithmetic in the same order for every value, laid
    out so that what does not depend on the previous sample runs for many samples at once. A stretch
    that it cannot take gives the literal per-sample loop its turn, so the bits never depend on which
    form ran. */
class BlockPath
{
public:
    explicit BlockPath (VantriceCore& owner);
    ~BlockPath();

    void processStereo (float* left, float* right, int numSamples) noexcept;
    void processMono (float* channel, int numSamples) noexcept;

private:
    VantriceCore& core;
};
