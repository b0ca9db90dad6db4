#pragma once

#include <cstddef>
#include <vector>

/** One channel of fixed rational sample rate conversion: a polyphase bank of 65-tap Blackman-windowed
    sinc filters, one per output phase, fed one input sample per call. */
class RateConverter final
{
public:
    static constexpr int numTaps = 65;
    static constexpr int historyLength = numTaps - 1;

    /** The most outputs one call may give; callers size their result buffers by it. */
    static constexpr int maxOutputsPerCall = 10;

    /** Builds the tables for a conversion between two rates in Hz. Both must pass `canConvert`. */
    RateConverter (int inRate, int outRate);

    /** Takes one input sample and writes 0 or more outputs to `result`, returning their count. */
    int process (double x, double* result) noexcept;

    /** For a block form: the 64 newest inputs, oldest first, which the next input's dots reach back to;
        every `stride`-th value of `dest`, so that two channels' histories can share one buffer. */
    void copyHistory (double* dest, int stride = 1) const noexcept;

    /** For a block form: `numInputs` pushed at once. `inputs` holds them behind the 64 of `copyHistory`,
        at the same stride. */
    void pushBlock (const double* inputs, int numInputs, int stride = 1) noexcept;

    /** For a block form: what `numInputs` calls of `process` would do to the phase, without the signal.
        Writes for each output in order the input it follows and its phase; returns their count. */
    int schedule (int numInputs, int* inputOf, int* phases) noexcept;

    /** The filters tap by tap, the phases side by side: tap k of phase i at k x `getTapStride` + i. */
    const double* getTapMajor() const noexcept { return tapMajor.data(); }
    int getTapStride() const noexcept { return phaseCount + 3; }

    /** Takes the phase and countdown of a converter whose schedule this one shares. */
    void followSchedule (const RateConverter& other) noexcept
    {
        phase = other.phase;
        countdown = other.countdown;
    }

    /** Whether the next calls give the same counts at the same phases as the other's. */
    bool sharesScheduleWith (const RateConverter& other) const noexcept
    {
        return phase == other.phase && countdown == other.countdown;
    }

    /** Whether a pair of rates gives factors with a bounded table and at most `maxOutputsPerCall`
        outputs per call. */
    static bool canConvert (int inRate, int outRate) noexcept;

    /** The rate in units of the pair's common step: 300 Hz where both rates are multiples of it, else
        their greatest common divisor. */
    static void factorsOf (int inRate, int outRate, int& inFactor, int& outFactor) noexcept;

    int getInFactor() const noexcept { return inFactor; }
    int getOutFactor() const noexcept { return outFactor; }
    double getRatio() const noexcept { return ratio; }
    double getCutoff() const noexcept { return cutoff; }
    int getPhaseCount() const noexcept { return phaseCount; }
    int getAdvance (int phaseIndex) const noexcept { return advance[(std::size_t) phaseIndex]; }
    const double* getCoefficients (int phaseIndex) const noexcept
    {
        return coefficients.data() + (std::size_t) phaseIndex * numTaps;
    }

private:
    friend struct CoreStateProbe; // the tests' comparison of two cores' whole state

    void push (double x) noexcept;
    double dot() const noexcept;
    void nextPhase() noexcept;

    int inFactor = 1, outFactor = 1;
    double ratio = 1.0, cutoff = 1.0;
    int phaseCount = 1;
    std::vector<double> coefficients;
    std::vector<double> tapMajor;
    std::vector<int> advance;
    int phase = 0;
    int countdown = 0;
    double delayLine[2 * numTaps]{}; // written twice, so the newest 65 are always one stretch
    int delayWrite = 0;
};
