#include "ThreadChecks.h"

#include "AudioComparison.h"
#include "ExpectedPlugin.h"
#include "HostParameters.h"
#include "MessagePump.h"
#include "StateDocument.h"
#include "TestSignal.h"

#include <atomic>
#include <cstdlib>
#include <iostream>
#include <thread>

namespace
{
constexpr double checkRate = 48000.0; // with rate conversion, the heavier path
constexpr int maxBlockSize = 256;
constexpr juce::int64 seedBase = 15000;

constexpr int audioBlocks = 800;
constexpr int automationWrites = 4000;
constexpr int stateRounds = 30;
constexpr int mappedController = 22;

// Far beyond what the rounds take; only a thread that hangs reaches it.
constexpr int joinRounds = 60 * 1000 / 10;
} // namespace

ThreadChecks::ThreadChecks (FormatUnderTest& formatToCheck)
    : format (formatToCheck)
    , report (formatToCheck.getReport())
{
}

void ThreadChecks::run()
{
    auto instance = format.createPrepared (checkRate, maxBlockSize);
    if (instance == nullptr)
        return;
    if (auto state = format.getStateXml (*instance))
    {
        StateDocument::setMap (*state, mappedController, ExpectedPlugin::parameters[ParameterIndex::fx].name);
        format.setStateXml (*instance, *state);
    }
    juce::MemoryBlock savedState;
    instance->getStateInformation (savedState);
    const HostParameters parameters (*instance);

    std::atomic<bool> audioDone{ false }, automationDone{ false }, allFinite{ true };
    std::atomic<int> blocksDone{ 0 }, writesDone{ 0 };

    std::thread audio (
        [&]
        {
            juce::Random random (seedBase);
            const auto material = TestSignal::makeMaterial (maxBlockSize, checkRate, seedBase);
            juce::AudioBuffer<float> block (2, maxBlockSize);
            juce::MidiBuffer midi;
            for (int i = 0; i < audioBlocks; ++i)
            {
                const int size = 1 + random.nextInt (maxBlockSize);
                block.setSize (2, size, false, false, true);
                for (int c = 0; c < 2; ++c)
                    block.copyFrom (c, 0, material, c, 0, size);
                midi.clear();
                if (i % 16 == 0)
                    midi.addEvent (
                        juce::MidiMessage::programChange (1, random.nextInt (ExpectedPlugin::numPresets)),
                        random.nextInt (size));
                if (i % 4 == 0)
                    midi.addEvent (
                        juce::MidiMessage::controllerEvent (1, mappedController, random.nextInt (128)),
                        random.nextInt (size));
                instance->processBlock (block, midi);
                if (!AudioComparison::allFinite (block))
                    allFinite = false;
                blocksDone = i + 1;
            }
            audioDone = true;
        });

    std::thread automation (
        [&]
        {
            juce::Random random (seedBase + 1);
            for (int i = 0; i < automationWrites; ++i)
            {
                parameters[random.nextInt (ExpectedPlugin::numParameters)]->setValue (random.nextFloat());
                writesDone = i + 1;
                if (i % 64 == 0)
                    std::this_thread::yield();
            }
            automationDone = true;
        });

    // The message thread: save, restore the saved state or one saved just now, let the formats' own
    // message work run.
    int restored = 0;
    for (int round = 0; round < stateRounds; ++round)
    {
        juce::MemoryBlock now;
        instance->getStateInformation (now);
        const auto& chunk = round % 2 == 0 ? savedState : now;
        instance->setStateInformation (chunk.getData(), (int) chunk.getSize());
        ++restored;
        juce::MessageManager::getInstance()->runDispatchLoopUntil (1);
    }

    const bool finished =
        MessagePump::runUntil ([&] { return audioDone.load() && automationDone.load(); }, joinRounds);
    if (!finished)
    {
        report.check (false, "threads: audio, automation and state calls at once finish",
                      "after " + juce::String (blocksDone.load()) + " blocks and "
                          + juce::String (writesDone.load()) + " writes, nothing moves: a deadlock");
        report.printSummary();
        std::cout.flush();
        std::_Exit (EXIT_FAILURE); // the hung threads can't be joined
    }
    audio.join();
    automation.join();

    report.check (true, "threads: " + juce::String (audioBlocks)
                            + " blocks with program changes and controllers, "
                            + juce::String (automationWrites) + " automation writes and "
                            + juce::String (restored) + " state saves and restores at once finish");
    report.check (allFinite.load(), "threads: and the sound stayed numbers throughout");

    // Afterwards the instance still works: it saves a readable state and takes it back.
    const auto state = format.getStateXml (*instance);
    report.check (state != nullptr && StateDocument::getBank (*state) != nullptr,
                  "threads: afterwards the instance saves a whole state");
}
