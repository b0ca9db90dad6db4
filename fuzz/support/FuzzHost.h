#pragma once

#include "common/ScratchFolder.h"
#include "common/XmlText.h"
#include "dsp/Vantrice.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

/** What every fuzz target shares: JUCE set up once for the process, a scratch folder that stands in for
    the home and configuration folders, started plug-ins, and the way a broken promise ends the run. */
class FuzzHost
{
public:
    /** Sets up on first use; every target calls it from its initialiser. */
    static FuzzHost& get();

    /** A folder of the run's own, removed at exit. */
    const juce::File& getScratch() const noexcept { return scratch; }

    /** Holds a plug-in that lives as long as the run, and destroys it at exit ahead of the JUCE objects
        that were made while it started (a static of the target's own would outlive them). */
    static Vantrice& keepUntilExit (std::unique_ptr<Vantrice> plugin);

    /** A started plug-in whose binary and settings live in `folder`, prepared at 44100 Hz. */
    static std::unique_ptr<Vantrice> startPlugin (const juce::File& folder);

    /** A plug-in whose state differs from a fresh one in every part a document may touch: live values
        edited away from the selected slot, a renamed preset and group, and a MIDI map. */
    static std::unique_ptr<Vantrice> startDistinctPlugin (const juce::File& folder);

    /** Plays a few blocks of a tone and says whether every output sample is a number. */
    static bool playsNumbers (Vantrice& plugin);

    /** Ends the run as libFuzzer counts a crash, with the input's promise that broke. */
    [[noreturn]] static void fail (const std::string& what);
    static void expect (bool condition, const std::string& what)
    {
        if (!condition)
            fail (what);
    }

    static juce::MemoryBlock bytes (const uint8_t* data, size_t size) { return { data, size }; }

    ~FuzzHost();

private:
    FuzzHost();

    std::unique_ptr<juce::ScopedJuceInitialiser_GUI> juce;
    ScratchFolder scratchFolder;
    juce::File scratch;
};

// libFuzzer's entry points, which every target defines.
extern "C" int LLVMFuzzerInitialize (int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size);
