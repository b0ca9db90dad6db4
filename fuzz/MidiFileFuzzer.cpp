// A MIDI file for the renderer, from anywhere.
#include "FuzzHost.h"

#include "MidiTimeline.h"
#include "RenderError.h"

namespace
{
juce::File file;
}

extern "C" int LLVMFuzzerInitialize (int*, char***)
{
    file = FuzzHost::get().getScratch().getChildFile ("input.mid");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput (const uint8_t* data, size_t size)
{
    file.replaceWithData (data, size);
    for (double rate : { 44100.0, 192000.0 })
    {
        try
        {
            // Only controllers and program changes reach the plug-in, at samples from 0 on.
            const auto timeline = MidiTimeline::fromFile (file, rate);
            for (const auto metadata : timeline.getEvents())
            {
                const auto message = metadata.getMessage();
                FuzzHost::expect (
                    message.isController() || message.isProgramChange(),
                    "the timeline holds an event that is neither controller nor program change");
                FuzzHost::expect (metadata.samplePosition >= 0, "an event before the start");
            }
        }
        catch (const RenderError& error)
        {
            FuzzHost::expect (error.getCode() == RenderError::corruptData
                                  || error.getCode() == RenderError::inputFile,
                              "a MIDI file gave an error of another kind");
        }
    }
    return 0;
}
