#pragma once

#include "dsp/SignalKernels.h"
#include "dsp/VantriceCore.h"

#include <memory>

/** The block form of VantriceCore's loop: the same arithmetic in the same order for every value, laid
    out so that what does not wait for the previous sample runs for many samples at once. A stretch it
    cannot take goes through the literal per-sample loop, so the bits never depend on which form ran.

    Per stretch: the controls glide; the converters' dots, if any, give the core's input; a serial pass
    runs the noise, the hold clocks and a "Pre" filter; the sinc reads of all holds run side by side; a
    serial pass quantises and starts steps; the step sums of all samples run side by side; a serial pass
    runs a "Post" filter and the mix; the converters' dots give the host's samples; then the meters.
    Channels whose steps sit on the same rows share the table reads, linked or not.

    The literal loop takes a stretch while a preset fade runs (it may apply a preset in its middle),
    while the linked stage might stand still, and while converters that must share a phase do not. */
class BlockPath
{
public:
    explicit BlockPath (VantriceCore& owner);
    ~BlockPath();

    void processStereo (float* left, float* right, int numSamples) noexcept;
    void processMono (float* channel, int numSamples) noexcept;

    /** Host samples per stretch: enough to spread a stretch's fixed costs (the histories, the guards)
        over many samples, few enough that its working set stays in the second-level cache. */
    static constexpr int maxHostRun = 256;

private:
    struct Side;
    struct Buffers;

    bool stereoAllowed (const float* left, const float* right, int n) const noexcept;
    void stereoRun (float* left, float* right, int n) noexcept;
    void monoRun (float* channel, int n) noexcept;

    void glideControls (int n, bool stereo) noexcept;
    int convertIn (int n, bool stereo) noexcept;
    void convertOut (int n, int m, bool stereo) noexcept;
    void linkedCore (int m) noexcept;
    void channelCore (int m, bool stereo) noexcept;
    void finishCore (int m, bool stereo) noexcept;

    VantriceCore& core;
    const SignalKernels* kernels; // the widest set this processor runs
    std::unique_ptr<Buffers> buffers;
};
