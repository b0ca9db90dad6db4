#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

/** What the offline renderer makes of a signal for a plug-in state: its processor restored from the
    chunk, fed the MIDI events at their samples, in the renderer's own blocks. The hosted formats must
    put out the same bits. */
class ReferenceRender
{
public:
    /** The rendered output; empty, with the reason in error, if the renderer refused. silentChanges sets
        the silent preset changing type that a user's settings would give. */
    static juce::AudioBuffer<float> render (const juce::MemoryBlock& chunk,
                                            const juce::AudioBuffer<float>& input, double sampleRate,
                                            const juce::MidiBuffer& events, bool silentChanges,
                                            juce::String& error);
};
