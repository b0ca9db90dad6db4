#pragma once

#include "common/RateInfo.h"
#include "dsp/ParameterIndex.h"
#include "dsp/RateConverter.h"
#include "dsp/StepTable.h"
#include "frame/FerrowynEffectCore.h"

#include <limits>
#include <memory>

class BlockPath;

/** The crusher's DSP: preamp, band-limited sample-and-hold, dithered quantiser and a state-variable
    filter per channel, then dry/wet mix and volume. The chain always runs at 44100 Hz; other host rates
    are converted in front of it and back behind it. Processing is in place and a run may be as short as
    one sample: the state carries over, so splitting a block never changes the output. */
class VantriceCore final : public FerrowynEffectCore
{
public:
    static constexpr int numParameters = ParameterIndex::count;
    static constexpr int numRawValues = 16;
    static constexpr int ringSize = 32;
    static constexpr int numStepSlots = 36;
    static constexpr int fifoSize = 50;
    static constexpr int sincRowsPerSample = 16384;
    static constexpr int sincTaps = 32;
    static constexpr int sincTableSize = sincRowsPerSample * sincTaps;
    static constexpr double noQuantisation = 65536.0; // scales above this leave the hold unquantised
    static constexpr int filterOff = 4;               // the filter type that passes the signal unchanged

    /** One channel's settings, smoothed controls and signal state. */
    struct Channel
    {
        // Settings, from the parameters.
        double quantScale = 65537.0;
        double rate = 1.0;
        double stepSpeed = StepTable::rowsPerSample;
        bool antiAlias = false;
        int filterType = filterOff;
        bool filterPre = false;
        double cutoffTarget = 0.0, resoTarget = 0.0;

        // Smoothed controls.
        double cutoff = 0.0, reso = 0.0, resoRoot = 0.0;

        // Hold and band-limited steps.
        double holdPhase = 1.0;
        double heldValue = 0.0;
        double stepHeight[numStepSlots]{};
        double stepPosition[numStepSlots]{};
        int stepWrite = 0;

        // State-variable filter.
        double low = 0.0, high = 0.0, band = 0.0, notch = 0.0;

        // Rings of 32 samples in 64 slots, written twice so that a read never wraps.
        juce::HeapBlock<double> dryRing, crushRing;

        // Meters and activity.
        double meterPeak = 0.0;
        double envelope = 0.0;
        bool active = false;

        // Rate conversion.
        std::unique_ptr<RateConverter> inConv, outConv;
        double inResult[RateConverter::maxOutputsPerCall]{};
        double outResult[RateConverter::maxOutputsPerCall]{};
        double fifo[fifoSize]{};
        int fifoWrite = 4, fifoRead = 0;
    };

    explicit VantriceCore (Vantrice* owningProcessor);
    ~VantriceCore() override;

    void setSampleRate (float rate) override;
    void prepareSampleRate (float rate) override;
    void releaseReplacedRate() override;
    void setParameter (int index, float value) override;
    int getLatency() override;
    void processStereo (float** left, float** right, int numSamples) override;
    void processMono (float** channel, int numSamples) override;

    /** For tests and benchmarks: every run takes the literal per-sample loop, the reference whose bits the
        block form must give. */
    void setReferenceLoop (bool literalOnly) noexcept { referenceLoop = literalOnly; }

    /** How many stretches of samples took the block form and how many the literal loop, since
        construction. */
    struct FormCounts
    {
        juce::uint64 blockStretches = 0, literalStretches = 0;
        juce::uint64 blockSamples = 0, literalSamples = 0;
    };
    FormCounts getFormCounts() const noexcept { return formCounts; }

    /** Stores the process indicators for the editor. */
    void publishIndicators (bool left, bool right);

    /** Reads what `publishIndicators` stored last. */
    void readIndicators (bool& left, bool& right) const;

    /** Whether a host rate can be run: 22050 to 384000 Hz with a converter pair in its contract. Any
        other rate is refused: audio passes through unchanged and the latency is 0. */
    static bool isSupportedRate (double hostRate) noexcept;

    /** The latency in host samples that the path has at a supported rate, 0 at a refused one: the
        family's six rates by their table, any other by the peak of an impulse through the path. */
    static int latencyForRate (double hostRate);

    /** The host sample at which an impulse through the converters and the path peaks. */
    static int measureLatency (int hostRate);

