#include "dsp/BlockPath.h"

#include "dsp/StepTable.h"
#include "dsp/VantriceCore.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace
{
constexpr int ringSize = VantriceCore::ringSize;
constexpr int history = RateConverter::historyLength;
constexpr int maxHostRun = BlockPath::maxHostRun;
// Host rates down to half the core rate give up to two core samples per host sample.
constexpr int maxCoreRun = 2 * maxHostRun;
constexpr int maxHostOutputs = maxCoreRun * RateConverter::maxOutputsPerCall;
// The dry sample the mix takes: 21 core samples old, the delay of the crushed path.
constexpr int dryAge = 21;
constexpr int filterOff = 4;

static_assert (SignalKernels::numSlots == VantriceCore::numStepSlots, "the kernels' slots are the core's");

inline double clampUnit (double y) noexcept
{
    if (y > 1.0)
        y = 1.0;
    if (y < -1.0)
        y = -1.0;
    return y;
}

inline bool sameBits (double a, double b) noexcept { return std::memcmp (&a, &b, sizeof (a)) == 0; }

/** The literal loop's glide, per sample, into `out`. A glide at its fixed point gives the same value in
    every sample, so it is written without being run; returns whether it was. */
inline bool glide (double& value, double target, double coeff, double* out, int n) noexcept
{
    const double next = value - ((value - target) * coeff + 1e-20);
    if (sameBits (next, value))
    {
        std::fill (out, out + n, value);
        return true;
    }
    for (int i = 0; i < n; ++i)
    {
        value = value - ((value - target) * coeff + 1e-20);
        out[i] = value;
    }
    return false;
}

inline void advance (int& position, int size) noexcept
{
    if (++position == size)
        position = 0;
}
} // namespace

/** One channel's scratch for a stretch. Histories hold what the rings and converters held before the
    stretch, then the stretch's own samples, so every read of the past is one contiguous stretch. */
struct BlockPath::Side
{
    double cutoff[maxHostRun], reso[maxHostRun], root[maxHostRun];
    double hostIn[history + maxHostRun]; // the in-converter's history, then the host's samples
    double coreIn[maxCoreRun];
    double dry[ringSize + maxCoreRun];
    double crush[ringSize + maxCoreRun];
    double held[maxCoreRun];
    double sum[maxCoreRun];
    double coreOut[history + maxCoreRun]; // the out-converter's history, then the mixed core samples
    double hostOut[maxHostOutputs];
    double out[maxHostRun];

    int numHolds;
    int holdAt[maxCoreRun];
    double holdFraction[maxCoreRun];
    double holdValue[maxCoreRun];
    SignalKernels::DotJob holdJobs[maxCoreRun];

    int eventSlot[maxCoreRun];
    double eventPosition[maxCoreRun];
    double eventHeight[maxCoreRun];

    const double* input() const noexcept { return hostIn + history; }
};

struct BlockPath::Buffers
{
    Side left, right;
    double preamp[maxHostRun], mix[maxHostRun], volume[maxHostRun];
    float noise[maxCoreRun];
    int hostOf[maxCoreRun]; // the host sample each core sample runs in
    int counts[maxCoreRun], otherCounts[maxCoreRun];
    int phases[maxHostOutputs], otherPhases[maxHostOutputs];
    SignalKernels::DotJob jobs[2 * maxHostOutputs];
    double results[2 * maxHostOutputs];
};

BlockPath::BlockPath (VantriceCore& owner)
    : core (owner)
    , kernels (&SignalKernels::best())
    , buffers (std::make_unique<Buffers>())
{
}

BlockPath::~BlockPath() = default;

void BlockPath::processStereo (float* left, float* right, int numSamples) noexcept
{
    auto& counts = core.formCounts;
    for (int done = 0; done < numSamples;)
    {
        const int n = std::min (maxHostRun, numSamples - done);
        if (stereoAllowed (left + done, right + done, n))
        {
            stereoRun (left + done, right + done, n);
            ++counts.blockStretches;
            counts.blockSamples += (juce::uint64) n;
        }
        else
        {
            core.literalStereo (left + done, right + done, n);
            ++counts.literalStretches;
            counts.literalSamples += (juce::uint64) n;
        }
        done += n;
    }
}

