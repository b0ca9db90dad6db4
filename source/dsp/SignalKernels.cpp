#include "dsp/SignalKernels.h"

#include "dsp/StepTable.h"

#include <immintrin.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

// Two sets of the same kernels: SSE2, which every x86-64 processor runs, on the compilers' vector types,
// two lanes wide; and AVX2, four lanes wide, on intrinsics, compiled for that set alone and chosen at run
// time. What a lane computes is the literal loop's expression for one value, term by term, in the same
// order, so neither the set nor the lane a value falls in can change a bit. Neither set enables fused
// multiply-adds, and the build forbids contracting them.

#define VANTRICE_INLINE inline __attribute__ ((always_inline))
#define VANTRICE_AVX2 __attribute__ ((target ("avx2")))

// The generic helpers pass vectors by value, which the compilers flag because such a call's ABI differs
// between instruction sets. They never leave this file and are always inlined, so no such call exists.
#pragma GCC diagnostic ignored "-Wpsabi"

namespace
{
constexpr double guard = 1e-20; // the literal loop's term against denormals, at every accumulating step
constexpr int numSlots = SignalKernels::numSlots;
constexpr int maxTaps = 65; // the converters' filters; the hold's sinc has 32

// Each row of the step table beside its slope to the next, so that one load fetches both. The slope is
// the literal loop's difference of the two rows, computed once: the same bits.
alignas (16) double stepPairs[2 * StepTable::size];

// What the lanes of a group without a job of their own read: enough for a pair job of the longest filter.
const double zeroTaps[2 * maxTaps]{};

//==============================================================================
// SSE2: the compilers' two-lane vectors.

typedef double Vec2 __attribute__ ((vector_size (16)));
typedef long long Mask2 __attribute__ ((vector_size (16)));

VANTRICE_INLINE Vec2 splat2 (double x) noexcept { return Vec2{ x, x }; }

VANTRICE_INLINE Vec2 load2 (const double* p) noexcept
{
    Vec2 v;
    std::memcpy (&v, p, sizeof (v));
    return v;
}

VANTRICE_INLINE void store2 (double* p, const Vec2& v) noexcept { std::memcpy (p, &v, sizeof (v)); }

VANTRICE_INLINE Vec2 select2 (const Mask2& m, const Vec2& yes, const Vec2& no) noexcept
{
    return (Vec2) (((Mask2) yes & m) | ((Mask2) no & ~m));
}

/** Rows of two values, one per lane, into two vectors of one value from each row. */
VANTRICE_INLINE void transpose2 (Vec2& a, Vec2& b) noexcept
{
    const Vec2 x = a;
    a = __builtin_shufflevector (x, b, 0, 2);
    b = __builtin_shufflevector (x, b, 1, 3);
}

/** The step table read at each lane's position: the row below it plus the fraction times the slope. */
VANTRICE_INLINE Vec2 stepValues2 (const Vec2& p) noexcept
{
    const int i0 = (int) p[0], i1 = (int) p[1];
    const Vec2 whole{ (double) i0, (double) i1 };
    Vec2 value = load2 (stepPairs + 2 * (unsigned) i0), slope = load2 (stepPairs + 2 * (unsigned) i1);
    transpose2 (value, slope);
    return value + (p - whole) * slope;
}

void dotsSse2 (const SignalKernels::DotJob* jobs, int numJobs, int taps, double* results) noexcept
{
    // Two vectors of jobs at a time: each lane's sum is a chain of dependent adds, and a second chain
    // fills the time the first waits.
    const Vec2 g = splat2 (guard);
    for (int first = 0; first < numJobs; first += 4)
    {
        const double* x[4];
        const double* h[4];
        for (int j = 0; j < 4; ++j)
        {
            const bool real = first + j < numJobs;
            x[j] = real ? jobs[first + j].data : zeroTaps;
            h[j] = real ? jobs[first + j].coefficients : zeroTaps;
        }

        Vec2 a{}, b{};
        int k = 0;
        for (; k + 2 <= taps; k += 2)
        {
            Vec2 xa0 = load2 (x[0] + k), xa1 = load2 (x[1] + k), ha0 = load2 (h[0] + k),
                 ha1 = load2 (h[1] + k);
            Vec2 xb0 = load2 (x[2] + k), xb1 = load2 (x[3] + k), hb0 = load2 (h[2] + k),
                 hb1 = load2 (h[3] + k);
            transpose2 (xa0, xa1);
            transpose2 (ha0, ha1);
            transpose2 (xb0, xb1);
            transpose2 (hb0, hb1);
            a = a + xa0 * ha0;
            b = b + xb0 * hb0;
            a = a + g;
            b = b + g;
            a = a + xa1 * ha1;
            b = b + xb1 * hb1;
            a = a + g;
            b = b + g;
        }
        for (; k < taps; ++k)
        {
            a = a + Vec2{ x[0][k], x[1][k] } * Vec2{ h[0][k], h[1][k] };
            b = b + Vec2{ x[2][k], x[3][k] } * Vec2{ h[2][k], h[3][k] };
            a = a + g;
            b = b + g;
        }

        const double sums[4] = { a[0], a[1], b[0], b[1] };
        for (int j = 0; j < 4 && first + j < numJobs; ++j)
            results[first + j] = sums[j];
    }
}

void pairDotsSse2 (const SignalKernels::PairJob* jobs, int numJobs, int taps, double* results) noexcept
{
    // The two signals of a job are the two lanes; two jobs at a time.
    const Vec2 g = splat2 (guard);
    for (int first = 0; first < numJobs; first += 2)
    {
        const bool second = first + 1 < numJobs;
        const double* xa = jobs[first].data;
        const double* ha = jobs[first].coefficients;
        const double* xb = second ? jobs[first + 1].data : zeroTaps;
        const double* hb = second ? jobs[first + 1].coefficients : zeroTaps;

        Vec2 a{}, b{};
        for (int k = 0; k < taps; ++k)
        {
            a = a + load2 (xa + 2 * k) * splat2 (ha[k]);
            b = b + load2 (xb + 2 * k) * splat2 (hb[k]);
            a = a + g;
            b = b + g;
        }
        store2 (results + 2 * first, a);
        if (second)
            store2 (results + 2 * first + 2, b);
    }
}

/** Two outputs' data at tap k: neighbours, one sample, or two samples apart. */
VANTRICE_INLINE Vec2 phaseData2 (const double* x, int a, int b, int k) noexcept
{
    if (b == a + 1)
        return load2 (x + a + k);
    return Vec2{ x[a + k], x[b + k] };
}

void phaseDotsSse2 (const SignalKernels::PhaseRun& run) noexcept
{
    // Two outputs in a row as lanes: their phases are neighbours in the tap-major table. With one
    // channel, two pairs of outputs at a time, for a second chain of adds.
    const Vec2 g = splat2 (guard);
    const int step = run.dataB != nullptr ? 2 : 4;
    for (int q = 0; q < run.numOutputs; q += step)
    {
        const int last = run.numOutputs - 1;
        const int s0 = run.start[q], s1 = run.start[std::min (q + 1, last)];
        const double* h = run.tapMajor + run.phase[q];
        Vec2 a{}, b{};
        if (run.dataB != nullptr)
        {
            for (int k = 0; k < run.taps; ++k)
            {
                const Vec2 hk = load2 (h + k * run.tapStride);
                a = a + phaseData2 (run.dataA, s0, s1, k) * hk;
                b = b + phaseData2 (run.dataB, s0, s1, k) * hk;
                a = a + g;
                b = b + g;
            }
        }
        else
        {
            const int s2 = run.start[std::min (q + 2, last)], s3 = run.start[std::min (q + 3, last)];
            const double* h2 = run.tapMajor + run.phase[std::min (q + 2, last)];
            for (int k = 0; k < run.taps; ++k)
            {
                a = a + phaseData2 (run.dataA, s0, s1, k) * load2 (h + k * run.tapStride);
                b = b + phaseData2 (run.dataA, s2, s3, k) * load2 (h2 + k * run.tapStride);
                a = a + g;
                b = b + g;
            }
        }

        const double sums[4] = { a[0], a[1], b[0], b[1] };
        for (int j = 0; j < step && q + j < run.numOutputs; ++j)
        {
            if (run.dataB != nullptr)
            {
                run.resultA[q + j] = sums[j];
                run.resultB[q + j] = sums[2 + j];
            }
            else
            {
                run.resultA[q + j] = sums[j];
            }
        }
    }
}

/** One stretch of step sums, two slots by two samples at a time; see the AVX2 kernel for the layout. */
template <bool twoChannels>
struct StepLanes2
{
    double* position;
    double* heightA;
    double* heightB;
    const int* eventSlot;
    const double* eventPosition;
    const double* eventHeightA;
    const double* eventHeightB;
    double* sumA;
    double* sumB;
    Vec2 speed, lastStart, silent, g, lane;

