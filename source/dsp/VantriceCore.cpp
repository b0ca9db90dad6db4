#include "dsp/VantriceCore.h"

#include "dsp/BlockPath.h"
#include "dsp/ParameterCurves.h"
#include "dsp/StepTable.h"

#include <juce_audio_basics/juce_audio_basics.h>

#include <algorithm>
#include <cmath>

namespace
{
constexpr double pi = 3.141592653589793;
constexpr int coreRateHz = 44100;

inline void glide (double& value, double target, double coeff) noexcept
{
    value = value - ((value - target) * coeff + 1e-20);
}

inline void advanceRing (int& position, int size) noexcept
{
    if (++position == size)
        position = 0;
}
} // namespace

VantriceCore::VantriceCore (Vantrice* owningProcessor)
    : FerrowynEffectCore (owningProcessor)
{
    for (auto* c : { &left, &right })
    {
        c->dryRing.calloc (2 * ringSize);
        c->crushRing.calloc (2 * ringSize);
    }

    sincTable.calloc (sincTableSize);
    fillSincTable();

    noiseA = 0x67452301;
    noiseB = 0xEFCDAB89;
    noiseScale = std::ldexp (1.0f, -31);

    setSampleRate ((float) RateInfo::coreRate);
    blockPath = std::make_unique<BlockPath> (*this);
}

VantriceCore::~VantriceCore() = default;

void VantriceCore::fillSincTable()
{
    // A Blackman-windowed sinc of 32 zero crossings at 16384 rows per sample. Row i serves tap
    // i / 16384 at the fraction i % 16384; it is stored by fraction first, so that the 32 taps of one
    // hold lie side by side in memory rather than 128 KiB apart.
    constexpr int centre = sincTableSize / 2;
    for (int i = 0; i < sincTableSize; ++i)
    {
        const double x = i - centre;
        double s = x == 0.0 ? 1.0 : std::sin (x * pi / sincRowsPerSample) / (x * pi) * sincRowsPerSample;
        s = s
            * (0.42 - 0.5 * std::cos (2.0 * pi * i / sincTableSize)
               + 0.08 * std::cos (4.0 * pi * i / sincTableSize));
        sincTable[(i % sincRowsPerSample) * sincTaps + i / sincRowsPerSample] = s;
    }
}

bool VantriceCore::isSupportedRate (double hostRate) noexcept
{
    // Below 22050 Hz the core's band would reach past the host's; above 384000 Hz the tables grow
    // beyond what a converter should hold.
    if (!(hostRate >= 22050.0 && hostRate <= 384000.0) || hostRate != std::floor (hostRate))
        return false;

    const int rate = (int) hostRate;
    return RateConverter::canConvert (rate, coreRateHz) && RateConverter::canConvert (coreRateHz, rate);
}

std::unique_ptr<VantriceCore::RateSetup> VantriceCore::makeRateSetup (float rate)
{
    auto setup = std::make_unique<RateSetup>();
    setup->rate = rate;
    const bool converting = isSupportedRate (rate) && rate != (float) RateInfo::coreRate;
    const int hostRate = converting ? (int) rate : coreRateHz;
    setup->leftIn = std::make_unique<RateConverter> (hostRate, coreRateHz);
    setup->leftOut = std::make_unique<RateConverter> (coreRateHz, hostRate);
    setup->rightIn = std::make_unique<RateConverter> (hostRate, coreRateHz);
    setup->rightOut = std::make_unique<RateConverter> (coreRateHz, hostRate);
    setup->latency = latencyForRate (rate);
    return setup;
}

void VantriceCore::prepareSampleRate (float rate) { preparedSetup = makeRateSetup (rate); }

void VantriceCore::releaseReplacedRate() { replacedSetup.reset(); }