void BlockPath::processMono (float* channel, int numSamples) noexcept
{
    auto& counts = core.formCounts;
    for (int done = 0; done < numSamples;)
    {
        const int n = std::min (maxHostRun, numSamples - done);
        if (!core.fadeActive)
        {
            monoRun (channel + done, n);
            ++counts.blockStretches;
            counts.blockSamples += (juce::uint64) n;
        }
        else
        {
            core.literalMono (channel + done, n);
            ++counts.literalStretches;
            counts.literalSamples += (juce::uint64) n;
        }
        done += n;
    }
}

bool BlockPath::stereoAllowed (const float* left, const float* right, int n) const noexcept
{
    if (core.fadeActive)
        return false;

    // Mono runs advance the left converters alone; until setSampleRate the right ones keep their own
    // phase, and the literal loop's way with two phases is its own.
    if (core.resampling
        && !(core.left.inConv->sharesScheduleWith (*core.right.inConv)
             && core.left.outConv->sharesScheduleWith (*core.right.outConv)))
        return false;

    if (!core.linked)
        return true;

    // The linked stage stands still in a sample where neither channel is active. A channel whose input
    // is not 0 is active; one whose envelope cannot fall below the threshold within the stretch stays so.
    // The envelope falls by at most the decay per sample, less a rounding, which the margin covers.
    const double floorLevel = 2e-5 * (1.0 + 1e-9) / std::pow (core.meterDecay * (1.0 - 1e-15), n);
    for (const auto* c : { &core.left, &core.right })
        if (c->active && c->envelope >= floorLevel)
            return true;

    for (int i = 0; i < n; ++i)
        if (left[i] == 0.0f && right[i] == 0.0f)
            return false;
    return true;
}

void BlockPath::glideControls (int n, bool stereo) noexcept
{
    auto& b = *buffers;
    auto& l = core.left;
    auto& r = core.right;
    const double c = core.smoothCoeff;

    glide (core.preamp, core.preampTarget, c, b.preamp, n);
    glide (l.cutoff, l.cutoffTarget, c, b.left.cutoff, n);
    glide (r.cutoff, r.cutoffTarget, c, b.right.cutoff, n);
    const bool leftResoFixed = glide (l.reso, l.resoTarget, c, b.left.reso, n);
    const bool rightResoFixed = glide (r.reso, r.resoTarget, c, b.right.reso, n);
    glide (core.mix, core.mixTarget, c, b.mix, n);
    glide (core.volume, core.volumeTarget, c, b.volume, n);

    // Mono takes only the left root.
    auto roots = [n] (VantriceCore::Channel& ch, Side& side, bool fixed)
    {
        if (fixed)
        {
            ch.resoRoot = std::sqrt (ch.reso);
            std::fill (side.root, side.root + n, ch.resoRoot);
            return;
        }
        for (int i = 0; i < n; ++i)
            side.root[i] = std::sqrt (side.reso[i]);
        ch.resoRoot = side.root[n - 1];
    };
    if (stereo)
        roots (r, b.right, rightResoFixed);
    roots (l, b.left, leftResoFixed);
}

int BlockPath::convertIn (int n, bool stereo) noexcept
{
    auto& b = *buffers;
    auto& in = *core.left.inConv;
    in.copyHistory (b.left.hostIn);
    const int total = in.schedule (n, b.counts, b.phases);
    if (stereo)
    {
        core.right.inConv->copyHistory (b.right.hostIn);
        core.right.inConv->schedule (n, b.otherCounts, b.otherPhases);
    }

    // Each output's dot reaches from its input back over the 64 before it.
    const int sides = stereo ? 2 : 1;
    for (int h = 0, q = 0; h < n; ++h)
        for (int j = 0; j < b.counts[h]; ++j, ++q)
        {
            const double* h0 = in.getCoefficients (b.phases[q]);
            b.jobs[q] = { b.left.hostIn + h, h0 };
            if (stereo)
                b.jobs[total + q] = { b.right.hostIn + h, h0 };
            b.hostOf[q] = h;
        }
    kernels->dots (b.jobs, sides * total, RateConverter::numTaps, b.results);
    std::copy (b.results, b.results + total, b.left.coreIn);
    if (stereo)
        std::copy (b.results + total, b.results + 2 * total, b.right.coreIn);

    // The result buffers keep each call's outputs, as the literal loop leaves them.
    for (int h = 0, q = 0; h < n; ++h)
        for (int j = 0; j < b.counts[h]; ++j, ++q)
        {
            core.left.inResult[j] = b.left.coreIn[q];
            if (stereo)
                core.right.inResult[j] = b.right.coreIn[q];
        }

    in.pushBlock (b.left.hostIn, n);
    if (stereo)
        core.right.inConv->pushBlock (b.right.hostIn, n);
    return total;
}

