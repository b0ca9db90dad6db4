#pragma once

#include <juce_core/juce_core.h>

/** Finds the plug-in's own state chunk inside the state a JUCE host saves for each format, and puts a
    chunk back into such a state. The three wrappers hand the host the same chunk, each in its own
    envelope: a bank chunk block for the 2.4 interface, the component's stream (followed by JUCE's private
    data) in an XML document for VST3, and a base64 property in a Turtle document for LV2. */
class HostStateCodec
{
public:
    /** The chunk inside a host state of the format; empty when there is none. */
    static juce::MemoryBlock extractChunk (const juce::String& formatName,
                                           const juce::MemoryBlock& hostState);

    /** The host state with its chunk replaced and everything else kept; empty when it holds no chunk. */
    static juce::MemoryBlock replaceChunk (const juce::String& formatName, const juce::MemoryBlock& hostState,
                                           const juce::MemoryBlock& chunk);

private:
    struct Span
    {
        size_t start = 0, end = 0;
        bool found = false;
    };

    static Span findVstChunk (const juce::MemoryBlock& hostState);
    static Span findVst3Chunk (const juce::MemoryBlock& componentState);
    static Span findLv2Chunk (const juce::String& turtle);
};