void VantriceCore::setSampleRate (float rate)
{
    rateInfo = RateInfo::forRate (rate);
    rateSupported = isSupportedRate (rate);
    resampling = rateSupported && rate != (float) RateInfo::coreRate;

    // Built here only when nobody prepared it; the channels' old converters leave with the setup.
    auto setup = preparedSetup != nullptr && preparedSetup->rate == rate ? std::move (preparedSetup)
                                                                         : makeRateSetup (rate);
    std::swap (left.inConv, setup->leftIn);
    std::swap (left.outConv, setup->leftOut);
    std::swap (right.inConv, setup->rightIn);
    std::swap (right.outConv, setup->rightOut);
    latency = setup->latency;
    replacedSetup = std::move (setup);
    resetConversion();

    smoothCoeff = 0.002 * rateInfo.speedFactor;
    resetMeters();

    preampTarget = ParameterCurves::preampGainOf (rawValues[ParameterIndex::preamp]);
    recomputeRate (left, rawValues[ParameterIndex::leftFrequency], rawValues[ParameterIndex::leftLinkFreq]);
    if (!linked)
        recomputeRate (right, rawValues[ParameterIndex::rightFrequency],
                       rawValues[ParameterIndex::rightLinkFreq]);
    left.cutoffTarget = ParameterCurves::cutoffCurve (rawValues[ParameterIndex::leftCutoff]);
    if (!linked)
        right.cutoffTarget = ParameterCurves::cutoffCurve (rawValues[ParameterIndex::rightCutoff]);

    preamp = preampTarget;
    left.cutoff = left.cutoffTarget;
    right.cutoff = right.cutoffTarget;
    left.reso = left.resoTarget;
    right.reso = right.resoTarget;
    mix = mixTarget;
    volume = volumeTarget;
    left.resoRoot = std::sqrt (left.reso);
    right.resoRoot = std::sqrt (right.reso);
}

void VantriceCore::recomputeRate (Channel& c, double rawRate, double rawAntiAlias) noexcept
{
    c.rate = ParameterCurves::rateCurve (rawRate);
    c.antiAlias = rawAntiAlias > 0.5;
    updateStepSpeed (c);
}

void VantriceCore::updateStepSpeed (Channel& c) noexcept
{
    constexpr double rows = StepTable::rowsPerSample;
    c.stepSpeed = c.antiAlias ? c.rate * rows : rows;
}

void VantriceCore::resetConversion()
{
    for (auto* c : { &left, &right })
    {
        std::fill (std::begin (c->fifo), std::end (c->fifo), 0.0);
        std::fill (std::begin (c->inResult), std::end (c->inResult), 0.0);
        std::fill (std::begin (c->outResult), std::end (c->outResult), 0.0);
        // Four samples of margin between the core's bursts and the host's steady reads.
        c->fifoWrite = 4;
        c->fifoRead = 0;
    }
}

void VantriceCore::resetMeters()
{
    left.active = right.active = false;
    left.envelope = right.envelope = 0.0;
    meterDecay = 1.0 - rateInfo.speedFactor * 0.0001;
}

