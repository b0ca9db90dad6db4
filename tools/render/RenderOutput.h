#pragma once

#include <juce_audio_formats/juce_audio_formats.h>
#include <juce_graphics/juce_graphics.h>

/** One file the renderer writes. Everything goes to a temporary file beside the target, which takes
    the target's place only in `commit`, so a run that fails leaves nothing half-written behind. */
class RenderOutput
{
public:
    /** Throws RenderError if the target's folder doesn't exist or can't be written. */
    explicit RenderOutput (const juce::File& target);

    /** A WAV file; 32 bits are written as float samples, 16 and 24 as integers. */
    void writeAudio (const juce::AudioBuffer<float>& buffer, double sampleRate, int bitDepth);
    void writeData (const juce::MemoryBlock& data);
    void writePng (const juce::Image& image);

    /** Moves the written file into the target's place. */
    void commit();

    const juce::File& getTarget() const noexcept { return target; }

private:
    std::unique_ptr<juce::FileOutputStream> openStream();
    [[noreturn]] void fail (const juce::String& reason) const;

    juce::File target;
    juce::TemporaryFile temporary;
};