void BlockPath::convertOut (int n, int m, bool stereo) noexcept
{
    auto& b = *buffers;
    auto& out = *core.left.outConv;
    out.copyHistory (b.left.coreOut);
    const int total = out.schedule (m, b.counts, b.phases);
    if (stereo)
    {
        core.right.outConv->copyHistory (b.right.coreOut);
        core.right.outConv->schedule (m, b.otherCounts, b.otherPhases);
    }

    const int sides = stereo ? 2 : 1;
    for (int i = 0, q = 0; i < m; ++i)
        for (int j = 0; j < b.counts[i]; ++j, ++q)
        {
            const double* h0 = out.getCoefficients (b.phases[q]);
            b.jobs[q] = { b.left.coreOut + i, h0 };
            if (stereo)
                b.jobs[total + q] = { b.right.coreOut + i, h0 };
        }
    kernels->dots (b.jobs, sides * total, RateConverter::numTaps, b.results);
    std::copy (b.results, b.results + total, b.left.hostOut);
    if (stereo)
        std::copy (b.results + total, b.results + 2 * total, b.right.hostOut);

    out.pushBlock (b.left.coreOut, m);
    if (stereo)
        core.right.outConv->pushBlock (b.right.coreOut, m);

    // The FIFO as the literal loop runs it: a core sample's outputs go in during its host sample, before
    // that host sample takes one out.
    auto& l = core.left;
    auto& r = core.right;
    for (int h = 0, i = 0, q = 0; h < n; ++h)
    {
        for (; i < m && b.hostOf[i] == h; ++i)
        {
            for (int j = 0; j < b.counts[i]; ++j, ++q)
            {
                l.outResult[j] = b.left.hostOut[q];
                l.fifo[l.fifoWrite] = b.left.hostOut[q];
                advance (l.fifoWrite, VantriceCore::fifoSize);
                if (stereo)
                {
                    r.outResult[j] = b.right.hostOut[q];
                    r.fifo[r.fifoWrite] = b.right.hostOut[q];
                    advance (r.fifoWrite, VantriceCore::fifoSize);
                }
            }
            jassert (l.fifoWrite != l.fifoRead); // the bursts must never fill the whole FIFO
        }
        jassert (l.fifoWrite != l.fifoRead); // nor may the host read what was never written

        b.left.out[h] = l.fifo[l.fifoRead];
        advance (l.fifoRead, VantriceCore::fifoSize);
        if (stereo)
        {
            b.right.out[h] = r.fifo[r.fifoRead];
            advance (r.fifoRead, VantriceCore::fifoSize);
        }
    }
}

void BlockPath::restoreFilterControls (VantriceCore::Channel& c, const Side& side, int n) noexcept
{
    // The filters read the smoothed values of each core sample's host sample from the channel; what it
    // keeps is the stretch's last.
    c.cutoff = side.cutoff[n - 1];
    c.reso = side.reso[n - 1];
    c.resoRoot = side.root[n - 1];
}

void BlockPath::stereoRun (float* left, float* right, int n) noexcept
{
    auto& b = *buffers;
    glideControls (n, true);
    for (int h = 0; h < n; ++h)
    {
        b.left.hostIn[history + h] = left[h];
        b.right.hostIn[history + h] = right[h];
    }

    int m = n;
    if (core.resampling)
    {
        m = convertIn (n, true);
    }
    else
    {
        std::copy (b.left.input(), b.left.input() + n, b.left.coreIn);
        std::copy (b.right.input(), b.right.input() + n, b.right.coreIn);
        for (int i = 0; i < n; ++i)
            b.hostOf[i] = i;
    }

    if (m > 0)
    {
        if (core.linked)
            linkedCore (m);
        else
            channelCore (m, true);
    }

    restoreFilterControls (core.left, b.left, n);
    restoreFilterControls (core.right, b.right, n);

    if (core.resampling)
    {
        convertOut (n, m, true);
    }
    else
    {
        std::copy (b.left.coreOut + history, b.left.coreOut + history + n, b.left.out);
        std::copy (b.right.coreOut + history, b.right.coreOut + history + n, b.right.out);
    }

    auto& l = core.left;
    auto& r = core.right;
    for (int h = 0; h < n; ++h)
    {
        if (b.left.input()[h] != 0.0)
            l.active = true;
        if (b.right.input()[h] != 0.0)
            r.active = true;
        core.meterStereo (l, b.left.out[h]);
        core.meterStereo (r, b.right.out[h]);
        left[h] = (float) b.left.out[h];
        right[h] = (float) b.right.out[h];
    }
    core.leftOut = b.left.out[n - 1];
    core.rightOut = b.right.out[n - 1];
}