void VantriceCore::setParameter (int index, float value)
{
    if (index < 0 || index >= numParameters)
        return;

    // The parameter objects deliver 0 to 1; holding the core to it keeps every table read in range.
    if (!(value >= 0.0f))
        value = 0.0f;
    if (value > 1.0f)
        value = 1.0f;

    const double v = value;
    if (index < numRawValues)
        rawValues[index] = v;

    switch (index)
    {
        case ParameterIndex::preamp:
            preampTarget = ParameterCurves::preampGainOf (v);
            break;
        case ParameterIndex::leftBits:
            left.quantScale = ParameterCurves::quantScaleOf (v) - 1.0;
            break;
        case ParameterIndex::leftFrequency:
            left.rate = ParameterCurves::rateCurve (v);
            updateStepSpeed (left);
            break;
        case ParameterIndex::leftLinkFreq:
            left.antiAlias = v > 0.5;
            updateStepSpeed (left);
            break;
        case ParameterIndex::leftFilterType:
            left.filterType = ParameterCurves::typeOf (v);
            if (linked)
                right.filterType = left.filterType;
            break;
        case ParameterIndex::leftCutoff:
            left.cutoffTarget = ParameterCurves::cutoffCurve (v);
            if (linked)
                right.cutoffTarget = left.cutoffTarget;
            break;
        case ParameterIndex::leftReso:
            left.resoTarget = ParameterCurves::resoCurve (v);
            if (linked)
                right.resoTarget = left.resoTarget;
            break;
        case ParameterIndex::rightBits:
            if (!linked)
                right.quantScale = ParameterCurves::quantScaleOf (v);
            break;
        case ParameterIndex::rightFrequency:
            if (!linked)
            {
                right.rate = ParameterCurves::rateCurve (v);
                updateStepSpeed (right);
            }
            break;
        case ParameterIndex::rightLinkFreq:
            if (!linked)
            {
                right.antiAlias = v > 0.5;
                updateStepSpeed (right);
            }
            break;
        case ParameterIndex::rightFilterType:
            if (!linked)
                right.filterType = ParameterCurves::typeOf (v);
            break;
        case ParameterIndex::rightCutoff:
            if (!linked)
                right.cutoffTarget = ParameterCurves::cutoffCurve (v);
            break;
        case ParameterIndex::rightReso:
            if (!linked)
                right.resoTarget = ParameterCurves::resoCurve (v);
            break;
        case ParameterIndex::linkChannels:
            if (v > 0.5)
            {
                // Linking: the right filter takes the left one's place at once, without a glide.
                linked = true;
                right.cutoffTarget = left.cutoffTarget;
                right.resoTarget = left.resoTarget;
                right.cutoff = left.cutoff;
                right.reso = left.reso;
                right.filterType = left.filterType;
            }
            else
            {
                // Unlinking brings back what the right controls show; they were kept while linked.
                linked = false;
                right.rate =
                    ParameterCurves::rateCurve ((double) (float) rawValues[ParameterIndex::rightFrequency]);
                right.antiAlias = rawValues[ParameterIndex::rightLinkFreq] > 0.5;
                updateStepSpeed (right);
                right.quantScale = ParameterCurves::quantScaleOf (rawValues[ParameterIndex::rightBits]);
                right.cutoffTarget = ParameterCurves::cutoffCurve (rawValues[ParameterIndex::rightCutoff]);
                right.cutoff = right.cutoffTarget;
                right.resoTarget = ParameterCurves::resoCurve (rawValues[ParameterIndex::rightReso]);
                right.reso = right.resoTarget;
                right.filterType = (int) std::floor (rawValues[ParameterIndex::rightFilterType] * 4.0 + 0.5);
            }
            break;
        case ParameterIndex::fx:
            mixTarget = v;
            break;
        case ParameterIndex::outputVolume:
            volumeTarget = 4.0 * v * v;
            break;
        case ParameterIndex::leftFilterOrder:
            left.filterPre = value > 0.5f;
            break;
        case ParameterIndex::rightFilterOrder:
            right.filterPre = value > 0.5f;
            break;
        default:
            break;
    }
}

void VantriceCore::smoothControls() noexcept
{
    glide (preamp, preampTarget, smoothCoeff);
    glide (left.cutoff, left.cutoffTarget, smoothCoeff);
    glide (right.cutoff, right.cutoffTarget, smoothCoeff);
    glide (left.reso, left.resoTarget, smoothCoeff);
    glide (right.reso, right.resoTarget, smoothCoeff);
    glide (mix, mixTarget, smoothCoeff);
    glide (volume, volumeTarget, smoothCoeff);
}

void VantriceCore::advanceNoise() noexcept
{
    const juce::uint32 b = noiseB;
    noiseA = noiseA ^ b;
    noiseB = noiseA + b;
    noise = (float) static_cast<juce::int32> (b) * noiseScale;
}

void VantriceCore::advanceHoldClock (Channel& c) noexcept
{
    c.holdPhase = c.holdPhase - 1.0;
    if (c.holdPhase <= 0.0)
    {
        // The remainder carries over, so a hold period that is no whole number keeps its mean rate.
        holdTriggered = true;
        holdFraction = -c.holdPhase;
        c.holdPhase = 1.0 / c.rate + c.holdPhase + 1e-20;
    }
}

double VantriceCore::interpolate (const Channel& c, int offset) const noexcept
{
    // The signal at 15 samples plus the hold fraction in the past, oldest sample first.
    const double* table = sincTable.getData() + offset * sincTaps;
    const double* ring = c.crushRing.getData() + ringIndex + 1;
    double v = 0.0;
    for (int k = 0; k < sincTaps; ++k)
        v = v + table[k] * ring[k] + 1e-20;
    return v;
}

void VantriceCore::startStep (Channel& c, double v, double speed) noexcept
{
    const double change = v - c.heldValue;
    c.heldValue = v;
    c.stepHeight[c.stepWrite] = change;
    c.stepPosition[c.stepWrite] = speed * holdFraction;
    advanceRing (c.stepWrite, numStepSlots);
}

