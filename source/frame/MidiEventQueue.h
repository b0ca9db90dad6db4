#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

/** The MIDI events of the block being processed, and the events of earlier blocks that lie beyond
    them. A block goes: `addEvents`, then for each sample position p from 0 up, `nextEventDue` (p) until
    it answers false, then `advance` by the block's length. Events come out in order of position and,
    at one position, in the order they were added.

    Two buffers take turns as the current one, so that moving the later events on copies them once and
    allocates nothing once `prepare` has reserved their storage. */
class MidiEventQueue final
{
public:
    MidiEventQueue();

    /** Reserves expectedBytes of storage in each buffer; call off the audio thread. */
    void prepare (int expectedBytes);

    /** Forgets every event, fetched or not. */
    void clear();

    /** Adds the events of block at their positions; events at negative positions are dropped. Call
        before fetching the block's first event: fetching starts again at the first event kept. */
    void addEvents (const juce::MidiBuffer& block);

    /** The position of the next event not yet taken, or -1 if there is none. */
    int getNextEventPosition();

    /** Takes the next event into event and returns true if it lies at position or before it; else
        returns false and leaves event alone. The event's bytes stay in the queue until the next call of
        `addEvents`, `advance` or `clear`. */
    bool nextEventDue (int position, juce::MidiMessageMetadata& event);

    /** Ends a block of numSamples: the events not taken at numSamples or later are kept, their
        positions reduced by numSamples, and all others are dropped. */
    void advance (int numSamples);

private:
    juce::MidiBuffer& current() noexcept { return buffers[currentIndex]; }
    void restart() noexcept;
    void fetch() noexcept;

    juce::MidiBuffer buffers[2];
    int currentIndex = 0;

    // Points at the first event not taken, which is the held one while an event is held.
    juce::MidiBufferIterator iterator;
    bool hasEvent = false;
    bool eventHeld = false;
    juce::MidiMessageMetadata heldEvent;
    int heldPosition = -1;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (MidiEventQueue)
};