void BlockPath::monoRun (float* channel, int n) noexcept
{
    auto& b = *buffers;
    glideControls (n, false);
    for (int h = 0; h < n; ++h)
        b.left.hostIn[history + h] = channel[h];

    int m = n;
    if (core.resampling)
    {
        m = convertIn (n, false);
    }
    else
    {
        std::copy (b.left.input(), b.left.input() + n, b.left.coreIn);
        for (int i = 0; i < n; ++i)
            b.hostOf[i] = i;
    }

    if (m > 0)
        channelCore (m, false);
    restoreFilterControls (core.left, b.left, n);

    if (core.resampling)
        convertOut (n, m, false);
    else
        std::copy (b.left.coreOut + history, b.left.coreOut + history + n, b.left.out);

    for (int h = 0; h < n; ++h)
    {
        if (b.left.input()[h] != 0.0)
            core.left.active = true;
        core.meterMono (b.left.out[h]);
        channel[h] = (float) b.left.out[h];
    }
    core.leftOut = b.left.out[n - 1];
}

namespace
{
/** The rings as histories: their 32 samples oldest first, the stretch's appended behind. */
void loadRing (const double* ring, int ringIndex, double* historyOut) noexcept
{
    std::copy (ring + ringIndex, ring + ringIndex + ringSize, historyOut);
}

/** Back into the ring, each of the last 32 samples where the literal loop would have written it. */
void storeRing (double* ring, int ringIndex, const double* historyIn, int m) noexcept
{
    for (int q = 0; q < ringSize; ++q)
    {
        const int slot = (ringIndex + m + q) % ringSize;
        ring[slot] = ring[slot + ringSize] = historyIn[m + q];
    }
}

/** Sets the smoothed filter values of a host sample, which the literal filter reads from its channel. */
void filterControls (VantriceCore::Channel& c, const double* cutoff, const double* reso, const double* root,
                     int h) noexcept
{
    c.cutoff = cutoff[h];
    c.reso = reso[h];
    c.resoRoot = root[h];
}
} // namespace

