#pragma once

#include "MidiTimeline.h"

#include "common/ScratchFolder.h"
#include "dsp/Vantrice.h"

#include <functional>
#include <memory>

/** Hosts one Vantrice processor offline, made exactly as a host makes it but with its settings file in
    a temporary folder of its own, so that the user's settings are neither read nor written. Settings
    are applied through the processor's own operations; `render` then runs a buffer through
    `processBlock` block by block, as a host's offline bounce would. Every failure throws RenderError. */
class Renderer
{
public:
    /** A block size common among hosts. */
    static constexpr int defaultBlockSize = 512;

    struct Result
    {
        juce::AudioBuffer<float> output; // as many channels and samples as the input
        double sampleRate = 0.0;
        int latencySamples = 0; // as the processor reports it
        bool compensated = false;
        double processingSeconds = 0.0; // around the block loop

        /** Seconds of audio per second of processing; 0 when nothing was measured. */
        double getRealtimeFactor() const;
    };

    /** Told the fraction done after each block. */
    using ProgressCallback = std::function<void (double fraction)>;

    Renderer();
    ~Renderer();

    Vantrice& getProcessor() noexcept { return *processor; }

    /** A host state chunk; one that isn't a state of this plug-in is refused, since the processor would
        silently ignore it. */
    void restoreState (const juce::MemoryBlock& chunk, const juce::String& sourceName);
    void restoreStateFile (const juce::File& file);
    void loadMidiMapFile (const juce::File& file);
    void loadBankFile (const juce::File& file);
    /** Selects a preset of the bank by its exact name, ignoring case, as a MIDI program change does. */
    void selectPreset (const juce::String& name);
    /** Reads a preset file into the current slot and applies it. */
    void loadPresetFile (const juce::File& file);
    /** Sets a host parameter by name, from a normalised value 0..1 or a text in the parameter's units. */
    void setParameter (const juce::String& name, const juce::String& value);

    juce::MemoryBlock getState();
    /** The current preset's name, with "(edited)" when the live values differ from its slot. */
    juce::String getPresetDescription() const;
    /** The bank by group, one preset a line with its program number. */
    juce::String getPresetList() const;

    /** Refuses a rate the processor can't run, which it would pass through unchanged. */
    static void checkSampleRate (double sampleRate);

    /** Runs input (mono or stereo) through the processor at the given rate in blocks of blockSize, with
        the events of midi at their samples. With compensate the output is shifted back by the latency:
        that many samples of silence are fed behind the input and as many dropped at the front. Call it
        once per Renderer: the processor keeps its state from one call to the next. */
    Result render (const juce::AudioBuffer<float>& input, double sampleRate, int blockSize = defaultBlockSize,
                   const MidiTimeline& midi = {}, bool compensate = false,
                   const ProgressCallback& progress = {});

private:
    juce::AudioProcessorParameter* findParameter (const juce::String& name) const;

    ScratchFolder settingsFolder;
    std::unique_ptr<Vantrice> processor;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (Renderer)
};
