#include "dsp/BlockPath.h"

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
// The out-converter gives about one output per host sample; a stretch's count is off by at most a burst
// at either end.
constexpr int maxHostOutputs = maxHostRun + 2 * RateConverter::maxOutputsPerCall;
// The dry sample the mix takes: 21 core samples old, the delay of the crushed path.
constexpr int dryAge = 21;
// The envelope below which, with silent input, a channel goes dark: about -94 dB.
constexpr double activityFloor = 2e-5;

static_assert (SignalKernels::numSlots == VantriceCore::numStepSlots, "the kernels' slots are the core's");

// The serial passes repeat the literal loop's expressions term for term; the differential test holds
// the two to the same bits.

inline bool sameBits (double a, double b) noexcept { return std::memcmp (&a, &b, sizeof (a)) == 0; }

/** A state-variable filter's four values, held in registers for a pass. */
struct Filter
{
    double low, high, band, notch;

    explicit Filter (const VantriceCore::Channel& c) noexcept
        : low (c.low)
        , high (c.high)
        , band (c.band)
        , notch (c.notch)
    {
    }

    void storeTo (VantriceCore::Channel& c) const noexcept
    {
        c.low = low;
        c.high = high;
        c.band = band;
        c.notch = notch;
    }

    double run (double u, int type, double f, double q, double root) noexcept
    {
        constexpr double e = 1e-20;
        const double s = u * root;
        const double l1 = f * band + low + e;
        const double b1 = (s - l1 - q * band + e) * f + band + e;
        low = f * b1 + l1 + e;
        high = s - low - q * b1 + e;
        band = f * high + b1 + e;
        notch = high + low + e;
        switch (type)
        {
            case 0:
                return low;
            case 1:
                return band;
            case 2:
                return high;
            case 3:
                return notch;
            default:
                return u;
        }
    }
};

/** What a control's array of per-sample values holds from an earlier stretch, if one value throughout. */
struct Filled
{
    double value = 0.0;
    int length = 0;
};

/** `n` copies of a value, unless the array holds them already. */
inline void fill (double* out, int n, double value, Filled& filled) noexcept
{
    if (filled.length >= n && sameBits (filled.value, value))
        return;
    std::fill (out, out + n, value);
    filled = { value, n };
}

/** The literal loop's glide, per sample, into `out`. A glide at its fixed point gives the same value in
    every sample, so it is written without being run; returns whether it was. */
inline bool glide (double& value, double target, double coeff, double* out, int n, Filled& filled) noexcept
{
    const double next = value - ((value - target) * coeff + 1e-20);
    if (sameBits (next, value))
    {
        fill (out, n, value, filled);
        return true;
    }
    filled.length = 0;
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

/** What the literal loop leaves in a converter's result buffers: output j of a call lands at place j, so
    each place holds the output of the last call that reached it. `inputOf` gives each output's call. */
void keepLastResults (const int* inputOf, int total, const double* a, const double* b, double* resultA,
                      double* resultB) noexcept
{
    // No call of the stretch reaches past the most outputs any of them gave.
    int most = 0;
    for (int q = 0, run = 0; q < total; ++q)
    {
        run = q > 0 && inputOf[q] == inputOf[q - 1] ? run + 1 : 1;
        most = std::max (most, run);
    }

    int reached = 0;
    for (int q = total - 1; q >= 0 && reached < most;)
    {
        int first = q;
        while (first > 0 && inputOf[first - 1] == inputOf[q])
            --first;
        for (int j = reached; j <= q - first; ++j)
        {
            resultA[j] = a[first + j];
            if (b != nullptr)
                resultB[j] = b[first + j];
        }
        reached = std::max (reached, q - first + 1);
        q = first - 1;
    }
}

/** The hold clock of a channel over a stretch, the reciprocal of its rate taken once: the same bits. */
struct HoldClock
{
    double phase, period;

    explicit HoldClock (const VantriceCore::Channel& c) noexcept
        : phase (c.holdPhase)
        , period (1.0 / c.rate)
    {
    }

    /** Whether a hold falls due, and its fraction if so. */
    bool tick (double& fraction) noexcept
    {
        phase = phase - 1.0;
        if (phase > 0.0)
            return false;
        fraction = -phase;
        phase = period + phase + 1e-20;
        return true;
    }
};

/** The core's noise over a stretch. */
struct Noise
{
    juce::uint32 a, b;
    float scale;

    float next() noexcept
    {
        const juce::uint32 old = b;
        a = a ^ old;
        b = a + old;
        return (float) static_cast<juce::int32> (old) * scale;
    }
};
} // namespace

