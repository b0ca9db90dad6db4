#pragma once

#include <juce_core/juce_core.h>

/** What a VST3 module's factory says of its audio effect class, read as a host reads it before it makes
    an instance. A host keeps a plug-in by this class ID, so it is where a VST3 carries the 2.4 unique id
    of the same plug-in. */
class Vst3ClassInfo
{
public:
    /** Reads the first class of category "Audio Module Class" from the bundle's module. */
    explicit Vst3ClassInfo (const juce::File& bundle);

    bool isValid() const noexcept { return valid; }
    const juce::String& getError() const noexcept { return error; }
    const juce::String& getName() const noexcept { return name; }
    /** The 16 bytes of the class ID. */
    const juce::MemoryBlock& getClassId() const noexcept { return classId; }

private:
    bool valid = false;
    juce::String error, name;
    juce::MemoryBlock classId;
};
