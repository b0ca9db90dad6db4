#pragma once

#include "midi/MidiControl.h"
#include "parameters/FloatParameter.h"
#include "parameters/ParameterManager.h"

#include <juce_events/juce_events.h>

// A parameter table like the plug-in's: the embedded rows, all automatable, plus one row that isn't.
struct MidiTestTable
{
    MidiTestTable()
    {
        parameters.loadFromResource ("parameters.xml");
        parameters.addParameter (new FloatParameter (20, "Not Automatable", 0.0f, 1.0f, 0.0f));
        parameters.addParameter (new FloatParameter (21, "Wide", -10.0f, 10.0f, 0.0f));
        parameters.getParameter (21)->setAutomatable (true);
    }

    Parameter* byName (const char* name) const { return parameters.getParameterByName (name); }

    ParameterManager parameters;
    MidiControl midi{ parameters };
};

struct MidiRecorder : MidiControl::Listener
{
    void midiMapChanged (MidiControl*) override { calls.add ("map"); }
    void midiLearnChanged (MidiControl*) override { calls.add ("learn"); }
    void midiControllerMoved (MidiControl*) override { calls.add ("moved"); }

    juce::StringArray calls;
};

inline juce::MidiMessage controller (int number, int value, int channel = 1)
{
    return juce::MidiMessage::controllerEvent (channel, number, value);
}

inline void pumpMessages()
{
    // Long enough for the messages already posted on this thread to be delivered.
    constexpr int pumpMilliseconds = 20;
    juce::MessageManager::getInstance()->runDispatchLoopUntil (pumpMilliseconds);
}
