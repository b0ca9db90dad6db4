#pragma once

#include <juce_events/juce_events.h>

#include <atomic>

/** Follows the host's musical position sample by sample and turns it into a square wave on a grid: a
    gate that goes on at every grid line and off after `gateRatio` of the step. The family layer feeds
    it at the head of every block and ticks it once per sample on the audio thread; listeners hear of
    starts, stops and edges later, on the message thread.

    A tempo of 0 (or a sample rate of 0) while running holds the clock where it is: `position` stays,
    the gate keeps its state and no edge happens, not even the first one after `start`, until a tempo
    arrives. Without a tempo there is no length of a quarter in samples to count towards a line. */
class Clock final : public juce::AsyncUpdater
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;

        /** The clock was started or stopped. */
        virtual void clockRunningChanged (Clock*) {}
        /** At least one edge happened since the last call; several are told as one. */
        virtual void clockEdge (Clock*) {}
    };

    Clock();
    ~Clock() override;

    void handleAsyncUpdate() override;

    /** Runs one sample; true when the gate changes in this sample. A stopped clock does nothing. */
    virtual bool tick();
    virtual bool isGateOn();
    virtual bool isGateOff();
    /** Whether the grid line before `position` is nearer than the line at or after it. */
    virtual bool isNearerToPreviousStep();

    // Each setter stores only a changed value, and then asks for a recompute.
    void setSampleRate (double newSampleRate);
    void setBpm (double newBpm);
    void setPosition (double newPosition);

    /** If stopped: runs from the start again, in phase -1, and tells the listeners. Then, in any
        case, moves to ppq. */
    void start (double ppq);
    /** If running: stops, back at 0 in phase -1, and tells the listeners. */
    void stop();

    void addListener (Listener* listener);
    void removeListener (Listener* listener);

    double getPosition() const noexcept { return position; }
    double getSampleRate() const noexcept { return sampleRate; }
    double getBpm() const noexcept { return bpm; }
    double getStepsPerQuarter() const noexcept { return stepsPerQuarter; }
    double getGateRatio() const noexcept { return gateRatio; }
    double getQuartersPerSample() const noexcept { return quartersPerSample; }
    int getSamplesToEdge() const noexcept { return samplesToEdge; }
    int getPhase() const noexcept { return phase; }
    int getNextPhase() const noexcept { return nextPhase; }
    bool isRunning() const noexcept { return running; }
    bool isDirty() const noexcept { return dirty; }
    bool isFirstEdge() const noexcept { return firstEdge; }
    bool isEdgeNow() const noexcept { return edgeNow; }
    bool hasRunningChangePending() const noexcept { return runningChanged.load() != 0; }
    bool hasEdgePending() const noexcept { return edgeHappened.load() != 0; }

private:
    void recompute();

    double position = 0.0;
    double sampleRate = 44100.0;
    double bpm = 0.0;
    double stepsPerQuarter = 4.0;
    double gateRatio = 0.5;
    double quartersPerSample = 0.0;
    int samplesToEdge = 0;
    int phase = -1;
    int nextPhase = 0;
    bool running = false;
    bool dirty = true;
    bool firstEdge = false;
    bool edgeNow = false;
    std::atomic<int> runningChanged{ 0 };
    std::atomic<int> edgeHappened{ 0 };
    juce::Array<Listener*> listeners;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (Clock)
};
