#include "dsp/SignalKernels.h"

#include "dsp/StepTable.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

// The kernels are written once, on the compilers' vector types, and compiled for each instruction set by
// inlining them into a function of that set. Lanes are independent: what one lane computes is the literal
// loop's expression for one value, term by term, so the lane count cannot change a bit. Neither set enables
// fused multiply-adds, and the build forbids contracting them.

#define VANTRICE_LANES inline __attribute__ ((always_inline))

// The helpers below pass wide vectors by value, which the compilers flag because such a call's ABI differs
// between instruction sets. They never leave this file and are always inlined, so no such call exists.
#pragma GCC diagnostic ignored "-Wpsabi"

namespace
{
constexpr double guard = 1e-20; // the literal loop's term against denormals, at every accumulating step
constexpr int numSlots = SignalKernels::numSlots;
constexpr int maxTaps = 65; // the converters' filters; the hold's sinc has 32

template <int W>
struct Lanes;

template <>
struct Lanes<2>
{
    typedef double Vec __attribute__ ((vector_size (16)));
    typedef long long Mask __attribute__ ((vector_size (16)));
};

template <>
struct Lanes<4>
{
    typedef double Vec __attribute__ ((vector_size (32)));
    typedef long long Mask __attribute__ ((vector_size (32)));
    typedef int Index __attribute__ ((vector_size (16)));
};

typedef double Pair __attribute__ ((vector_size (16)));

// Each row of the step table with its slope to the next, so that one load fetches both. The slope is the
// literal loop's difference of the two rows, computed once: the same bits.
alignas (16) Pair stepPairTable[StepTable::size];

const double zeroTaps[maxTaps]{};

template <int W>
VANTRICE_LANES typename Lanes<W>::Vec splat (double x) noexcept
{
    return typename Lanes<W>::Vec{} + x;
}

template <int W>
VANTRICE_LANES typename Lanes<W>::Vec load (const double* p) noexcept
{
    typename Lanes<W>::Vec v;
    std::memcpy (&v, p, sizeof (v));
    return v;
}

template <int W>
VANTRICE_LANES void store (double* p, const typename Lanes<W>::Vec& v) noexcept
{
    std::memcpy (p, &v, sizeof (v));
}

template <int W>
VANTRICE_LANES typename Lanes<W>::Vec select (const typename Lanes<W>::Mask& m,
                                              const typename Lanes<W>::Vec& yes,
                                              const typename Lanes<W>::Vec& no) noexcept
{
    using Mask = typename Lanes<W>::Mask;
    using Vec = typename Lanes<W>::Vec;
    return (Vec) (((Mask) yes & m) | ((Mask) no & ~m));
}

/** Rows of W values, one per lane, into W vectors of one value from each row. */
VANTRICE_LANES void transpose (Lanes<2>::Vec* v) noexcept
{
    const auto a = v[0], b = v[1];
    v[0] = __builtin_shufflevector (a, b, 0, 2);
    v[1] = __builtin_shufflevector (a, b, 1, 3);
}

VANTRICE_LANES void transpose (Lanes<4>::Vec* v) noexcept
{
    const auto a0 = __builtin_shufflevector (v[0], v[1], 0, 4, 2, 6);
    const auto a1 = __builtin_shufflevector (v[0], v[1], 1, 5, 3, 7);
    const auto a2 = __builtin_shufflevector (v[2], v[3], 0, 4, 2, 6);
    const auto a3 = __builtin_shufflevector (v[2], v[3], 1, 5, 3, 7);
    v[0] = __builtin_shufflevector (a0, a2, 0, 1, 4, 5);
    v[1] = __builtin_shufflevector (a1, a3, 0, 1, 4, 5);
    v[2] = __builtin_shufflevector (a0, a2, 2, 3, 6, 7);
    v[3] = __builtin_shufflevector (a1, a3, 2, 3, 6, 7);
}

/** The step table read at each lane's position: the row below it plus the fraction times the slope. */
VANTRICE_LANES Lanes<2>::Vec stepValues (const Lanes<2>::Vec& p) noexcept
{
    const int i0 = (int) p[0], i1 = (int) p[1];
    const Lanes<2>::Vec whole{ (double) i0, (double) i1 };
    const Pair q0 = stepPairTable[(unsigned) i0], q1 = stepPairTable[(unsigned) i1];
    const auto value = __builtin_shufflevector (q0, q1, 0, 2);
    const auto slope = __builtin_shufflevector (q0, q1, 1, 3);
    return value + (p - whole) * slope;
}

VANTRICE_LANES Lanes<4>::Vec stepValues (const Lanes<4>::Vec& p) noexcept
{
    const auto i = __builtin_convertvector(p, Lanes<4>::Index);
    const auto whole = __builtin_convertvector(i, Lanes<4>::Vec);
    const auto q02 =
        __builtin_shufflevector (stepPairTable[(unsigned) i[0]], stepPairTable[(unsigned) i[2]], 0, 1, 2, 3);
    const auto q13 =
        __builtin_shufflevector (stepPairTable[(unsigned) i[1]], stepPairTable[(unsigned) i[3]], 0, 1, 2, 3);
    const auto value = __builtin_shufflevector (q02, q13, 0, 4, 2, 6);
    const auto slope = __builtin_shufflevector (q02, q13, 1, 5, 3, 7);
    return value + (p - whole) * slope;
}

template <int W>
VANTRICE_LANES void dotsInLanes (const SignalKernels::DotJob* jobs, int numJobs, int taps,
                                 double* results) noexcept
{
    using Vec = typename Lanes<W>::Vec;
    // Two vectors of jobs at a time: each lane's sum is a chain of dependent adds, and a second chain
    // fills the time the first waits.
    constexpr int group = 2 * W;
    const Vec g = splat<W> (guard);

    for (int first = 0; first < numJobs; first += group)
    {
        const double* data[(std::size_t) group];
        const double* coefficients[(std::size_t) group];
        for (int j = 0; j < group; ++j)
        {
            const bool real = first + j < numJobs;
            data[j] = real ? jobs[first + j].data : zeroTaps;
            coefficients[j] = real ? jobs[first + j].coefficients : zeroTaps;
        }

        Vec a = {}, b = {};
        int k = 0;
        for (; k + W <= taps; k += W)
        {
            Vec xa[(std::size_t) W], ha[(std::size_t) W], xb[(std::size_t) W], hb[(std::size_t) W];
            for (int j = 0; j < W; ++j)
            {
                xa[j] = load<W> (data[j] + k);
                ha[j] = load<W> (coefficients[j] + k);
                xb[j] = load<W> (data[W + j] + k);
                hb[j] = load<W> (coefficients[W + j] + k);
            }
            transpose (xa);
            transpose (ha);
            transpose (xb);
            transpose (hb);
            for (int m = 0; m < W; ++m)
            {
                a = a + xa[m] * ha[m];
                b = b + xb[m] * hb[m];
                a = a + g;
                b = b + g;
            }
        }
        for (; k < taps; ++k)
        {
            Vec xa, ha, xb, hb;
            for (int j = 0; j < W; ++j)
            {
                xa[j] = data[j][k];
                ha[j] = coefficients[j][k];
                xb[j] = data[W + j][k];
                hb[j] = coefficients[W + j][k];
            }
            a = a + xa * ha;
            b = b + xb * hb;
            a = a + g;
            b = b + g;
        }

        for (int j = 0; j < W && first + j < numJobs; ++j)
            results[first + j] = a[j];
        for (int j = 0; j < W && first + W + j < numJobs; ++j)
            results[first + W + j] = b[j];
    }
}

template <int W>
VANTRICE_LANES bool allEqual (const typename Lanes<W>::Vec& a, const typename Lanes<W>::Vec& b) noexcept
{
    auto m = a == b;
    if constexpr (W == 4)
    {
        m = m & __builtin_shufflevector (m, m, 2, 3, 0, 1);
        m = m & __builtin_shufflevector (m, m, 1, 0, 3, 2);
    }
    else
    {
        m = m & __builtin_shufflevector (m, m, 1, 0);
    }
    return m[0] != 0;
}

/** One stretch of step sums, its fields held locally so that no store through them reloads them. */
template <int W, bool twoChannels>
struct StepLanes
{
    using Vec = typename Lanes<W>::Vec;
    using Mask = typename Lanes<W>::Mask;