    VANTRICE_INLINE explicit StepLanes2 (const SignalKernels::StepRun& run) noexcept
        : position (run.position)
        , heightA (run.heightA)
        , heightB (run.heightB)
        , eventSlot (run.eventSlot)
        , eventPosition (run.eventPosition)
        , eventHeightA (run.eventHeightA)
        , eventHeightB (run.eventHeightB)
        , sumA (run.sumA)
        , sumB (run.sumB)
        , speed (splat2 (run.speed))
        , lastStart (splat2 ((double) StepTable::size - run.speed - 2.0))
        , silent (splat2 (StepTable::silentRow))
        , g (splat2 (guard))
        , lane (Vec2{ 0.0, 1.0 })
    {
    }

    VANTRICE_INLINE void batch (int t0, int valid) noexcept
    {
        std::uint64_t startsHere = 0;
        for (int k = 0; k < valid; ++k)
            if (eventSlot[t0 + k] >= 0)
                startsHere |= std::uint64_t (1) << eventSlot[t0 + k];

        Vec2 a{}, b{};
        for (int s = 0; s < numSlots; s += 2)
        {
            Vec2 v0{}, v1{};
            Vec2 p = load2 (position + s);
            const bool starts = ((startsHere >> s) & 3) != 0;
            const Mask2 atRest = p == silent;
            if (starts || (atRest[0] & atRest[1]) == 0)
            {
                for (int k = 0; k < valid; ++k)
                {
                    const int slot = eventSlot[t0 + k];
                    if (starts && slot >= s && slot < s + 2)
                        p = select2 (lane == (double) (slot - s), splat2 (eventPosition[t0 + k]), p);
                    (k == 0 ? v0 : v1) = stepValues2 (p);
                    p = select2 (p >= lastStart, silent, p + speed);
                }
                store2 (position + s, p);
                transpose2 (v0, v1);
            }

            for (int m = 0; m < 2; ++m)
            {
                const int slot = s + m;
                Vec2 ha = splat2 (heightA[slot]);
                Vec2 hb = twoChannels ? splat2 (heightB[slot]) : Vec2{};
                if (((startsHere >> slot) & 1) != 0)
                    for (int k = 0; k < valid; ++k)
                        if (eventSlot[t0 + k] == slot)
                        {
                            const Mask2 from = lane >= (double) k;
                            ha = select2 (from, splat2 (eventHeightA[t0 + k]), ha);
                            if (twoChannels)
                                hb = select2 (from, splat2 (eventHeightB[t0 + k]), hb);
                        }
                const Vec2& v = m == 0 ? v0 : v1;
                a = a + (v * ha + g);
                if (twoChannels)
                    b = b + (v * hb + g);
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

template <bool twoChannels>
void stepSumsIn2 (const SignalKernels::StepRun& run) noexcept
{
    StepLanes2<twoChannels> lanes (run);
    int t0 = 0;
    for (; t0 + 2 <= run.numSamples; t0 += 2)
        lanes.batch (t0, 2);
    if (t0 < run.numSamples)
        lanes.batch (t0, run.numSamples - t0);
}

void stepSumsSse2 (const SignalKernels::StepRun& run) noexcept
{
    if (run.heightB != nullptr)
        stepSumsIn2<true> (run);
    else
        stepSumsIn2<false> (run);
}

//==============================================================================
// AVX2: four lanes, on intrinsics.

/** Rows of four values, one per lane, into four vectors of one value from each row. */
VANTRICE_AVX2 VANTRICE_INLINE void transpose4 (__m256d& v0, __m256d& v1, __m256d& v2, __m256d& v3) noexcept
{
    const __m256d a0 = _mm256_unpacklo_pd (v0, v1), a1 = _mm256_unpackhi_pd (v0, v1);
    const __m256d a2 = _mm256_unpacklo_pd (v2, v3), a3 = _mm256_unpackhi_pd (v2, v3);
    v0 = _mm256_permute2f128_pd (a0, a2, 0x20);
    v1 = _mm256_permute2f128_pd (a1, a3, 0x20);
    v2 = _mm256_permute2f128_pd (a0, a2, 0x31);
    v3 = _mm256_permute2f128_pd (a1, a3, 0x31);
}

/** One tap of a chain of adds: a = a + x h + 1e-20, lane by lane. */
VANTRICE_AVX2 VANTRICE_INLINE void chainTap (__m256d& a, __m256d x, __m256d h, __m256d g) noexcept
{
    a = _mm256_add_pd (_mm256_add_pd (a, _mm256_mul_pd (x, h)), g);
}

/** Four transposed taps of a group of four jobs, from `k` on. */
VANTRICE_AVX2 VANTRICE_INLINE void groupTaps (__m256d& a, const double* const* x, const double* const* h,
                                              int k, __m256d g) noexcept
{
    __m256d x0 = _mm256_loadu_pd (x[0] + k), x1 = _mm256_loadu_pd (x[1] + k);
    __m256d x2 = _mm256_loadu_pd (x[2] + k), x3 = _mm256_loadu_pd (x[3] + k);
    __m256d h0 = _mm256_loadu_pd (h[0] + k), h1 = _mm256_loadu_pd (h[1] + k);
    __m256d h2 = _mm256_loadu_pd (h[2] + k), h3 = _mm256_loadu_pd (h[3] + k);
    transpose4 (x0, x1, x2, x3);
    transpose4 (h0, h1, h2, h3);
    chainTap (a, x0, h0, g);
    chainTap (a, x1, h1, g);
    chainTap (a, x2, h2, g);
    chainTap (a, x3, h3, g);
}

/** One tap of a group of four jobs, lane by lane. */
VANTRICE_AVX2 VANTRICE_INLINE void groupTap (__m256d& a, const double* const* x, const double* const* h,
                                             int k, __m256d g) noexcept
{
    chainTap (a, _mm256_set_pd (x[3][k], x[2][k], x[1][k], x[0][k]),
              _mm256_set_pd (h[3][k], h[2][k], h[1][k], h[0][k]), g);
}

/** Up to sixteen jobs as four groups of four, each group a vector whose lanes are chains of dependent
    adds. Each add waits for the one before it; four chains at once keep the adders busy. */
VANTRICE_AVX2 VANTRICE_INLINE void dotGroups (const SignalKernels::DotJob* jobs, int numJobs, int taps,
                                              double* results) noexcept
{
    const __m256d g = _mm256_set1_pd (guard);
    const double* x[16];
    const double* h[16];
    bool together = true;
    for (int j = 0; j < 16; ++j)
    {
        const bool real = j < numJobs;
        x[j] = real ? jobs[j].data : zeroTaps;
        h[j] = real ? jobs[j].coefficients : zeroTaps;
        if (j % 4 != 0)
            together = together && h[j] == h[j - 1] && x[j] == x[j - 1] + 1;
    }

    __m256d a0 = _mm256_setzero_pd(), a1 = a0, a2 = a0, a3 = a0;
    if (together)
    {
        // Holds in consecutive samples at the same fraction: one filter, the data one sample apart.
        for (int k = 0; k < taps; ++k)
        {
            chainTap (a0, _mm256_loadu_pd (x[0] + k), _mm256_broadcast_sd (h[0] + k), g);
            chainTap (a1, _mm256_loadu_pd (x[4] + k), _mm256_broadcast_sd (h[4] + k), g);
            chainTap (a2, _mm256_loadu_pd (x[8] + k), _mm256_broadcast_sd (h[8] + k), g);
            chainTap (a3, _mm256_loadu_pd (x[12] + k), _mm256_broadcast_sd (h[12] + k), g);
        }
    }
    else
    {
        int k = 0;
        for (; k + 4 <= taps; k += 4)
        {
            groupTaps (a0, x, h, k, g);
            groupTaps (a1, x + 4, h + 4, k, g);
            groupTaps (a2, x + 8, h + 8, k, g);
            groupTaps (a3, x + 12, h + 12, k, g);
        }
        for (; k < taps; ++k)
        {
            groupTap (a0, x, h, k, g);
            groupTap (a1, x + 4, h + 4, k, g);
            groupTap (a2, x + 8, h + 8, k, g);
            groupTap (a3, x + 12, h + 12, k, g);
        }
    }

    alignas (32) double sums[16];
    _mm256_store_pd (sums, a0);
    _mm256_store_pd (sums + 4, a1);
    _mm256_store_pd (sums + 8, a2);
    _mm256_store_pd (sums + 12, a3);
    std::copy (sums, sums + std::min (16, numJobs), results);
}

VANTRICE_AVX2 void dotsAvx2 (const SignalKernels::DotJob* jobs, int numJobs, int taps,
                             double* results) noexcept
{
    for (int first = 0; first < numJobs; first += 16)
        dotGroups (jobs + first, numJobs - first, taps, results + first);
}

/** Two pair jobs as four lanes: the first job's two signals, then the second's. */
VANTRICE_AVX2 VANTRICE_INLINE __m256d pairData (const double* xa, const double* xb, int k) noexcept
{
    return _mm256_insertf128_pd (_mm256_castpd128_pd256 (_mm_loadu_pd (xa + 2 * k)),
                                 _mm_loadu_pd (xb + 2 * k), 1);
}

VANTRICE_AVX2 VANTRICE_INLINE __m256d pairCoefficients (const double* ha, const double* hb, int k) noexcept
{
    return _mm256_blend_pd (_mm256_broadcast_sd (ha + k), _mm256_broadcast_sd (hb + k), 0xc);
}

/** Up to eight pair jobs as four vectors of two jobs each, four chains of adds at once. */
VANTRICE_AVX2 VANTRICE_INLINE void pairVectors (const SignalKernels::PairJob* jobs, int numJobs, int taps,
                                                double* results) noexcept
{
    const __m256d g = _mm256_set1_pd (guard);
    const double* x[8];
    const double* h[8];
    bool together = true;
    for (int j = 0; j < 8; ++j)
    {
        const bool real = j < numJobs;
        x[j] = real ? jobs[j].data : zeroTaps;
        h[j] = real ? jobs[j].coefficients : zeroTaps;
        if (j % 2 != 0)
            together = together && h[j] == h[j - 1] && x[j] == x[j - 1] + 2;
    }

    __m256d a0 = _mm256_setzero_pd(), a1 = a0, a2 = a0, a3 = a0;
    if (together)
    {
        // Each vector's two jobs share their filter and lie one sample apart: holds in consecutive
        // samples at the same fraction.
        for (int k = 0; k < taps; ++k)
        {
            chainTap (a0, _mm256_loadu_pd (x[0] + 2 * k), _mm256_broadcast_sd (h[0] + k), g);
            chainTap (a1, _mm256_loadu_pd (x[2] + 2 * k), _mm256_broadcast_sd (h[2] + k), g);
            chainTap (a2, _mm256_loadu_pd (x[4] + 2 * k), _mm256_broadcast_sd (h[4] + k), g);
            chainTap (a3, _mm256_loadu_pd (x[6] + 2 * k), _mm256_broadcast_sd (h[6] + k), g);
        }
    }
    else
    {
        for (int k = 0; k < taps; ++k)
        {
            chainTap (a0, pairData (x[0], x[1], k), pairCoefficients (h[0], h[1], k), g);
            chainTap (a1, pairData (x[2], x[3], k), pairCoefficients (h[2], h[3], k), g);
            chainTap (a2, pairData (x[4], x[5], k), pairCoefficients (h[4], h[5], k), g);
            chainTap (a3, pairData (x[6], x[7], k), pairCoefficients (h[6], h[7], k), g);
        }
    }

    alignas (32) double sums[16];
    _mm256_store_pd (sums, a0);
    _mm256_store_pd (sums + 4, a1);
    _mm256_store_pd (sums + 8, a2);
    _mm256_store_pd (sums + 12, a3);
    std::copy (sums, sums + 2 * std::min (8, numJobs), results);
}

VANTRICE_AVX2 void pairDotsAvx2 (const SignalKernels::PairJob* jobs, int numJobs, int taps,
                                 double* results) noexcept
{
    for (int first = 0; first < numJobs; first += 8)
        pairVectors (jobs + first, numJobs - first, taps, results + 2 * first);
}

/** Where four outputs' data lie: side by side, all at one sample, within four samples, or anywhere. */
enum class Spread
{
    neighbours,
    one,
    near,
    any
};

struct PhaseData4
{
    Spread spread;
    int s[4];
    __m256i picks; // for samples within four: each lane's sample among them, as two 32-bit halves

    VANTRICE_AVX2 VANTRICE_INLINE void set (const int* start, int q, int last) noexcept
    {
        for (int j = 0; j < 4; ++j)
            s[j] = start[std::min (q + j, last)];
        if (s[1] == s[0] + 1 && s[2] == s[0] + 2 && s[3] == s[0] + 3)
            spread = Spread::neighbours;
        else if (s[3] == s[0])
            spread = Spread::one;
        else if (s[3] - s[0] < 4)
            spread = Spread::near;
        else
            spread = Spread::any;
        const int o1 = s[1] - s[0], o2 = s[2] - s[0], o3 = std::min (s[3] - s[0], 3);
        picks = _mm256_set_epi32 (2 * o3 + 1, 2 * o3, 2 * o2 + 1, 2 * o2, 2 * o1 + 1, 2 * o1, 1, 0);
    }

    template <Spread spread>
    VANTRICE_AVX2 VANTRICE_INLINE __m256d at (const double* x, int k) const noexcept
    {
        if constexpr (spread == Spread::neighbours)
            return _mm256_loadu_pd (x + s[0] + k);
        else if constexpr (spread == Spread::one)
            return _mm256_broadcast_sd (x + s[0] + k);
        else if constexpr (spread == Spread::near)
            return _mm256_castps_pd (
                _mm256_permutevar8x32_ps (_mm256_castpd_ps (_mm256_loadu_pd (x + s[0] + k)), picks));
        else
            return _mm256_set_pd (x[s[3] + k], x[s[2] + k], x[s[1] + k], x[s[0] + k]);
    }
};

/** Four chains of adds over the taps: chain c runs the lanes of `d`[c] in `x`[c], with filters from `h`[c].
 */
template <Spread spread>
VANTRICE_AVX2 VANTRICE_INLINE void phaseChains (const PhaseData4* const* d, const double* const* x,
                                                const double* const* h, int stride, int taps,
                                                __m256d* a) noexcept
{
    const __m256d g = _mm256_set1_pd (guard);
    __m256d a0 = a[0], a1 = a[1], a2 = a[2], a3 = a[3];
    for (int k = 0; k < taps; ++k)
    {
        chainTap (a0, d[0]->at<spread> (x[0], k), _mm256_loadu_pd (h[0] + k * stride), g);
        chainTap (a1, d[1]->at<spread> (x[1], k), _mm256_loadu_pd (h[1] + k * stride), g);
        chainTap (a2, d[2]->at<spread> (x[2], k), _mm256_loadu_pd (h[2] + k * stride), g);
        chainTap (a3, d[3]->at<spread> (x[3], k), _mm256_loadu_pd (h[3] + k * stride), g);
    }
    a[0] = a0;
    a[1] = a1;
    a[2] = a2;
    a[3] = a3;
}

/** Two pairs of outputs spread wide, lanes of the outputs' two channels side by side: a chain of adds for
    outputs 0 and 1 and one for outputs 2 and 3 of each group. */
VANTRICE_AVX2 VANTRICE_INLINE __m256d widePair (const int* s, const double* pairs, int k) noexcept
{
    return _mm256_insertf128_pd (_mm256_castpd128_pd256 (_mm_loadu_pd (pairs + 2 * (s[0] + k))),
                                 _mm_loadu_pd (pairs + 2 * (s[1] + k)), 1);
}

VANTRICE_AVX2 VANTRICE_INLINE __m256d widePairTap (const double* h, int k, int stride, int offset) noexcept
{
    // Each output's filter tap for both of its lanes.
    return _mm256_permute4x64_pd (_mm256_castpd128_pd256 (_mm_loadu_pd (h + k * stride + offset)), 0x50);
}

VANTRICE_AVX2 VANTRICE_INLINE void phasePairs (const PhaseData4& d0, const PhaseData4& d1,
                                               const double* pairs, const double* h0, const double* h1,
                                               int stride, int taps, __m256d* a) noexcept
{
    const __m256d g = _mm256_set1_pd (guard);
    __m256d a0 = a[0], a1 = a[1], a2 = a[2], a3 = a[3];
    for (int k = 0; k < taps; ++k)
    {
        chainTap (a0, widePair (d0.s, pairs, k), widePairTap (h0, k, stride, 0), g);
        chainTap (a1, widePair (d0.s + 2, pairs, k), widePairTap (h0, k, stride, 2), g);
        chainTap (a2, widePair (d1.s, pairs, k), widePairTap (h1, k, stride, 0), g);
        chainTap (a3, widePair (d1.s + 2, pairs, k), widePairTap (h1, k, stride, 2), g);
    }
    a[0] = a0;
    a[1] = a1;
    a[2] = a2;
    a[3] = a3;
}

/** Four chains of adds from output `q` on: two groups of four outputs for both channels, or four groups
    for one. Each add waits for the one before it; four chains at once keep the adders busy. */
template <bool stereo>
VANTRICE_AVX2 VANTRICE_INLINE void phaseGroups (const SignalKernels::PhaseRun& run, int q) noexcept
{
    constexpr int groups = stereo ? 2 : 4;
    const int last = run.numOutputs - 1;
    PhaseData4 d[(std::size_t) groups];
    const double* h[(std::size_t) groups];
    Spread spread = Spread::neighbours;
    for (int i = 0; i < groups; ++i)
    {
        const int first = std::min (q + 4 * i, last);
        d[i].set (run.start, first, last);
        h[i] = run.tapMajor + run.phase[first];
        // Groups that lie differently share the wider way: side by side and at one sample are both within
        // four samples.
        if (i == 0 || d[i].spread == spread)
            spread = d[i].spread;
        else
            spread = spread == Spread::any || d[i].spread == Spread::any ? Spread::any : Spread::near;
    }

    __m256d a[4] = { _mm256_setzero_pd(), _mm256_setzero_pd(), _mm256_setzero_pd(), _mm256_setzero_pd() };
    alignas (32) double sums[16];

    if (stereo && spread == Spread::any && run.pairs != nullptr)
    {
        phasePairs (d[0], d[1], run.pairs, h[0], h[1], run.tapStride, run.taps, a);
        for (int c = 0; c < 4; ++c)
            _mm256_store_pd (sums + 4 * c, a[c]);
        for (int j = 0; j < 8 && q + j < run.numOutputs; ++j)
        {
            run.resultA[q + j] = sums[2 * j];
            run.resultB[q + j] = sums[2 * j + 1];
        }
        return;
    }

    // Both channels of a group share its filters; chains 0 and 1 are the first group's.
    const PhaseData4* dc[4];
    const double* xc[4];
    const double* hc[4];
    for (int c = 0; c < 4; ++c)
    {
        const int group = stereo ? c / 2 : c;
        dc[c] = d + group;
        xc[c] = stereo && c % 2 != 0 ? run.dataB : run.dataA;
        hc[c] = h[group];
    }
    switch (spread)
    {
        case Spread::neighbours:
            phaseChains<Spread::neighbours> (dc, xc, hc, run.tapStride, run.taps, a);
            break;
        case Spread::one:
            phaseChains<Spread::one> (dc, xc, hc, run.tapStride, run.taps, a);
            break;
        case Spread::near:
            phaseChains<Spread::near> (dc, xc, hc, run.tapStride, run.taps, a);
            break;
        case Spread::any:
        default:
            phaseChains<Spread::any> (dc, xc, hc, run.tapStride, run.taps, a);
            break;
    }

    for (int c = 0; c < 4; ++c)
        _mm256_store_pd (sums + 4 * c, a[c]);
    for (int j = 0; j < 4 * groups && q + j < run.numOutputs; ++j)
    {
        if (stereo)
        {
            run.resultA[q + j] = sums[8 * (j / 4) + j % 4];
            run.resultB[q + j] = sums[8 * (j / 4) + 4 + j % 4];
        }
        else
        {
            run.resultA[q + j] = sums[j];
        }
    }
}

VANTRICE_AVX2 void phaseDotsAvx2 (const SignalKernels::PhaseRun& run) noexcept
{
    // Four outputs in a row as lanes: their phases are neighbours in the tap-major table, so one load
    // gives all four filters' tap, for both channels.
    const int step = run.dataB != nullptr ? 8 : 16;
    for (int q = 0; q < run.numOutputs; q += step)
    {
        if (run.dataB != nullptr)
            phaseGroups<true> (run, q);
        else
            phaseGroups<false> (run, q);
    }
}

/** One stretch of step sums, four slots by four samples at a time. */
template <bool twoChannels>
struct StepLanes4
{
    double* position;
    double* heightA;
    double* heightB;
    const int* eventSlot;
    const double* eventPosition;
    const double* eventHeightA;
    const double* eventHeightB;
    double* sumA;
    double* sumB;
    __m256d speed, lastStart, silent, g, lane;

    VANTRICE_AVX2 VANTRICE_INLINE explicit StepLanes4 (const SignalKernels::StepRun& run) noexcept
        : position (run.position)
        , heightA (run.heightA)
        , heightB (run.heightB)
        , eventSlot (run.eventSlot)
        , eventPosition (run.eventPosition)
        , eventHeightA (run.eventHeightA)
        , eventHeightB (run.eventHeightB)
        , sumA (run.sumA)
        , sumB (run.sumB)
        , speed (_mm256_set1_pd (run.speed))
        , lastStart (_mm256_set1_pd ((double) StepTable::size - run.speed - 2.0))
        , silent (_mm256_set1_pd (StepTable::silentRow))
        , g (_mm256_set1_pd (guard))
        , lane (_mm256_set_pd (3.0, 2.0, 1.0, 0.0))
    {
    }

    /** The step table read at each lane's position: the row below it plus the fraction times the slope. */
    VANTRICE_AVX2 VANTRICE_INLINE static __m256d values (__m256d p) noexcept
    {
        const __m128i i = _mm256_cvttpd_epi32 (p);
        const __m256d whole = _mm256_cvtepi32_pd (i);
        // Twice the row: where its pair starts.
        alignas (16) unsigned at[4];
        _mm_store_si128 ((__m128i*) at, _mm_add_epi32 (i, i));
        const __m256d q02 = _mm256_insertf128_pd (_mm256_castpd128_pd256 (_mm_load_pd (stepPairs + at[0])),
                                                  _mm_load_pd (stepPairs + at[2]), 1);
        const __m256d q13 = _mm256_insertf128_pd (_mm256_castpd128_pd256 (_mm_load_pd (stepPairs + at[1])),
                                                  _mm_load_pd (stepPairs + at[3]), 1);
        const __m256d value = _mm256_unpacklo_pd (q02, q13), slope = _mm256_unpackhi_pd (q02, q13);
        return _mm256_add_pd (value, _mm256_mul_pd (_mm256_sub_pd (p, whole), slope));
    }

    VANTRICE_AVX2 VANTRICE_INLINE __m256d next (__m256d p) const noexcept
    {
        return _mm256_blendv_pd (_mm256_add_pd (p, speed), silent, _mm256_cmp_pd (p, lastStart, _CMP_GE_OQ));
    }

    /** Four slots over the batch's samples, added to each sample's sum in slot order. With `starts`, a
        step begins in one of them. */
    template <bool starts>
    VANTRICE_AVX2 VANTRICE_INLINE void group (int s, int t0, int valid, std::uint64_t startsHere, __m256d& a,
                                              __m256d& b) noexcept
    {
        // Positions advance with slots as lanes, since each follows its own last value; the table values
        // are then turned so that samples are the lanes, and each sample's sum runs down its lane.
        __m256d v[4] = { _mm256_setzero_pd(), _mm256_setzero_pd(), _mm256_setzero_pd(), _mm256_setzero_pd() };
        __m256d p = _mm256_loadu_pd (position + s);

        // Slots resting on the silent row read 0.0 there and stay.
        if (starts || _mm256_movemask_pd (_mm256_cmp_pd (p, silent, _CMP_EQ_OQ)) != 15)
        {
            for (int k = 0; k < valid; ++k)
            {
                if (starts)
                {
                    const int slot = eventSlot[t0 + k];
                    if (slot >= s && slot < s + 4)
                        p = _mm256_blendv_pd (
                            p, _mm256_broadcast_sd (eventPosition + t0 + k),
                            _mm256_cmp_pd (lane, _mm256_set1_pd ((double) (slot - s)), _CMP_EQ_OQ));
                }
                v[k] = values (p);
                p = next (p);
            }
            _mm256_storeu_pd (position + s, p);
            transpose4 (v[0], v[1], v[2], v[3]);
        }

        for (int m = 0; m < 4; ++m)
        {
            const int slot = s + m;
            __m256d ha = _mm256_broadcast_sd (heightA + slot);
            __m256d hb = twoChannels ? _mm256_broadcast_sd (heightB + slot) : ha;
            if (starts && ((startsHere >> slot) & 1) != 0)
                for (int k = 0; k < valid; ++k)
                    if (eventSlot[t0 + k] == slot)
                    {
                        // The new step's height from the sample it starts in.
                        const __m256d from = _mm256_cmp_pd (lane, _mm256_set1_pd ((double) k), _CMP_GE_OQ);
                        ha = _mm256_blendv_pd (ha, _mm256_broadcast_sd (eventHeightA + t0 + k), from);
                        if (twoChannels)
                            hb = _mm256_blendv_pd (hb, _mm256_broadcast_sd (eventHeightB + t0 + k), from);
                    }
            a = _mm256_add_pd (a, _mm256_add_pd (_mm256_mul_pd (v[m], ha), g));
            if (twoChannels)
                b = _mm256_add_pd (b, _mm256_add_pd (_mm256_mul_pd (v[m], hb), g));
        }
    }

    VANTRICE_AVX2 VANTRICE_INLINE void batch (int t0, int valid) noexcept
    {
        std::uint64_t startsHere = 0;
        for (int k = 0; k < valid; ++k)
            if (eventSlot[t0 + k] >= 0)
                startsHere |= std::uint64_t (1) << eventSlot[t0 + k];

        __m256d a = _mm256_setzero_pd(), b = _mm256_setzero_pd();
        for (int s = 0; s < numSlots; s += 4)
        {
            if (((startsHere >> s) & 15) != 0)
                group<true> (s, t0, valid, startsHere, a, b);
            else
                group<false> (s, t0, valid, startsHere, a, b);
        }

        alignas (32) double sa[4], sb[4];
        _mm256_store_pd (sa, a);
        _mm256_store_pd (sb, b);
        for (int k = 0; k < valid; ++k)
        {
            sumA[t0 + k] = sa[k];
            if (twoChannels)
                sumB[t0 + k] = sb[k];
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

template <bool twoChannels>
VANTRICE_AVX2 VANTRICE_INLINE void stepSumsIn4 (const SignalKernels::StepRun& run) noexcept
{
    StepLanes4<twoChannels> lanes (run);
    int t0 = 0;
    for (; t0 + 4 <= run.numSamples; t0 += 4)
        lanes.batch (t0, 4);
    if (t0 < run.numSamples)
        lanes.batch (t0, run.numSamples - t0);
}

VANTRICE_AVX2 void stepSumsAvx2 (const SignalKernels::StepRun& run) noexcept
{
    if (run.heightB != nullptr)
        stepSumsIn4<true> (run);
    else
        stepSumsIn4<false> (run);
}

//==============================================================================

bool fillStepPairs() noexcept
{
    const double* t = StepTable::values;
    for (int i = 0; i < StepTable::size; ++i)
    {
        stepPairs[2 * i] = t[i];
        stepPairs[2 * i + 1] = i + 1 < StepTable::size ? t[i + 1] - t[i] : 0.0;
    }
    return true;
}

bool prepareTables() noexcept
{
    static const bool ready = fillStepPairs();
    return ready;
}
} // namespace

const SignalKernels& SignalKernels::sse2() noexcept
{
    prepareTables();
    static const SignalKernels kernels{ "SSE2", dotsSse2, pairDotsSse2, phaseDotsSse2, stepSumsSse2 };
    return kernels;
}

const SignalKernels* SignalKernels::avx2() noexcept
{
    prepareTables();
    static const SignalKernels kernels{ "AVX2", dotsAvx2, pairDotsAvx2, phaseDotsAvx2, stepSumsAvx2 };
    __builtin_cpu_init();
    return __builtin_cpu_supports ("avx2") ? &kernels : nullptr;
}

const SignalKernels& SignalKernels::best() noexcept
{
    const auto* wide = avx2();
    return wide != nullptr ? *wide : sse2();
}