/** One channel's scratch for a stretch. Histories hold what the rings held before the stretch, then
    the stretch's own samples, so that every read of the past is one contiguous stretch. */
struct BlockPath::Side
{
    double cutoff[maxHostRun], reso[maxHostRun], root[maxHostRun];
    Filled filledCutoff, filledReso, filledRoot;
    // The converters' histories, then the stretch's samples, and room for a vector read past the last.
    double in[history + maxHostRun + 4]; // host samples
    double coreIn[maxCoreRun];
    double dry[ringSize + maxCoreRun];
    double crush[ringSize + maxCoreRun];
    double held[maxCoreRun];
    double sum[maxCoreRun];
    double coreOut[history + maxCoreRun + 4]; // mixed core samples
    double hostOut[maxHostOutputs];
    double out[maxHostRun];

    int numHolds;
    int holdAt[maxCoreRun];
    double holdFraction[maxCoreRun];

    int eventSlot[maxCoreRun];
    double eventPosition[maxCoreRun];
    double eventHeight[maxCoreRun];
};

struct BlockPath::Buffers
{
    Side left, right;
    double preamp[maxHostRun], mix[maxHostRun], volume[maxHostRun];
    Filled filledPreamp, filledMix, filledVolume;
    float noise[maxCoreRun];
    int hostOf[maxCoreRun]; // the host sample each core sample runs in

    // Both channels' histories side by side, for the dots that take both with one filter.
    double crushPairs[2 * (ringSize + maxCoreRun)];
    double inPairs[2 * (history + maxHostRun)];

    // For either converter's outputs: the input each follows, and its phase.
    int inputOf[std::max (maxCoreRun, maxHostOutputs)];
    int phases[std::max (maxCoreRun, maxHostOutputs)];
    // The sinc reads: a hold in each channel per core sample at most.
    SignalKernels::DotJob jobs[2 * maxCoreRun];
    SignalKernels::PairJob pairJobs[maxCoreRun];
    double results[2 * maxCoreRun];
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
    const double floorLevel = activityFloor * (1.0 + 1e-9) / std::pow (core.meterDecay * (1.0 - 1e-15), n);
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

    glide (core.preamp, core.preampTarget, c, b.preamp, n, b.filledPreamp);
    glide (l.cutoff, l.cutoffTarget, c, b.left.cutoff, n, b.left.filledCutoff);
    glide (r.cutoff, r.cutoffTarget, c, b.right.cutoff, n, b.right.filledCutoff);
    const bool leftResoFixed = glide (l.reso, l.resoTarget, c, b.left.reso, n, b.left.filledReso);
    const bool rightResoFixed = glide (r.reso, r.resoTarget, c, b.right.reso, n, b.right.filledReso);
    glide (core.mix, core.mixTarget, c, b.mix, n, b.filledMix);
    glide (core.volume, core.volumeTarget, c, b.volume, n, b.filledVolume);

    auto roots = [n] (VantriceCore::Channel& ch, Side& side, bool fixed)
    {
        if (fixed)
        {
            ch.resoRoot = std::sqrt (ch.reso);
            fill (side.root, n, ch.resoRoot, side.filledRoot);
            return;
        }
        side.filledRoot.length = 0;
        for (int i = 0; i < n; ++i)
            side.root[i] = std::sqrt (side.reso[i]);
        ch.resoRoot = side.root[n - 1];
    };
    // Mono takes the left root alone.
    if (stereo)
        roots (r, b.right, rightResoFixed);
    roots (l, b.left, leftResoFixed);
}