double VantriceCore::sumSteps (Channel& c, double speed) noexcept
{
    // Every slot is summed in every sample, live or not, so the cost never depends on the signal.
    const double* table = StepTable::values;
    const double lastStart = (double) StepTable::size - speed - 2.0;
    double a = 0.0;
    for (int j = 0; j < numStepSlots; ++j)
    {
        const double p = c.stepPosition[j];
        const int i = (int) p;
        const double r = table[i] + (p - i) * (table[i + 1] - table[i]);
        a = a + (r * c.stepHeight[j] + 1e-20);
        c.stepPosition[j] = p >= lastStart ? StepTable::silentRow : p + speed;
    }
    return a;
}

void VantriceCore::runFilter (Channel& c, double& u, int type) noexcept
{
    // A Chamberlin state-variable filter run twice on the same input: oversampled by 2 for stability
    // up to F = 0.83. The input is scaled by the root of the damping so the peak grows with 1/R.
    constexpr double e = 1e-20;
    const double f = c.cutoff;
    const double q = c.reso;
    const double s = u * c.resoRoot;

    const double l1 = f * c.band + c.low + e;
    const double b1 = (s - l1 - q * c.band + e) * f + c.band + e;
    c.low = f * b1 + l1 + e;
    c.high = s - c.low - q * b1 + e;
    c.band = f * c.high + b1 + e;
    c.notch = c.high + c.low + e;

    switch (type)
    {
        case 0:
            u = c.low;
            break;
        case 1:
            u = c.band;
            break;
        case 2:
            u = c.high;
            break;
        case 3:
            u = c.notch;
            break;
        default:
            break;
    }
}

double VantriceCore::channelStage (Channel& c, double x) noexcept
{
    holdTriggered = false;
    advanceHoldClock (c);

    c.dryRing[ringIndex] = x;
    c.dryRing[ringIndex + ringSize] = x;

    double y = clampUnit (x * preamp);

    if (c.filterType != filterOff && c.filterPre)
        runFilter (c, y, c.filterType);

    c.crushRing[ringIndex] = y;
    c.crushRing[ringIndex + ringSize] = y;

    if (holdTriggered)
    {
        holdTriggered = false;
        const int offset = (int) (holdFraction * sincRowsPerSample);
        const double v = quantise (interpolate (c, offset), c.quantScale, noise);
        startStep (c, v, c.stepSpeed);
    }

    double out = sumSteps (c, c.stepSpeed) + c.heldValue;

    if (c.filterType != filterOff && !c.filterPre)
        runFilter (c, out, c.filterType);

    return out;
}

void VantriceCore::linkedStage (double xLeft, double xRight) noexcept
{
    // One hold clock and the left settings for both channels; a hold that fell due while both
    // channels were silent stays pending.
    advanceHoldClock (left);

    left.dryRing[ringIndex] = xLeft;
    left.dryRing[ringIndex + ringSize] = xLeft;
    right.dryRing[ringIndex] = xRight;
    right.dryRing[ringIndex + ringSize] = xRight;

    if (!left.active && !right.active)
    {
        leftOut = rightOut = 0.0;
        return;
    }

    const int type = left.filterType;
    if (type != filterOff && left.filterPre)
    {
        runFilter (left, xLeft, type);
        runFilter (right, xRight, type);
    }

    left.crushRing[ringIndex] = xLeft;
    left.crushRing[ringIndex + ringSize] = xLeft;
    right.crushRing[ringIndex] = xRight;
    right.crushRing[ringIndex + ringSize] = xRight;

    if (holdTriggered)
    {
        holdTriggered = false;
        const int offset = (int) (holdFraction * sincRowsPerSample);
        const double vl = quantise (clampUnit (interpolate (left, offset) * preamp), left.quantScale, noise);
        const double vr = quantise (clampUnit (interpolate (right, offset) * preamp), left.quantScale, noise);
        startStep (left, vl, left.stepSpeed);
        startStep (right, vr, left.stepSpeed);
    }

    leftOut = sumSteps (left, left.stepSpeed) + left.heldValue;
    rightOut = sumSteps (right, left.stepSpeed) + right.heldValue;

    if (type != filterOff && !left.filterPre)
    {
        runFilter (left, leftOut, type);
        runFilter (right, rightOut, type);
    }
}