    const Channel& getLeft() const noexcept { return left; }
    const Channel& getRight() const noexcept { return right; }
    double getRawValue (int index) const noexcept
    {
        return index >= 0 && index < numRawValues ? rawValues[index] : 0.0;
    }
    bool isLinked() const noexcept { return linked; }
    double getPreampTarget() const noexcept { return preampTarget; }
    double getPreamp() const noexcept { return preamp; }
    double getMixTarget() const noexcept { return mixTarget; }
    double getVolumeTarget() const noexcept { return volumeTarget; }
    double getVolume() const noexcept { return volume; }
    float getNoise() const noexcept { return noise; }
    double getSmoothCoeff() const noexcept { return smoothCoeff; }
    const RateInfo& getRateInfo() const noexcept { return rateInfo; }
    bool isResampling() const noexcept { return resampling; }
    bool isRateSupported() const noexcept { return rateSupported; }
    int getRingIndex() const noexcept { return ringIndex; }

    // The arithmetic the literal loop and the block form share, term for term.
    static double clampUnit (double y) noexcept
    {
        if (y > 1.0)
            y = 1.0;
        if (y < -1.0)
            y = -1.0;
        return y;
    }

    /** Truncation toward zero through a signed 32-bit integer. A value outside its range gives the
        integer's smallest value, as the processor's conversion does, without undefined behaviour. */
    static int truncToInt32 (double x) noexcept
    {
        if (x > -2147483649.0 && x < 2147483648.0)
            return (int) x;
        return std::numeric_limits<int>::min();
    }

    /** The dithered quantiser: a dither of a quarter step at its peak; the truncation makes the step at
        0 two steps wide. */
    static double quantise (double v, double scale, float noise) noexcept
    {
        if (scale > noQuantisation)
            return v;
        const double h = scale * 0.5;
        return truncToInt32 ((noise / (scale * 2.0) + v) * h + 0.5) / h;
    }

private:
    friend class BlockPath;
    friend struct CoreStateProbe; // the tests' comparison of two cores' whole state

    void literalStereo (float* l, float* r, int numSamples) noexcept;
    void literalMono (float* l, int numSamples) noexcept;
    void smoothControls() noexcept;
    void advanceNoise() noexcept;
    void coreStep (double xLeft, double xRight) noexcept;
    void coreStepMono (double x) noexcept;
    double channelStage (Channel& c, double x) noexcept;
    void linkedStage (double xLeft, double xRight) noexcept;
    void advanceHoldClock (Channel& c) noexcept;
    double interpolate (const Channel& c, int offset) const noexcept;
    void startStep (Channel& c, double v, double speed) noexcept;
    double sumSteps (Channel& c, double speed) noexcept;
    void runFilter (Channel& c, double& u, int type) noexcept;
    double mixChannel (const Channel& c, double out) const noexcept;
    void meterStereo (Channel& c, double o) noexcept;
    void resetConversion();
    void resetMeters();
    void recomputeRate (Channel& c, double rawRate, double rawAntiAlias) noexcept;
    /** The rows of the step table a step moves on per core sample: one sample's worth, or with
        anti-aliasing that times the hold rate, so the step's rise spans a hold period. */
    static void updateStepSpeed (Channel& c) noexcept;
    void fillSincTable();

    /** What a host rate needs that takes time to make: the converter pairs and the latency. */
    struct RateSetup
    {
        float rate = 0.0f;
        std::unique_ptr<RateConverter> leftIn, leftOut, rightIn, rightOut;
        int latency = 0;
    };
    static std::unique_ptr<RateSetup> makeRateSetup (float rate);

    Channel left, right;

    double rawValues[numRawValues]{};
    double preampTarget = 1.0, mixTarget = 0.0, volumeTarget = 1.0;
    bool linked = true;

    double preamp = 0.0, mix = 0.0, volume = 0.0;
    double smoothCoeff = 0.0;

    int ringIndex = 0;
    double leftOut = 0.0, rightOut = 0.0;
    bool holdTriggered = false;
    double holdFraction = 0.0;

    juce::uint32 noiseA = 0, noiseB = 0;
    float noise = 0.0f;
    float noiseScale = 0.0f;

    juce::HeapBlock<double> sincTable;
    RateInfo rateInfo;
    bool resampling = false;
    bool rateSupported = true;
    int latency = 21;

    double meterDecay = 0.0;
    bool ledLeft = false, ledRight = false;
    mutable juce::ReadWriteLock ledLock;

    // Made ahead of a rate change outside the locks, and what the change replaced, freed after them.
    std::unique_ptr<RateSetup> preparedSetup, replacedSetup;

    std::unique_ptr<BlockPath> blockPath;
    bool referenceLoop = false;
    FormCounts formCounts;
};
