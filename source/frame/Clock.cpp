#include "frame/Clock.h"

#include <cmath>
#include <limits>

namespace
{
// How near to a grid line, in parts of a step, a jump of the position may land and still count as on
// the line: half a percent of a step.
constexpr double lineTolerance = 0.005;

// ceil of a sample count, held to what an int can count. A count that isn't positive (or isn't a
// number, as when an endless quarter meets a zero distance) is an edge now.
int samplesUntil (double samples) noexcept
{
    if (!(samples > 0.0))
        return 0;

    const double whole = std::ceil (samples);
    constexpr auto largest = static_cast<double> (std::numeric_limits<int>::max());
    return whole < largest ? static_cast<int> (whole) : std::numeric_limits<int>::max();
}
} // namespace

Clock::Clock() = default;

Clock::~Clock() { cancelPendingUpdate(); }

void Clock::handleAsyncUpdate()
{
    // Walked from the last entry to the first; a listener that removes itself, or another one, leaves
    // the walk going on below it, or from the new last entry if it is gone.
    const auto tellAll = [this] (void (Listener::*operation) (Clock*))
    {
        for (int i = listeners.size(); --i >= 0;)
        {
            auto* listener = listeners.getUnchecked (i);
            const int sizeBefore = listeners.size();
            (listener->*operation) (this);

            if (listeners.size() < sizeBefore)
            {
                const int stayedAt = listeners.indexOf (listener);
                i = stayedAt >= 0 ? stayedAt : juce::jmin (i, listeners.size());
            }
        }
    };

    if (runningChanged.exchange (0) != 0)
        tellAll (&Listener::clockRunningChanged);

    if (edgeHappened.exchange (0) != 0)
        tellAll (&Listener::clockEdge);
}

bool Clock::tick()
{
    if (!running)
        return false;

    if (dirty)
        recompute();

    edgeNow = false;
    bool edge = false;

    if (samplesToEdge == 0 && !(phase != -1 && phase == nextPhase))
    {
        edge = true;
        firstEdge = phase == -1;
        phase = nextPhase;
        edgeHappened.store (1);
        edgeNow = true;
        triggerAsyncUpdate();
    }

    --samplesToEdge;
    position += quartersPerSample;

    if (samplesToEdge < 0)
        dirty = true;

    return edge;
}

bool Clock::isGateOn() { return phase == 0; }

bool Clock::isGateOff() { return phase == 1; }

bool Clock::isNearerToPreviousStep()
{
    const double s = 1.0 / stepsPerQuarter;
    const double next = std::ceil (position / s) * s;
    return position - (next - s) < next - position;
}

void Clock::setSampleRate (double newSampleRate)
{
    if (newSampleRate != sampleRate)
    {
        sampleRate = newSampleRate;
        dirty = true;
    }
}

void Clock::setBpm (double newBpm)
{
    if (newBpm != bpm)
    {
        bpm = newBpm;
        dirty = true;
    }
}

void Clock::setPosition (double newPosition)
{
    if (newPosition != position)
    {
        position = newPosition;
        dirty = true;
    }
}

void Clock::start (double ppq)
{
    if (!running)
    {
        position = 0.0;
        phase = -1;
        running = true;
        dirty = true;
        runningChanged.store (1);
        triggerAsyncUpdate();
    }

    setPosition (ppq);
}

void Clock::stop()
{
    if (running)
    {
        position = 0.0;
        phase = -1;
        running = false;
        dirty = true;
        runningChanged.store (1);
        triggerAsyncUpdate();
    }
}

void Clock::addListener (Listener* listener)
{
    if (listener != nullptr)
        listeners.addIfNotAlreadyThere (listener);
}

void Clock::removeListener (Listener* listener) { listeners.removeFirstMatchingValue (listener); }

void Clock::recompute()
{
    dirty = false;

    // Without a tempo there is nothing to count: hold, and look again at the next tick, which a
    // negative count asks for.
    if (!(bpm > 0.0) || !(sampleRate > 0.0))
    {
        quartersPerSample = 0.0;
        samplesToEdge = -1;
        return;
    }

    // Seconds per minute.
    const double q = sampleRate * 60.0 / bpm;
    quartersPerSample = 1.0 / q;

    const double s = 1.0 / stepsPerQuarter;
    const double g = s * gateRatio;
    const double next = std::ceil (position / s) * s;
    const double last = next - s;

    if (position < 0.0)
    {
        phase = -1;
        samplesToEdge = -1;
        nextPhase = 0;
        return;
    }

    if (phase == -1)
    {
        nextPhase = 0;
        samplesToEdge = 0;
        return;
    }

    if (position > last + g)
    {
        if (phase == 0)
        {
            // Landing just before a line keeps the gate on over it.
            nextPhase = 1;
            samplesToEdge =
                next - position <= lineTolerance * s ? samplesUntil ((next + g - position) * q) : 0;
        }
        else
        {
            nextPhase = 0;
            samplesToEdge = samplesUntil ((next - position) * q);
        }
    }
    else
    {
        if (phase == 0)
        {
            nextPhase = 1;
            samplesToEdge = samplesUntil ((last + g - position) * q);
        }
        else
        {
            // Landing just after a line still starts its gate.
            nextPhase = 0;
            samplesToEdge = position - last > lineTolerance * s ? samplesUntil ((next - position) * q) : 0;
        }
    }
}