void BlockPath::linkedCore (int m) noexcept
{
    auto& b = *buffers;
    auto& l = core.left;
    auto& r = core.right;
    const int type = l.filterType;
    const bool pre = type != filterOff && l.filterPre;
    const bool post = type != filterOff && !l.filterPre;
    const double* sinc = core.sincTable.getData();

    loadRing (l.dryRing, core.ringIndex, b.left.dry);
    loadRing (r.dryRing, core.ringIndex, b.right.dry);
    loadRing (l.crushRing, core.ringIndex, b.left.crush);
    loadRing (r.crushRing, core.ringIndex, b.right.crush);

    // The noise, the one hold clock, and a "Pre" filter on the plain input: serial. A hold left pending
    // by a standstill falls due in the first sample.
    int holds = 0;
    for (int i = 0; i < m; ++i)
    {
        const int h = b.hostOf[i];
        core.advanceNoise();
        b.noise[i] = core.noise;
        core.advanceHoldClock (l);

        double yl = b.left.coreIn[i], yr = b.right.coreIn[i];
        b.left.dry[ringSize + i] = yl;
        b.right.dry[ringSize + i] = yr;
        if (pre)
        {
            filterControls (l, b.left.cutoff, b.left.reso, b.left.root, h);
            filterControls (r, b.right.cutoff, b.right.reso, b.right.root, h);
            core.runFilter (l, yl, type);
            core.runFilter (r, yr, type);
        }
        b.left.crush[ringSize + i] = yl;
        b.right.crush[ringSize + i] = yr;

        if (core.holdTriggered)
        {
            core.holdTriggered = false;
            const int offset = (int) (core.holdFraction * VantriceCore::sincRowsPerSample);
            const double* taps = sinc + offset * VantriceCore::sincTaps;
            b.left.holdAt[holds] = i;
            b.left.holdFraction[holds] = core.holdFraction;
            b.left.holdJobs[holds] = { b.left.crush + i + 1, taps };
            b.right.holdJobs[holds] = { b.right.crush + i + 1, taps };
            ++holds;
        }
    }

    // Both channels' reads of every hold at once.
    std::copy (b.left.holdJobs, b.left.holdJobs + holds, b.jobs);
    std::copy (b.right.holdJobs, b.right.holdJobs + holds, b.jobs + holds);
    kernels->dots (b.jobs, 2 * holds, VantriceCore::sincTaps, b.results);

    // The steps sit on the same rows in both channels unless a link toggle left them apart.
    const bool inStep = l.stepWrite == r.stepWrite
                        && std::memcmp (l.stepPosition, r.stepPosition, sizeof (l.stepPosition)) == 0;

    // Preamp, clamp, quantiser and the start of each step: serial, for the held values.
    for (int i = 0, k = 0; i < m; ++i)
    {
        b.left.eventSlot[i] = b.right.eventSlot[i] = -1;
        if (k < holds && b.left.holdAt[k] == i)
        {
            const double p = b.preamp[b.hostOf[i]];
            core.noise = b.noise[i];
            const double vl = core.quantise (clampUnit (b.results[k] * p), l.quantScale);
            const double vr = core.quantise (clampUnit (b.results[holds + k] * p), l.quantScale);
            const double position = l.stepSpeed * b.left.holdFraction[k];

            b.left.eventSlot[i] = l.stepWrite;
            b.left.eventPosition[i] = position;
            b.left.eventHeight[i] = vl - l.heldValue;
            l.heldValue = vl;
            advance (l.stepWrite, VantriceCore::numStepSlots);

            b.right.eventSlot[i] = r.stepWrite;
            b.right.eventPosition[i] = position;
            b.right.eventHeight[i] = vr - r.heldValue;
            r.heldValue = vr;
            advance (r.stepWrite, VantriceCore::numStepSlots);
            ++k;
        }
        b.left.held[i] = l.heldValue;
        b.right.held[i] = r.heldValue;
    }
    core.noise = b.noise[m - 1];

    if (inStep)
    {
        kernels->stepSums ({ l.stepPosition, l.stepHeight, r.stepHeight, l.stepSpeed, b.left.eventSlot,
                             b.left.eventPosition, b.left.eventHeight, b.right.eventHeight, m, b.left.sum,
                             b.right.sum });
        std::copy (std::begin (l.stepPosition), std::end (l.stepPosition), r.stepPosition);
    }
    else
    {
        kernels->stepSums ({ l.stepPosition, l.stepHeight, nullptr, l.stepSpeed, b.left.eventSlot,
                             b.left.eventPosition, b.left.eventHeight, nullptr, m, b.left.sum, nullptr });
        kernels->stepSums ({ r.stepPosition, r.stepHeight, nullptr, l.stepSpeed, b.right.eventSlot,
                             b.right.eventPosition, b.right.eventHeight, nullptr, m, b.right.sum, nullptr });
    }

    // The held value plus the steps, a "Post" filter, then the mix: serial for the filters.
    for (int i = 0; i < m; ++i)
    {
        double ol = b.left.sum[i] + b.left.held[i];
        double orr = b.right.sum[i] + b.right.held[i];
        if (post)
        {
            const int h = b.hostOf[i];
            filterControls (l, b.left.cutoff, b.left.reso, b.left.root, h);
            filterControls (r, b.right.cutoff, b.right.reso, b.right.root, h);
            core.runFilter (l, ol, type);
            core.runFilter (r, orr, type);
        }
        b.left.sum[i] = ol;
        b.right.sum[i] = orr;
    }

    finishCore (m, true);
}