int BlockPath::convertIn (int n, bool stereo) noexcept
{
    // Each output's dot reaches from its input back over the 64 before it: the histories hold those 64
    // in front of the stretch's samples, so an output after input h starts at h.
    auto& b = *buffers;
    auto& in = *core.left.inConv;
    const int total = in.schedule (n, b.hostOf, b.phases);
    in.copyHistory (b.left.in);
    if (stereo)
    {
        // Outputs spread wide read both channels side by side.
        core.right.inConv->copyHistory (b.right.in);
        core.right.inConv->followSchedule (in);
        in.copyHistory (b.inPairs, 2);
        core.right.inConv->copyHistory (b.inPairs + 1, 2);
    }
    kernels->phaseDots ({ in.getTapMajor(), in.getTapStride(), RateConverter::numTaps, b.phases, b.hostOf,
                          b.left.in, stereo ? b.right.in : nullptr, stereo ? b.inPairs : nullptr, total,
                          b.left.coreIn, stereo ? b.right.coreIn : nullptr });

    in.pushBlock (b.left.in, n);
    if (stereo)
        core.right.inConv->pushBlock (b.right.in, n);

    // The result buffers keep, at each place, the last call's output that reached it.
    keepLastResults (b.hostOf, total, b.left.coreIn, stereo ? b.right.coreIn : nullptr, core.left.inResult,
                     core.right.inResult);
    return total;
}

