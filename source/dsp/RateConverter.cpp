#include "dsp/RateConverter.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace
{
constexpr double pi = 3.141592653589793;

// Phases of the largest table we accept: 384 kHz against 44.1 kHz in 300 Hz units.
constexpr int maxFactor = 1280;
} // namespace

void RateConverter::factorsOf (int inRate, int outRate, int& inF, int& outF) noexcept
{
    // 300 Hz is the step the family's rates share; other pairs fall back to their own common step.
    const int unit = (inRate % 300 == 0 && outRate % 300 == 0) ? 300 : std::gcd (inRate, outRate);
    inF = unit > 0 ? inRate / unit : 0;
    outF = unit > 0 ? outRate / unit : 0;
}

bool RateConverter::canConvert (int inRate, int outRate) noexcept
{
    if (inRate <= 0 || outRate <= 0)
        return false;

    int inF = 0, outF = 0;
    factorsOf (inRate, outRate, inF, outF);

    if (inF > maxFactor || outF > maxFactor)
        return false;

    // An up-converter gives ceil (out / in) outputs at most.
    return (outF + inF - 1) / inF <= maxOutputsPerCall;
}

RateConverter::RateConverter (int inRate, int outRate)
{
    factorsOf (inRate, outRate, inFactor, outFactor);
    ratio = (double) inFactor / (double) outFactor;
    cutoff = std::min (1.0, (double) outRate / (double) inRate);
    phaseCount = outFactor;
    coefficients.assign ((size_t) phaseCount * numTaps, 0.0);
    advance.assign ((size_t) phaseCount, 0);

    for (int i = 0; i < phaseCount; ++i)
    {
        const double t = i * ratio;
        advance[(size_t) i] = (int) (std::floor (t) - std::floor ((i - 1) * ratio));
        const double f = t - std::floor (t);
        double* h = coefficients.data() + (size_t) i * numTaps;

        for (int k = 0; k < numTaps; ++k)
        {
            const double u = k - 32 - f;
            h[k] = u != 0.0 ? std::sin (u * cutoff * pi) / (u * pi) : cutoff;
        }

        for (int k = 0; k < numTaps; ++k)
        {
            const double w = (k - f) * 0.015625;
            if (w >= 0.0 && w <= 1.0)
                h[k] = h[k] * (0.42 - 0.5 * std::cos (2.0 * pi * w) + 0.08 * std::cos (4.0 * pi * w));
            else
                h[k] = 0.0;
        }
    }

    countdown = advance[0];

    // The same filters with the phases side by side for each tap, and the first three phases again
    // after the last, so that any four phases in a row are four neighbours.
    tapMajor.assign ((size_t) (numTaps * getTapStride()), 0.0);
    for (int k = 0; k < numTaps; ++k)
        for (int i = 0; i < getTapStride(); ++i)
            tapMajor[(size_t) (k * getTapStride() + i)] =
                coefficients[(size_t) ((i % phaseCount) * numTaps + k)];
}

void RateConverter::push (double x) noexcept
{
    delayLine[delayWrite] = x;
    delayLine[delayWrite + numTaps] = x;
    if (++delayWrite == numTaps)
        delayWrite = 0;
}

double RateConverter::dot() const noexcept
{
    const double* h = coefficients.data() + (size_t) phase * numTaps;
    const double* x = delayLine + delayWrite;
    double a = 0.0;
    for (int k = 0; k < numTaps; ++k)
        a = a + x[k] * h[k] + 1e-20;
    return a;
}

void RateConverter::nextPhase() noexcept
{
    if (++phase == phaseCount)
        phase = 0;
    countdown = advance[(size_t) phase];
}

int RateConverter::process (double x, double* result) noexcept
{
    if (inFactor > outFactor)
    {
        --countdown;
        push (x);
        if (countdown >= 1)
            return 0;

        result[0] = dot();
        nextPhase();
        return 1;
    }

    push (x);
    result[0] = dot();
    nextPhase();
    int n = 1;
    while (countdown == 0)
    {
        result[n] = dot();
        nextPhase();
        ++n;
    }
    return n;
}

void RateConverter::copyHistory (double* dest, int stride) const noexcept
{
    // Before a push the slot at `delayWrite` holds the oldest input, which the push replaces.
    for (int k = 0; k < historyLength; ++k)
        dest[k * stride] = delayLine[delayWrite + 1 + k];
}

void RateConverter::pushBlock (const double* inputs, int numInputs, int stride) noexcept
{
    if (numInputs <= 0)
        return;
    delayWrite = (delayWrite + numInputs) % numTaps;
    // The newest inputs, oldest first, from the slot the next push replaces.
    const double* newest = inputs + (historyLength + numInputs - numTaps) * stride;
    for (int k = 0, slot = delayWrite; k < numTaps; ++k)
    {
        delayLine[slot] = newest[k * stride];
        if (++slot == numTaps)
            slot = 0;
    }
    std::copy (delayLine, delayLine + numTaps, delayLine + numTaps);
}

int RateConverter::schedule (int numInputs, int* inputOf, int* phases) noexcept
{
    int p = phase, wait = countdown, total = 0;
    const int* steps = advance.data();
    const bool down = inFactor > outFactor;
    for (int i = 0; i < numInputs; ++i)
    {
        // Down: an output once the countdown has run out. Up: one output, then more while the next
        // phase takes no input.
        if (down && --wait >= 1)
            continue;
        do
        {
            inputOf[total] = i;
            phases[total++] = p;
            if (++p == phaseCount)
                p = 0;
            wait = steps[p];
        } while (!down && wait == 0);
    }
    phase = p;
    countdown = wait;
    return total;
}
