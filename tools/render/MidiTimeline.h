#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

/** The MIDI a render plays: controller and program change events at absolute sample positions, handed
    out block by block at their offsets within each block. */
class MidiTimeline
{
public:
    MidiTimeline() = default;

    /** The controllers and program changes of every track of a MIDI file, each at the sample
        round (seconds x rate). Events at the same sample keep the order of the tracks, then of the file. */
    static MidiTimeline fromMidiFile (const juce::MidiFile& file, double sampleRate);

    /** Reads a standard MIDI file. Throws RenderError for a missing or corrupt file. */
    static MidiTimeline fromFile (const juce::File& file, double sampleRate);

    /** Adds one event at an absolute sample position; events at one position keep the order of adding. */
    void addEvent (const juce::MidiMessage& message, int samplePosition);

    /** Replaces the contents of block by the events in [start, start + length), at their offsets. */
    void fillBlock (int start, int length, juce::MidiBuffer& block) const;

    int getNumEvents() const { return events.getNumEvents(); }
    const juce::MidiBuffer& getEvents() const noexcept { return events; }

private:
    juce::MidiBuffer events;
};