double VantriceCore::mixChannel (const Channel& c, double out) const noexcept
{
    // 21 samples back: the delay of the crushed path, so dry and wet stay in time. While converting,
    // the dry side is taken behind the preamp and a "Pre" filter.
    const double* source = resampling ? c.crushRing.getData() : c.dryRing.getData();
    const double d = source[ringIndex + 10];
    return ((out - d) * mix + d) * volume + 1e-20;
}

void VantriceCore::coreStep (double xLeft, double xRight) noexcept
{
    advanceNoise();

    if (linked)
    {
        linkedStage (xLeft, xRight);
    }
    else
    {
        leftOut = channelStage (left, xLeft);
        rightOut = channelStage (right, xRight);
    }

    advanceRing (ringIndex, ringSize);
    leftOut = mixChannel (left, leftOut);
    rightOut = mixChannel (right, rightOut);
}

void VantriceCore::coreStepMono (double x) noexcept
{
    advanceNoise();
    leftOut = channelStage (left, x);
    advanceRing (ringIndex, ringSize);
    leftOut = mixChannel (left, leftOut);
}

void VantriceCore::meterStereo (Channel& c, double o) noexcept
{
    const double m = meterPosition (o);
    if (m > c.meterPeak)
        c.meterPeak = m;
    c.meterPeak = meterDecay * c.meterPeak + 1e-20;
    c.envelope = (meterDecay + 1e-20) * c.envelope;
    if (std::abs (o) > c.envelope)
        c.envelope = std::abs (o);
    if (2e-5 > c.envelope)
        c.active = false;
}

void VantriceCore::processStereo (float** leftChannel, float** rightChannel, int numSamples)
{
    // The plug-in's own setting, so that tests, benchmarks and hosts compute alike.
    const juce::ScopedNoDenormals noDenormals;

    if (rateSupported && numSamples > 0)
    {
        if (referenceLoop)
            literalStereo (*leftChannel, *rightChannel, numSamples);
        else
            blockPath->processStereo (*leftChannel, *rightChannel, numSamples);
    }

    publishMeters ((float) left.meterPeak, (float) right.meterPeak);
    publishIndicators (left.active, right.active);
}

void VantriceCore::processMono (float** channel, int numSamples)
{
    const juce::ScopedNoDenormals noDenormals;

    if (rateSupported && numSamples > 0)
    {
        if (referenceLoop)
            literalMono (*channel, numSamples);
        else
            blockPath->processMono (*channel, numSamples);
    }

    publishMeters ((float) left.meterPeak, (float) right.meterPeak);
    publishIndicators (left.active, right.active);
}

void VantriceCore::literalStereo (float* l, float* r, int numSamples) noexcept
{
    for (int i = 0; i < numSamples; ++i)
    {
        smoothControls();
        right.resoRoot = std::sqrt (right.reso);
        left.resoRoot = std::sqrt (left.reso);

        const double xl = l[i];
        const double xr = r[i];
        if (xl != 0.0)
            left.active = true;
        if (xr != 0.0)
            right.active = true;

        if (!resampling)
        {
            coreStep (xl, xr);
        }
        else
        {
            // At the family's rates at most one core sample falls due per host sample; below the core
            // rate two may, and each runs in turn.
            const int due = left.inConv->process (xl, left.inResult);
            right.inConv->process (xr, right.inResult);

            for (int j = 0; j < due; ++j)
            {
                coreStep (left.inResult[j], right.inResult[j]);
                const int n = left.outConv->process (leftOut, left.outResult);
                right.outConv->process (rightOut, right.outResult);

                for (int k = 0; k < n; ++k)
                {
                    left.fifo[left.fifoWrite] = left.outResult[k];
                    right.fifo[right.fifoWrite] = right.outResult[k];
                    advanceRing (left.fifoWrite, fifoSize);
                    advanceRing (right.fifoWrite, fifoSize);
                }
            }

            leftOut = left.fifo[left.fifoRead];
            rightOut = right.fifo[right.fifoRead];
            advanceRing (left.fifoRead, fifoSize);
            advanceRing (right.fifoRead, fifoSize);
        }

        meterStereo (left, leftOut);
        meterStereo (right, rightOut);

        if (fadeActive && runFadeStep (rateInfo))
        {
            leftOut *= fadeGain;
            rightOut *= fadeGain;
        }

        l[i] = (float) leftOut;
        r[i] = (float) rightOut;
    }
}