void BlockPath::channelCore (int m, bool stereo) noexcept
{
    auto& b = *buffers;
    const double* sinc = core.sincTable.getData();
    VantriceCore::Channel* channels[] = { &core.left, &core.right };
    Side* sides[] = { &b.left, &b.right };
    const int numSides = stereo ? 2 : 1;

    for (int s = 0; s < numSides; ++s)
    {
        loadRing (channels[s]->dryRing, core.ringIndex, sides[s]->dry);
        loadRing (channels[s]->crushRing, core.ringIndex, sides[s]->crush);
        sides[s]->numHolds = 0;
    }

    // The noise, each channel's hold clock, preamp, clamp and a "Pre" filter: serial.
    for (int i = 0; i < m; ++i)
    {
        const int h = b.hostOf[i];
        core.advanceNoise();
        b.noise[i] = core.noise;

        for (int s = 0; s < numSides; ++s)
        {
            auto& c = *channels[s];
            auto& side = *sides[s];
            core.holdTriggered = false;
            core.advanceHoldClock (c);

            const double x = side.coreIn[i];
            side.dry[ringSize + i] = x;
            double y = clampUnit (x * b.preamp[h]);
            if (c.filterType != filterOff && c.filterPre)
            {
                filterControls (c, side.cutoff, side.reso, side.root, h);
                core.runFilter (c, y, c.filterType);
            }
            side.crush[ringSize + i] = y;

            if (core.holdTriggered)
            {
                core.holdTriggered = false;
                const int offset = (int) (core.holdFraction * VantriceCore::sincRowsPerSample);
                side.holdAt[side.numHolds] = i;
                side.holdFraction[side.numHolds] = core.holdFraction;
                side.holdJobs[side.numHolds] = { side.crush + i + 1, sinc + offset * VantriceCore::sincTaps };
                ++side.numHolds;
            }
        }
    }

    int jobs = 0;
    for (int s = 0; s < numSides; ++s)
    {
        std::copy (sides[s]->holdJobs, sides[s]->holdJobs + sides[s]->numHolds, b.jobs + jobs);
        jobs += sides[s]->numHolds;
    }
    kernels->dots (b.jobs, jobs, VantriceCore::sincTaps, b.results);

    for (int s = 0, first = 0; s < numSides; first += sides[s]->numHolds, ++s)
    {
        auto& c = *channels[s];
        auto& side = *sides[s];
        for (int i = 0, k = 0; i < m; ++i)
        {
            side.eventSlot[i] = -1;
            if (k < side.numHolds && side.holdAt[k] == i)
            {
                core.noise = b.noise[i];
                const double v = core.quantise (b.results[first + k], c.quantScale);
                side.eventSlot[i] = c.stepWrite;
                side.eventPosition[i] = c.stepSpeed * side.holdFraction[k];
                side.eventHeight[i] = v - c.heldValue;
                c.heldValue = v;
                advance (c.stepWrite, VantriceCore::numStepSlots);
                ++k;
            }
            side.held[i] = c.heldValue;
        }
        kernels->stepSums ({ c.stepPosition, c.stepHeight, nullptr, c.stepSpeed, side.eventSlot,
                             side.eventPosition, side.eventHeight, nullptr, m, side.sum, nullptr });
    }
    core.noise = b.noise[m - 1];

    for (int i = 0; i < m; ++i)
    {
        for (int s = 0; s < numSides; ++s)
        {
            auto& c = *channels[s];
            auto& side = *sides[s];
            double o = side.sum[i] + side.held[i];
            if (c.filterType != filterOff && !c.filterPre)
            {
                filterControls (c, side.cutoff, side.reso, side.root, b.hostOf[i]);
                core.runFilter (c, o, c.filterType);
            }
            side.sum[i] = o;
        }
    }

    finishCore (m, stereo);
}

void BlockPath::finishCore (int m, bool stereo) noexcept
{
    auto& b = *buffers;
    VantriceCore::Channel* channels[] = { &core.left, &core.right };
    Side* sides[] = { &b.left, &b.right };

    for (int s = 0; s < (stereo ? 2 : 1); ++s)
    {
        auto& c = *channels[s];
        auto& side = *sides[s];

        // While converting, the dry side is taken behind the preamp and a "Pre" filter.
        const double* dry = core.resampling ? side.crush : side.dry;
        double* out = side.coreOut + history;
        for (int i = 0; i < m; ++i)
        {
            const int h = b.hostOf[i];
            const double d = dry[ringSize + i - dryAge];
            out[i] = ((side.sum[i] - d) * b.mix[h] + d) * b.volume[h] + 1e-20;
        }

        storeRing (c.dryRing, core.ringIndex, side.dry, m);
        storeRing (c.crushRing, core.ringIndex, side.crush, m);
    }
    core.ringIndex = (core.ringIndex + m) % ringSize;
}