    double* position;
    double* heightA;
    double* heightB;
    const int* eventSlot;
    const double* eventPosition;
    const double* eventHeightA;
    const double* eventHeightB;
    double* sumA;
    double* sumB;
    Vec speed, lastStart, silent, g, lane;

    VANTRICE_LANES explicit StepLanes (const SignalKernels::StepRun& run) noexcept
        : position (run.position)
        , heightA (run.heightA)
        , heightB (run.heightB)
        , eventSlot (run.eventSlot)
        , eventPosition (run.eventPosition)
        , eventHeightA (run.eventHeightA)
        , eventHeightB (run.eventHeightB)
        , sumA (run.sumA)
        , sumB (run.sumB)
        , speed (splat<W> (run.speed))
        , lastStart (splat<W> ((double) StepTable::size - run.speed - 2.0))
        , silent (splat<W> (StepTable::silentRow))
        , g (splat<W> (guard))
    {
        for (int i = 0; i < W; ++i)
            lane[i] = i;
    }

    /** The table values of a group of slots over `valid` samples, slots as lanes, turned so that samples
        are the lanes; the positions move on. With `starts`, a step may begin in one of them. */
    template <bool starts>
    VANTRICE_LANES void advanceGroup (int s, int t0, int valid, Vec* values) noexcept
    {
        Vec p = load<W> (position + s);
        for (int k = 0; k < W; ++k)
        {
            if (k >= valid)
            {
                values[k] = Vec{};
                continue;
            }
            if (starts)
            {
                const int slot = eventSlot[t0 + k];
                if (slot >= s && slot < s + W)
                    p = select<W> (lane == (double) (slot - s), splat<W> (eventPosition[t0 + k]), p);
            }
            values[k] = stepValues (p);
            p = select<W> (p >= lastStart, silent, p + speed);
        }
        store<W> (position + s, p);
        transpose (values);
    }