void VantriceCore::literalMono (float* l, int numSamples) noexcept
{
    for (int i = 0; i < numSamples; ++i)
    {
        smoothControls();
        left.resoRoot = std::sqrt (left.reso);

        const double x = l[i];
        if (x != 0.0)
            left.active = true;

        if (!resampling)
        {
            coreStepMono (x);
        }
        else
        {
            const int due = left.inConv->process (x, left.inResult);
            for (int j = 0; j < due; ++j)
            {
                coreStepMono (left.inResult[j]);
                const int n = left.outConv->process (leftOut, left.outResult);
                for (int k = 0; k < n; ++k)
                {
                    left.fifo[left.fifoWrite] = left.outResult[k];
                    advanceRing (left.fifoWrite, fifoSize);
                }
            }

            leftOut = left.fifo[left.fifoRead];
            advanceRing (left.fifoRead, fifoSize);
        }

        // One meter for both sides, and a signed envelope test.
        const double m = meterPosition (leftOut);
        if (m > left.meterPeak)
            left.meterPeak = m;
        left.meterPeak = meterDecay * left.meterPeak + 1e-20;
        right.meterPeak = left.meterPeak;
        left.envelope = (meterDecay + 1e-20) * left.envelope;
        if (leftOut > left.envelope)
            left.envelope = leftOut;
        if (2e-5 > left.envelope)
            left.active = false;

        if (fadeActive && runFadeStep (rateInfo))
            leftOut *= fadeGain;

        l[i] = (float) leftOut;
    }
}

void VantriceCore::publishIndicators (bool leftLit, bool rightLit)
{
    const juce::ScopedWriteLock sl (ledLock);
    ledLeft = leftLit;
    ledRight = rightLit;
}

void VantriceCore::readIndicators (bool& leftLit, bool& rightLit) const
{
    const juce::ScopedReadLock sl (ledLock);
    leftLit = ledLeft;
    rightLit = ledRight;
}

int VantriceCore::getLatency() { return latency; }

int VantriceCore::measureLatency (int hostRate)
{
    // An impulse through the converter pair, the 21 core samples of the crushed path and the FIFO's
    // margin; the latency is the host sample at the peak of what comes out. For the family's rates this
    // gives the table's values.
    RateConverter in (hostRate, coreRateHz), out (coreRateHz, hostRate);
    constexpr int pathDelay = 21;
    double delay[pathDelay + 1]{};
    int delayPos = 0;
    double fifo[fifoSize]{};
    int fifoWrite = 4, fifoRead = 0;
    double inResult[RateConverter::maxOutputsPerCall], outResult[RateConverter::maxOutputsPerCall];

    constexpr int start = 64;
    // Long enough for the slowest supported pair: both filters and the path at 384000 Hz.
    constexpr int length = 4096;
    int peak = 0;
    double peakLevel = 0.0;

    for (int i = 0; i < length; ++i)
    {
        const int due = in.process (i == start ? 1.0 : 0.0, inResult);
        for (int j = 0; j < due; ++j)
        {
            delay[delayPos] = inResult[j];
            advanceRing (delayPos, pathDelay + 1);
            const int n = out.process (delay[delayPos], outResult);
            for (int k = 0; k < n; ++k)
            {
                fifo[fifoWrite] = outResult[k];
                advanceRing (fifoWrite, fifoSize);
            }
        }

        const double y = std::abs (fifo[fifoRead]);
        advanceRing (fifoRead, fifoSize);
        if (y > peakLevel)
        {
            peakLevel = y;
            peak = i;
        }
    }
    return peak - start;
}

int VantriceCore::latencyForRate (double hostRate)
{
    struct Entry
    {
        double rate;
        int latency;
    };
    static constexpr Entry table[] = { { 44100.0, 21 },  { 48000.0, 93 },   { 88200.0, 141 },
                                       { 96000.0, 149 }, { 176400.0, 245 }, { 192000.0, 263 } };
    for (const auto& e : table)
        if (e.rate == hostRate)
            return e.latency;
    return isSupportedRate (hostRate) ? measureLatency ((int) hostRate) : 0;
}
