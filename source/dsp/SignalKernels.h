#pragma once

/** The inner loops of the block form, built for more than one instruction set and chosen at run time.
    Every lane does the literal loop's operations in the literal loop's order, so all sets give the same
    bits; only the number of lanes differs. None of them may fuse a multiply with an add. */
struct SignalKernels
{
    static constexpr int numSlots = 36; // step slots of a channel

    /** One dot product of a filter with a stretch of signal, oldest sample first. */
    struct DotJob
    {
        const double* data;
        const double* coefficients;
    };

    /** Two dot products with one filter: `data` holds the two signals' samples in pairs, oldest first. */
    struct PairJob
    {
        const double* data;
        const double* coefficients;
    };

    /** A converter's outputs in a row, for one channel or two: output q takes the phase after output
        q - 1's, and its dot runs over the taps from `start`[q] on in each channel's signal. The filters
        are tap-major: tap k of phase i at k x `tapStride` + i, the first phases repeated after the last. */
    struct PhaseRun
    {
        const double* tapMajor;
        int tapStride;
        int taps;
        const int* phase;
        const int* start;
        const double* dataA;
        const double* dataB; // or null
        const double* pairs; // or both channels' samples side by side, which widely spread outputs read
        int numOutputs;
        double* resultA;
        double* resultB;
    };

    /** One stretch of the band-limited steps of one channel, or of two channels whose steps sit on the
        same rows (the linked stage's). */
    struct StepRun
    {
        double* position;     // per slot, advanced in place
        double* heightA;      // per slot; the events' heights are written in
        double* heightB;      // the second channel's, or null
        double speed;         // rows per sample
        const int* eventSlot; // per sample: the slot a new step starts in, or -1
        const double* eventPosition;
        const double* eventHeightA;
        const double* eventHeightB;
        int numSamples;
        double* sumA; // per sample: the sum over all slots, in slot order
        double* sumB;
    };

    const char* name;

    /** For each job: a = 0, then for each tap in order a = a + data x coefficient + 1e-20. */
    void (*dots) (const DotJob* jobs, int numJobs, int taps, double* results) noexcept;

    /** The same for both signals of each pair job, into results 2 i and 2 i + 1. */
    void (*pairDots) (const PairJob* jobs, int numJobs, int taps, double* results) noexcept;

    /** The dots of a converter's outputs, as `dots` computes them. */
    void (*phaseDots) (const PhaseRun& run) noexcept;

    /** For each sample: the step that starts in it takes its slot, then every slot's table value times
        its height plus 1e-20 is added in slot order, and every position moves on. */
    void (*stepSums) (const StepRun& run) noexcept;

    static const SignalKernels& sse2() noexcept;

    /** Null where the processor or the system lacks AVX2. */
    static const SignalKernels* avx2() noexcept;

    /** The widest set this processor runs. */
    static const SignalKernels& best() noexcept;
};