    /** A slot's height over the samples, the new step's from the sample it starts in. */
    VANTRICE_LANES void heightsOf (int slot, bool starts, int t0, int valid, Vec& ha, Vec& hb) noexcept
    {
        ha = splat<W> (heightA[slot]);
        if (twoChannels)
            hb = splat<W> (heightB[slot]);
        if (!starts)
            return;
        for (int k = 0; k < valid; ++k)
        {
            if (eventSlot[t0 + k] != slot)
                continue;
            const Mask from = lane >= (double) k;
            ha = select<W> (from, splat<W> (eventHeightA[t0 + k]), ha);
            if (twoChannels)
                hb = select<W> (from, splat<W> (eventHeightB[t0 + k]), hb);
        }
    }

    VANTRICE_LANES void batch (int t0, int valid) noexcept
    {
        std::uint64_t startsHere = 0;
        for (int k = 0; k < valid; ++k)
            if (eventSlot[t0 + k] >= 0)
                startsHere |= std::uint64_t (1) << eventSlot[t0 + k];

        Vec a = {}, b = {};
        for (int s = 0; s < numSlots; s += W)
        {
            Vec values[(std::size_t) W];
            if (((startsHere >> s) & ((1u << W) - 1)) != 0)
            {
                advanceGroup<true> (s, t0, valid, values);
            }
            else if (allEqual<W> (load<W> (position + s), silent))
            {
                // Slots resting on the silent row read 0.0 there and stay.
                for (int m = 0; m < W; ++m)
                    values[m] = Vec{};
            }
            else
            {
                advanceGroup<false> (s, t0, valid, values);
            }

            for (int m = 0; m < W; ++m)
            {
                Vec ha, hb;
                heightsOf (s + m, ((startsHere >> (s + m)) & 1) != 0, t0, valid, ha, hb);
                a = a + (values[m] * ha + g);
                if (twoChannels)
                    b = b + (values[m] * hb + g);
            }
        }

        for (int k = 0; k < valid; ++k)
        {
            sumA[t0 + k] = a[k];
            if (twoChannels)
                sumB[t0 + k] = b[k];
            const int slot = eventSlot[t0 + k];
            if (slot >= 0)
            {
                heightA[slot] = eventHeightA[t0 + k];
                if (twoChannels)
                    heightB[slot] = eventHeightB[t0 + k];
            }
        }
    }
};

template <int W, bool twoChannels>
VANTRICE_LANES void stepSumsInLanes (const SignalKernels::StepRun& run) noexcept
{
    static_assert (numSlots % W == 0, "slots fill whole vectors");

    // The slots' positions advance with slots as lanes, since each depends on its own last value; the
    // table values are then turned so that samples are the lanes, and each sample's sum runs in slot
    // order down its lane.
    StepLanes<W, twoChannels> lanes (run);
    int t0 = 0;
    for (; t0 + W <= run.numSamples; t0 += W)
        lanes.batch (t0, W);
    if (t0 < run.numSamples)
        lanes.batch (t0, run.numSamples - t0);
}

void dotsSse2 (const SignalKernels::DotJob* jobs, int numJobs, int taps, double* results) noexcept
{
    dotsInLanes<2> (jobs, numJobs, taps, results);
}

void stepSumsSse2 (const SignalKernels::StepRun& run) noexcept
{
    if (run.heightB != nullptr)
        stepSumsInLanes<2, true> (run);
    else
        stepSumsInLanes<2, false> (run);
}

__attribute__ ((target ("avx2"))) void dotsAvx2 (const SignalKernels::DotJob* jobs, int numJobs, int taps,
                                                 double* results) noexcept
{
    dotsInLanes<4> (jobs, numJobs, taps, results);
}

__attribute__ ((target ("avx2"))) void stepSumsAvx2 (const SignalKernels::StepRun& run) noexcept
{
    if (run.heightB != nullptr)
        stepSumsInLanes<4, true> (run);
    else
        stepSumsInLanes<4, false> (run);
}

bool fillStepPairs() noexcept
{
    const double* t = StepTable::values;
    for (int i = 0; i + 1 < StepTable::size; ++i)
        stepPairTable[i] = Pair{ t[i], t[i + 1] - t[i] };
    stepPairTable[StepTable::size - 1] = Pair{ t[StepTable::size - 1], 0.0 };
    return true;
}

bool stepPairsReady() noexcept
{
    static const bool ready = fillStepPairs();
    return ready;
}
} // namespace

const SignalKernels& SignalKernels::sse2() noexcept
{
    stepPairsReady();
    static const SignalKernels kernels{ "SSE2", dotsSse2, stepSumsSse2 };
    return kernels;
}

const SignalKernels* SignalKernels::avx2() noexcept
{
    stepPairsReady();
    static const SignalKernels kernels{ "AVX2", dotsAvx2, stepSumsAvx2 };
    return __builtin_cpu_supports ("avx2") ? &kernels : nullptr;
}

const SignalKernels& SignalKernels::best() noexcept
{
    const auto* wide = avx2();
    return wide != nullptr ? *wide : sse2();
}
