#include "dsp/ParameterIndex.h"
#include "midi/MidiControl.h"
#include "parameters/IntParameter.h"
#include "parameters/ParameterManager.h"
#include "parameters/StringParameter.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace
{
// Enough rounds for the threads to overlap for about a second under ThreadSanitizer.
constexpr int rounds = 50000;
constexpr int numHostParameters = ParameterIndex::count;
// Controllers 20 to 37 carry the host parameters; the ones above them stay free for learning.
constexpr int firstController = 20;
constexpr int presetNumberIndex = 110000;
constexpr int presetNameIndex = 110001;

struct RangeChecker : Parameter::Listener
{
    void parameterChanged (Parameter* parameter) override
    {
        const float v = parameter->getNormalizedValue();

        if (v < 0.0f || v > 1.0f)
            outOfRange.fetch_add (1);

        calls.fetch_add (1);
    }

    std::atomic<int> calls{ 0 };
    std::atomic<int> outOfRange{ 0 };
};

struct MapWatcher : MidiControl::Listener
{
    void midiMapChanged (MidiControl*) override { ++mapChanges; }
    void midiControllerMoved (MidiControl* control) override
    {
        if (control->getLastMovedParameter() != nullptr)
            ++moves;
    }

    int mapChanges = 0;
    int moves = 0;
};

// Each parameter sits at one controller at most, and the count matches the map.
void expectConsistentMap (const MidiControl& midi)
{
    std::vector<Parameter*> seen;

    for (int number = 0; number < MidiControl::numControllers; ++number)
    {
        if (auto* parameter = midi.getAssignedParameter (number))
        {
            EXPECT_EQ (std::count (seen.begin(), seen.end(), parameter), 0) << parameter->getName();
            seen.push_back (parameter);
        }
    }

    EXPECT_EQ (midi.getNumAssignments(), (int) seen.size());
}

TEST (MidiControlConcurrency, ControllersHostWritesAndReadersShareTheTable)
{
    ParameterManager parameters;
    parameters.loadFromResource ("parameters.xml");
    parameters.addParameter (new IntParameter (presetNumberIndex, "Current Preset Number", 0, 127, 0));
    parameters.addParameter (new StringParameter (presetNameIndex, "Current Preset Name", ""));
    ASSERT_EQ (parameters.getNumParameters(), numHostParameters + 2);

    juce::StringArray names;

    for (int index = 0; index < numHostParameters; ++index)
        names.add (parameters.getParameterName (index));

    MidiControl midi (parameters);
    midi.setApplicationName ("Vantrice");

    for (int index = 0; index < numHostParameters; ++index)
        midi.assign (firstController + index, parameters.getParameter (index), false);

    RangeChecker immediate, deferred;
    MapWatcher watcher;
    parameters.addImmediateListenerToAll (&immediate);
    parameters.addDeferredListenerToAll (&deferred);
    midi.addListener (&watcher);

    std::atomic<int> running{ 3 };
    std::atomic<int> badReads{ 0 };

    std::thread audio (
        [&]
        {
            for (int round = 0; round < rounds; ++round)
            {
                const int offset = round % (numHostParameters + 4);
                midi.handleMidiMessage (
                    juce::MidiMessage::controllerEvent (1, firstController + offset, round % 128));
            }

            running.fetch_sub (1);
        });

    std::thread host (
        [&]
        {
            for (int round = 0; round < rounds; ++round)
            {
                parameters.setNormalizedValue (round % numHostParameters, (float) (round % 101) / 100.0f);

                if (round % 16 == 0)
                {
                    parameters.setIntValue (presetNumberIndex, round % 128);
                    parameters.setStringValue (presetNameIndex, "Preset " + juce::String (round));
                }
            }

            running.fetch_sub (1);
        });

    std::thread reader (
        [&]
        {
            for (int round = 0; round < rounds; ++round)
            {
                const int index = round % numHostParameters;
                auto* byName = parameters.getParameterByName (names[index]);
                const float normalised = byName == nullptr ? -1.0f : byName->getNormalizedValue();
                const float value = parameters.getValue (index);
                const auto name = parameters.getStringValue (presetNameIndex);
                auto* assigned = midi.getAssignedParameter (firstController + index);

                if (normalised < 0.0f || normalised > 1.0f || value < 0.0f || value > 1.0f
                    || !(name.isEmpty() || name.startsWith ("Preset ")))
                    badReads.fetch_add (1);

                if (assigned != nullptr && midi.findController (assigned) < 0)
                    badReads.fetch_add (1);
            }

            running.fetch_sub (1);
        });

    // Meanwhile the message thread delivers the updates and works the learn mode, as the editor would.
    for (int step = 0; running.load() > 0; ++step)
    {
        juce::MessageManager::getInstance()->runDispatchLoopUntil (1);
        midi.setLearnActive (step % 4 != 3);
        midi.setLearnParameter (parameters.getParameter (step % numHostParameters));
        midi.selectLearnAssignment (firstController + step % (numHostParameters + 4));
        midi.createXml();
    }

    audio.join();
    host.join();
    reader.join();
    juce::MessageManager::getInstance()->runDispatchLoopUntil (20);

    EXPECT_EQ (badReads.load(), 0);
    EXPECT_EQ (immediate.outOfRange.load(), 0);
    EXPECT_GT (immediate.calls.load(), 0);
    EXPECT_GT (deferred.calls.load(), 0);
    EXPECT_GT (watcher.moves, 0);
    expectConsistentMap (midi);

    // After the race the map still moves exactly the parameter bound to a controller.
    midi.setLearnActive (false);
    midi.clearAll();
    auto* volume = parameters.getParameterByName ("Output Volume");
    midi.assign (firstController, volume, false);
    midi.handleMidiMessage (juce::MidiMessage::controllerEvent (1, firstController, 127));
    EXPECT_FLOAT_EQ (volume->getValue(), 1.0f);
    EXPECT_EQ (parameters.getStringValue (presetNameIndex),
               "Preset " + juce::String ((rounds - 1) / 16 * 16));

    midi.removeListener (&watcher);
    parameters.removeDeferredListenerFromAll (&deferred);
    juce::MessageManager::getInstance()->runDispatchLoopUntil (20);
}
} // namespace
