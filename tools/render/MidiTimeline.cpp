#include "MidiTimeline.h"

#include "RenderError.h"

#include <algorithm>
#include <cmath>
#include <vector>

MidiTimeline MidiTimeline::fromMidiFile (const juce::MidiFile& file, double sampleRate)
{
    juce::MidiFile timed (file);
    timed.convertTimestampTicksToSeconds();

    struct Entry
    {
        double sample;
        juce::MidiMessage message;
    };
    std::vector<Entry> entries;
    for (int t = 0; t < timed.getNumTracks(); ++t)
        if (auto* track = timed.getTrack (t))
            for (const auto* holder : *track)
                if (holder->message.isController() || holder->message.isProgramChange())
                    entries.push_back (
                        { std::round (holder->message.getTimeStamp() * sampleRate), holder->message });

    // Stable, so that the file's own order decides among events of one sample.
    std::stable_sort (entries.begin(), entries.end(),
                      [] (const Entry& a, const Entry& b) { return a.sample < b.sample; });

    MidiTimeline timeline;
    for (const auto& e : entries)
        if (e.sample >= 0.0 && e.sample < (double) std::numeric_limits<int>::max())
            timeline.addEvent (e.message, (int) e.sample);
    return timeline;
}

MidiTimeline MidiTimeline::fromFile (const juce::File& file, double sampleRate)
{
    if (!file.existsAsFile())
        throw RenderError (RenderError::inputFile, "cannot find MIDI file '" + file.getFullPathName() + "'");

    juce::FileInputStream stream (file);
    if (!stream.openedOk())
        throw RenderError (RenderError::inputFile, "cannot read MIDI file '" + file.getFullPathName() + "'");

    juce::MidiFile midi;
    if (!midi.readFrom (stream, false) || midi.getNumTracks() == 0)
        throw RenderError (RenderError::corruptData,
                           "'" + file.getFullPathName() + "' is not a valid standard MIDI file");
    return fromMidiFile (midi, sampleRate);
}

void MidiTimeline::addEvent (const juce::MidiMessage& message, int samplePosition)
{
    events.addEvent (message, samplePosition);
}

void MidiTimeline::fillBlock (int start, int length, juce::MidiBuffer& block) const
{
    block.clear();
    for (auto it = events.findNextSamplePosition (start); it != events.cend(); ++it)
    {
        const auto event = *it;
        if (event.samplePosition >= start + length)
            break;
        block.addEvent (event.data, event.numBytes, event.samplePosition - start);
    }
}