void BlockPath::convertOut (int n, int m, bool stereo) noexcept
{
    auto& b = *buffers;
    auto& out = *core.left.outConv;
    const int total = out.schedule (m, b.inputOf, b.phases);
    jassert (total <= maxHostOutputs);
    out.copyHistory (b.left.coreOut);
    if (stereo)
    {
        core.right.outConv->copyHistory (b.right.coreOut);
        core.right.outConv->followSchedule (out);
    }

    kernels->phaseDots ({ out.getTapMajor(), out.getTapStride(), RateConverter::numTaps, b.phases, b.inputOf,
                          b.left.coreOut, stereo ? b.right.coreOut : nullptr, nullptr, total, b.left.hostOut,
                          stereo ? b.right.hostOut : nullptr });

    out.pushBlock (b.left.coreOut, m);
    if (stereo)
        core.right.outConv->pushBlock (b.right.coreOut, m);

    // The FIFO as the literal loop runs it: a core sample's outputs go in during its host sample, before
    // that host sample takes one out.
    auto& l = core.left;
    auto& r = core.right;
    for (int h = 0, q = 0; h < n; ++h)
    {
        for (; q < total && b.hostOf[b.inputOf[q]] == h; ++q)
        {
            l.fifo[l.fifoWrite] = b.left.hostOut[q];
            advance (l.fifoWrite, VantriceCore::fifoSize);
            if (stereo)
            {
                r.fifo[r.fifoWrite] = b.right.hostOut[q];
                advance (r.fifoWrite, VantriceCore::fifoSize);
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

    // The result buffers keep, at each place, the last call's output that reached it.
    keepLastResults (b.inputOf, total, b.left.hostOut, stereo ? b.right.hostOut : nullptr, l.outResult,
                     r.outResult);
}

void BlockPath::stereoRun (float* left, float* right, int n) noexcept
{
    auto& b = *buffers;
    glideControls (n, true);

    int m = n;
    if (core.resampling)
    {
        for (int h = 0; h < n; ++h)
        {
            b.left.in[history + h] = b.inPairs[2 * (history + h)] = left[h];
            b.right.in[history + h] = b.inPairs[2 * (history + h) + 1] = right[h];
        }
        m = convertIn (n, true);
    }
    else
    {
        for (int h = 0; h < n; ++h)
        {
            b.left.coreIn[h] = left[h];
            b.right.coreIn[h] = right[h];
            b.hostOf[h] = h;
        }
    }

    if (m > 0)
    {
        if (core.linked)
            linkedCore (m);
        else
            channelCore (m, true);
        finishCore (m, true);
    }

    if (core.resampling)
        convertOut (n, m, true);

    // Activity from the input, meters from the output; the activity the linked stage saw is settled by
    // the stretch's guard.
    auto& l = core.left;
    auto& r = core.right;
    const double decay = core.meterDecay;
    double peakL = l.meterPeak, peakR = r.meterPeak, envL = l.envelope, envR = r.envelope;
    bool activeL = l.active, activeR = r.active;
    for (int h = 0; h < n; ++h)
    {
        if (left[h] != 0.0f)
            activeL = true;
        if (right[h] != 0.0f)
            activeR = true;

        const double ol = b.left.out[h], orr = b.right.out[h];
        const double ml = core.meterPosition (ol), mr = core.meterPosition (orr);
        if (ml > peakL)
            peakL = ml;
        if (mr > peakR)
            peakR = mr;
        peakL = decay * peakL + 1e-20;
        peakR = decay * peakR + 1e-20;
        envL = (decay + 1e-20) * envL;
        envR = (decay + 1e-20) * envR;
        if (std::abs (ol) > envL)
            envL = std::abs (ol);
        if (std::abs (orr) > envR)
            envR = std::abs (orr);
        if (activityFloor > envL)
            activeL = false;
        if (activityFloor > envR)
            activeR = false;

        left[h] = (float) ol;
        right[h] = (float) orr;
    }
    l.meterPeak = peakL;
    r.meterPeak = peakR;
    l.envelope = envL;
    r.envelope = envR;
    l.active = activeL;
    r.active = activeR;
    core.leftOut = b.left.out[n - 1];
    core.rightOut = b.right.out[n - 1];
}

void BlockPath::monoRun (float* channel, int n) noexcept
{
    auto& b = *buffers;
    glideControls (n, false);

    int m = n;
    if (core.resampling)
    {
        for (int h = 0; h < n; ++h)
            b.left.in[history + h] = channel[h];
        m = convertIn (n, false);
    }
    else
    {
        for (int h = 0; h < n; ++h)
        {
            b.left.coreIn[h] = channel[h];
            b.hostOf[h] = h;
        }
    }

    if (m > 0)
    {
        channelCore (m, false);
        finishCore (m, false);
    }

    if (core.resampling)
        convertOut (n, m, false);

    // One meter for both sides, and a signed envelope test.
    auto& l = core.left;
    const double decay = core.meterDecay;
    double peak = l.meterPeak, env = l.envelope;
    bool active = l.active;
    for (int h = 0; h < n; ++h)
    {
        if (channel[h] != 0.0f)
            active = true;
        const double o = b.left.out[h];
        const double mp = core.meterPosition (o);
        if (mp > peak)
            peak = mp;
        peak = decay * peak + 1e-20;
        env = (decay + 1e-20) * env;
        if (o > env)
            env = o;
        if (activityFloor > env)
            active = false;
        channel[h] = (float) o;
    }
    l.meterPeak = core.right.meterPeak = peak;
    l.envelope = env;
    l.active = active;
    core.leftOut = b.left.out[n - 1];
}

namespace
{
/** A ring as a history: its 32 samples oldest first, at every `stride`-th place. */
void loadRing (const double* ring, int ringIndex, double* historyOut, int stride = 1) noexcept
{
    for (int k = 0; k < ringSize; ++k)
        historyOut[k * stride] = ring[ringIndex + k];
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

bool sameSteps (const VantriceCore::Channel& a, const VantriceCore::Channel& b) noexcept
{
    return a.stepWrite == b.stepWrite
           && std::memcmp (a.stepPosition, b.stepPosition, sizeof (a.stepPosition)) == 0;
}
} // namespace

void BlockPath::linkedCore (int m) noexcept
{
    auto& b = *buffers;
    auto& l = core.left;
    auto& r = core.right;
    const int type = l.filterType;
    const bool pre = type != VantriceCore::filterOff && l.filterPre;
    const bool post = type != VantriceCore::filterOff && !l.filterPre;
    const double* sinc = core.sincTable.getData();
    const bool inStep = sameSteps (l, r);

    loadRing (l.dryRing, core.ringIndex, b.left.dry);
    loadRing (r.dryRing, core.ringIndex, b.right.dry);
    loadRing (l.crushRing, core.ringIndex, b.left.crush);
    loadRing (r.crushRing, core.ringIndex, b.right.crush);
    loadRing (l.crushRing, core.ringIndex, b.crushPairs, 2);
    loadRing (r.crushRing, core.ringIndex, b.crushPairs + 1, 2);

    // The noise, the one hold clock, and a "Pre" filter on the plain input: serial. A hold left pending
    // by a standstill falls due in the first sample.
    {
        Noise noise{ core.noiseA, core.noiseB, core.noiseScale };
        HoldClock clock (l);
        Filter fl (l), fr (r);
        bool pending = core.holdTriggered;
        double fraction = core.holdFraction;
        int holds = 0;
        for (int i = 0; i < m; ++i)
        {
            b.noise[i] = noise.next();
            const bool fired = clock.tick (fraction);

            double yl = b.left.coreIn[i], yr = b.right.coreIn[i];
            b.left.dry[ringSize + i] = yl;
            b.right.dry[ringSize + i] = yr;
            if (pre)
            {
                const int h = b.hostOf[i];
                yl = fl.run (yl, type, b.left.cutoff[h], b.left.reso[h], b.left.root[h]);
                yr = fr.run (yr, type, b.right.cutoff[h], b.right.reso[h], b.right.root[h]);
            }
            b.left.crush[ringSize + i] = yl;
            b.right.crush[ringSize + i] = yr;
            b.crushPairs[2 * (ringSize + i)] = yl;
            b.crushPairs[2 * (ringSize + i) + 1] = yr;

            if (fired || pending)
            {
                pending = false;
                b.left.holdAt[holds] = i;
                b.left.holdFraction[holds] = fraction;
                ++holds;
            }
        }
        b.left.numHolds = holds;
        core.noiseA = noise.a;
        core.noiseB = noise.b;
        core.noise = b.noise[m - 1];
        l.holdPhase = clock.phase;
        core.holdTriggered = false;
        core.holdFraction = fraction;
        fl.storeTo (l);
        fr.storeTo (r);
    }

    // Both channels' reads of every hold at once, with the same filter.
    const int holds = b.left.numHolds;
    for (int k = 0; k < holds; ++k)
    {
        const int offset = (int) (b.left.holdFraction[k] * VantriceCore::sincRowsPerSample);
        b.pairJobs[k] = { b.crushPairs + 2 * (b.left.holdAt[k] + 1), sinc + offset * VantriceCore::sincTaps };
    }
    kernels->pairDots (b.pairJobs, holds, VantriceCore::sincTaps, b.results);

    // Preamp, clamp, the quantiser with the left scale and the start of each step: serial.
    for (int i = 0, k = 0; i < m; ++i)
    {
        b.left.eventSlot[i] = b.right.eventSlot[i] = -1;
        if (k < holds && b.left.holdAt[k] == i)
        {
            const double p = b.preamp[b.hostOf[i]];
            const double vl = VantriceCore::quantise (VantriceCore::clampUnit (b.results[2 * k] * p),
                                                      l.quantScale, b.noise[i]);
            const double vr = VantriceCore::quantise (VantriceCore::clampUnit (b.results[2 * k + 1] * p),
                                                      l.quantScale, b.noise[i]);
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

    // Steps that sit on the same rows in both channels share their table reads; a link toggle may have
    // left them apart.
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

    // The held value plus the steps, and a "Post" filter: serial.
    Filter fl (l), fr (r);
    for (int i = 0; i < m; ++i)
    {
        double ol = b.left.sum[i] + b.left.held[i];
        double orr = b.right.sum[i] + b.right.held[i];
        if (post)
        {
            const int h = b.hostOf[i];
            ol = fl.run (ol, type, b.left.cutoff[h], b.left.reso[h], b.left.root[h]);
            orr = fr.run (orr, type, b.right.cutoff[h], b.right.reso[h], b.right.root[h]);
        }
        b.left.sum[i] = ol;
        b.right.sum[i] = orr;
    }
    fl.storeTo (l);
    fr.storeTo (r);
}

void BlockPath::channelCore (int m, bool stereo) noexcept
{
    auto& b = *buffers;
    const double* sinc = core.sincTable.getData();
    VantriceCore::Channel* channels[] = { &core.left, &core.right };
    Side* sides[] = { &b.left, &b.right };
    const int numSides = stereo ? 2 : 1;
    const bool sameRows =
        stereo && sameSteps (core.left, core.right) && sameBits (core.left.stepSpeed, core.right.stepSpeed);

    for (int s = 0; s < numSides; ++s)
    {
        loadRing (channels[s]->dryRing, core.ringIndex, sides[s]->dry);
        loadRing (channels[s]->crushRing, core.ringIndex, sides[s]->crush);
        if (stereo)
            loadRing (channels[s]->crushRing, core.ringIndex, b.crushPairs + s, 2);
    }

    // The noise, each channel's hold clock, preamp, clamp and a "Pre" filter: serial.
    {
        Noise noise{ core.noiseA, core.noiseB, core.noiseScale };
        HoldClock clocks[] = { HoldClock (core.left), HoldClock (core.right) };
        Filter filters[] = { Filter (core.left), Filter (core.right) };
        double lastFraction = core.holdFraction;
        for (int s = 0; s < numSides; ++s)
            sides[s]->numHolds = 0;

        for (int i = 0; i < m; ++i)
        {
            const int h = b.hostOf[i];
            b.noise[i] = noise.next();
            for (int s = 0; s < numSides; ++s)
            {
                auto& c = *channels[s];
                auto& side = *sides[s];
                double fraction = 0.0;
                const bool fired = clocks[s].tick (fraction);

                const double x = side.coreIn[i];
                side.dry[ringSize + i] = x;
                double y = VantriceCore::clampUnit (x * b.preamp[h]);
                if (c.filterType != VantriceCore::filterOff && c.filterPre)
                    y = filters[s].run (y, c.filterType, side.cutoff[h], side.reso[h], side.root[h]);
                side.crush[ringSize + i] = y;
                if (stereo)
                    b.crushPairs[2 * (ringSize + i) + s] = y;

                if (fired)
                {
                    side.holdAt[side.numHolds] = i;
                    side.holdFraction[side.numHolds] = fraction;
                    ++side.numHolds;
                    lastFraction = fraction;
                }
            }
        }

        core.noiseA = noise.a;
        core.noiseB = noise.b;
        core.noise = b.noise[m - 1];
        core.holdTriggered = false;
        core.holdFraction = lastFraction;
        for (int s = 0; s < numSides; ++s)
        {
            channels[s]->holdPhase = clocks[s].phase;
            filters[s].storeTo (*channels[s]);
        }
    }

    // Channels with the same hold clock and steps on the same rows read with the same filters and share
    // their table reads.
    const bool twins =
        sameRows && b.left.numHolds == b.right.numHolds
        && std::memcmp (b.left.holdAt, b.right.holdAt, sizeof (int) * (size_t) b.left.numHolds) == 0
        && std::memcmp (b.left.holdFraction, b.right.holdFraction, sizeof (double) * (size_t) b.left.numHolds)
               == 0;

    const double* values[2] = { b.results, b.results };
    int stride = 1;
    if (twins)
    {
        for (int k = 0; k < b.left.numHolds; ++k)
        {
            const int offset = (int) (b.left.holdFraction[k] * VantriceCore::sincRowsPerSample);
            b.pairJobs[k] = { b.crushPairs + 2 * (b.left.holdAt[k] + 1),
                              sinc + offset * VantriceCore::sincTaps };
        }
        kernels->pairDots (b.pairJobs, b.left.numHolds, VantriceCore::sincTaps, b.results);
        values[1] = b.results + 1;
        stride = 2;
    }
    else
    {
        int jobs = 0;
        for (int s = 0; s < numSides; ++s)
        {
            values[s] = b.results + jobs;
            for (int k = 0; k < sides[s]->numHolds; ++k, ++jobs)
            {
                const int offset = (int) (sides[s]->holdFraction[k] * VantriceCore::sincRowsPerSample);
                b.jobs[jobs] = { sides[s]->crush + sides[s]->holdAt[k] + 1,
                                 sinc + offset * VantriceCore::sincTaps };
            }
        }
        kernels->dots (b.jobs, jobs, VantriceCore::sincTaps, b.results);
    }

    // Each channel's quantiser and the start of its steps: serial.
    for (int s = 0; s < numSides; ++s)
    {
        auto& c = *channels[s];
        auto& side = *sides[s];
        for (int i = 0, k = 0; i < m; ++i)
        {
            side.eventSlot[i] = -1;
            if (k < side.numHolds && side.holdAt[k] == i)
            {
                const double v = VantriceCore::quantise (values[s][stride * k], c.quantScale, b.noise[i]);
                side.eventSlot[i] = c.stepWrite;
                side.eventPosition[i] = c.stepSpeed * side.holdFraction[k];
                side.eventHeight[i] = v - c.heldValue;
                c.heldValue = v;
                advance (c.stepWrite, VantriceCore::numStepSlots);
                ++k;
            }
            side.held[i] = c.heldValue;
        }
    }

    if (twins)
    {
        auto& l = core.left;
        kernels->stepSums ({ l.stepPosition, l.stepHeight, core.right.stepHeight, l.stepSpeed,
                             b.left.eventSlot, b.left.eventPosition, b.left.eventHeight, b.right.eventHeight,
                             m, b.left.sum, b.right.sum });
        std::copy (std::begin (l.stepPosition), std::end (l.stepPosition), core.right.stepPosition);
    }
    else
    {
        for (int s = 0; s < numSides; ++s)
        {
            auto& c = *channels[s];
            auto& side = *sides[s];
            kernels->stepSums ({ c.stepPosition, c.stepHeight, nullptr, c.stepSpeed, side.eventSlot,
                                 side.eventPosition, side.eventHeight, nullptr, m, side.sum, nullptr });
        }
    }

    // The held value plus the steps, and a "Post" filter: serial.
    Filter filters[] = { Filter (core.left), Filter (core.right) };
    for (int i = 0; i < m; ++i)
    {
        const int h = b.hostOf[i];
        for (int s = 0; s < numSides; ++s)
        {
            auto& c = *channels[s];
            auto& side = *sides[s];
            double o = side.sum[i] + side.held[i];
            if (c.filterType != VantriceCore::filterOff && !c.filterPre)
                o = filters[s].run (o, c.filterType, side.cutoff[h], side.reso[h], side.root[h]);
            side.sum[i] = o;
        }
    }
    for (int s = 0; s < numSides; ++s)
        filters[s].storeTo (*channels[s]);
}

void BlockPath::finishCore (int m, bool stereo) noexcept
{
    auto& b = *buffers;
    VantriceCore::Channel* channels[] = { &core.left, &core.right };
    Side* sides[] = { &b.left, &b.right };

    for (int s = 0; s < (stereo ? 2 : 1); ++s)
    {
        auto& side = *sides[s];

        // The mix, into what comes next: the host's samples, or the out-converter's inputs behind their
        // history. While converting, the dry side is taken behind the preamp and a "Pre" filter.
        const double* dry = core.resampling ? side.crush : side.dry;
        double* out = core.resampling ? side.coreOut + history : side.out;
        for (int i = 0; i < m; ++i)
        {
            const int h = b.hostOf[i];
            const double d = dry[ringSize + i - dryAge];
            out[i] = ((side.sum[i] - d) * b.mix[h] + d) * b.volume[h] + 1e-20;
        }

        storeRing (channels[s]->dryRing, core.ringIndex, side.dry, m);
        storeRing (channels[s]->crushRing, core.ringIndex, side.crush, m);
    }
    core.ringIndex = (core.ringIndex + m) % ringSize;
}
