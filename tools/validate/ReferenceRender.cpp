#include "ReferenceRender.h"

#include "RenderError.h"
#include "Renderer.h"

juce::AudioBuffer<float> ReferenceRender::render (const juce::MemoryBlock& chunk,
                                                  const juce::AudioBuffer<float>& input, double sampleRate,
                                                  const juce::MidiBuffer& events, bool silentChanges,
                                                  juce::String& error)
{
    try
    {
        Renderer renderer;
        renderer.restoreState (chunk, "the hosted instance's state");
        if (silentChanges)
            renderer.getProcessor().setChangingType (BasePluginOldStyle::silent);

        MidiTimeline timeline;
        for (const auto metadata : events)
            timeline.addEvent (metadata.getMessage(), metadata.samplePosition);
        return renderer.render (input, sampleRate, Renderer::defaultBlockSize, timeline).output;
    }
    catch (const RenderError& e)
    {
        error = "the renderer refused: " + e.getMessage();
        return {};
    }
}
