#include "support/PluginHarness.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace
{
// Bounded work per thread: enough interleavings to matter under ThreadSanitizer, quick without it.
constexpr int audioBlocks = 400;
constexpr int blockSize = 128;
} // namespace

TEST (ProcessorConcurrency, AudioRunsWhileTheHostAutomatesSavesRestoresAndChangesPresets)
{
    PluginHarness plugin;
    plugin->getMidiControl().assign (7, plugin->getParameterManager().getParameter (0), true);
    plugin->setChangingType (BasePluginOldStyle::silent);
    plugin->prepareToPlay (44100.0, blockSize);

    juce::MemoryBlock savedState;
    plugin->getStateInformation (savedState);

    std::atomic<bool> audioDone{ false };
    std::atomic<int> nonFinite{ 0 };

    std::thread audio (
        [&]
        {
            juce::AudioBuffer<float> buffer (2, blockSize);
            juce::MidiBuffer midi;
            for (int block = 0; block < audioBlocks; ++block)
            {
                for (int ch = 0; ch < 2; ++ch)
                    for (int i = 0; i < blockSize; ++i)
                        buffer.setSample (ch, i, 0.5f * std::sin (0.05f * (float) (block * blockSize + i)));
                midi.clear();
                midi.addEvent (juce::MidiMessage::controllerEvent (1, 7, block % 128), block % blockSize);
                if (block % 50 == 25)
                    midi.addEvent (juce::MidiMessage::programChange (1, (block / 50) % 10), 3);
                plugin->processBlock (buffer, midi);
                for (int ch = 0; ch < 2; ++ch)
                    for (int i = 0; i < blockSize; ++i)
                        if (!std::isfinite (buffer.getSample (ch, i)))
                            ++nonFinite;
            }
            audioDone = true;
        });

    std::thread host (
        [&]
        {
            for (int i = 0; !audioDone && i < 2000; ++i)
            {
                auto* p = plugin->getParameters()[(i % 17) + 1];
                p->setValue ((float) (i % 100) / 99.0f);
                (void) p->getText (p->getValue(), 100);
            }
        });

    std::thread state (
        [&]
        {
            for (int i = 0; !audioDone && i < 60; ++i)
            {
                juce::MemoryBlock block;
                plugin->getStateInformation (block);
                plugin->setStateInformation (savedState.getData(), (int) savedState.getSize());
                juce::MemoryBlock program;
                plugin->getCurrentProgramStateInformation (program);
            }
        });

    // The message thread's share: the editor's preset steps and the meters it reads.
    for (int i = 0; !audioDone && i < 300; ++i)
    {
        if (i % 2 == 0)
            plugin->selectNextPreset();
        else
            plugin->selectPreviousPreset();
        float l = 0.0f, r = 0.0f;
        if (auto* core = plugin->getVantriceCore())
            core->readMeters (l, r);
        (void) plugin->getParameterTextFor (i % ParameterIndex::count);
        juce::Thread::sleep (1);
    }

    audio.join();
    host.join();
    state.join();
    EXPECT_EQ (nonFinite.load(), 0);
    EXPECT_GE (plugin->getCurrentPreset(), 0);
    EXPECT_LT (plugin->getCurrentPreset(), 128);
}
