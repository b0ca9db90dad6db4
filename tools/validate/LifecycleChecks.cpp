#include "LifecycleChecks.h"

#include "AudioComparison.h"
#include "BlockRunner.h"
#include "ExpectedPlugin.h"
#include "MessagePump.h"
#include "TestSignal.h"

#include <malloc.h>

namespace
{
constexpr juce::int64 seedBase = 13000;

/** Bytes the process has taken from the heap and not given back, in all arenas and mapped blocks. */
size_t heapInUse()
{
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

int countThreads()
{
    return juce::File ("/proc/self/task").getNumberOfChildFiles (juce::File::findDirectories);
}

/** Plays a little material through an instance; whether all of it came out as numbers. */
bool play (juce::AudioProcessor& processor, double sampleRate, int maxBlockSize, juce::int64 seed)
{
    const int length = (int) (sampleRate * 0.05); // a twentieth of a second
    auto audio = TestSignal::makeMaterial (length, sampleRate, seed);
    BlockRunner::run (processor, audio, BlockRunner::randomBlocks (length, maxBlockSize, seed));
    return AudioComparison::allFinite (audio);
}
} // namespace

LifecycleChecks::LifecycleChecks (FormatUnderTest& formatToCheck)
    : format (formatToCheck)
    , report (formatToCheck.getReport())
{
}

void LifecycleChecks::run()
{
    checkManyInstances();
    checkChangingSettings();
    checkEditor();
    checkLeaks();
}

void LifecycleChecks::checkManyInstances()
{
    // Made and destroyed one after the other, then several alive at once at different rates.
    const int sequential = 16;
    int made = 0;
    for (int i = 0; i < sequential; ++i)
    {
        juce::String error;
        auto instance = format.createUnprepared (ExpectedPlugin::latencies[(size_t) i % 6].rate, 512, error);
        made += instance != nullptr ? 1 : 0;
    }
    report.check (made == sequential, "lifecycle: 16 instances made and destroyed one after another",
                  juce::String (made) + " made");

    const int together = 6;
    std::vector<std::unique_ptr<juce::AudioPluginInstance>> instances;
    bool allPlayed = true;
    for (int i = 0; i < together; ++i)
        if (auto instance = format.createPrepared (ExpectedPlugin::latencies[(size_t) i].rate, 512))
            instances.push_back (std::move (instance));
    for (size_t i = 0; i < instances.size(); ++i)
        allPlayed =
            play (*instances[i], ExpectedPlugin::latencies[i].rate, 512, seedBase + (int) i) && allPlayed;
    report.check ((int) instances.size() == together && allPlayed,
                  "lifecycle: 6 instances alive at once, each at its own rate, all play");
    instances.clear();
}

void LifecycleChecks::checkChangingSettings()
{
    auto instance = format.createPrepared (ExpectedPlugin::latencies[0].rate, 512);
    if (instance == nullptr)
        return;

    // Rates and block sizes in the order a user's sessions might change them, with releases between.
    const int blockSizes[] = { 512, 64, 4096, 1, 256, 2048, 128, 1024 };
    juce::StringArray wrong;
    int round = 0;
    for (const int blockSize : blockSizes)
    {
        const auto& entry = ExpectedPlugin::latencies[(size_t) round % ExpectedPlugin::latencies.size()];
        instance->releaseResources();
        FormatUnderTest::prepare (*instance, entry.rate, blockSize);
        const bool finite = play (*instance, entry.rate, blockSize, seedBase + round);
        MessagePump::runUntil ([&] { return instance->getLatencySamples() == entry.latency; });
        if (!finite || instance->getLatencySamples() != entry.latency)
            wrong.add (juce::String ((int) entry.rate) + " Hz with blocks of " + juce::String (blockSize)
                       + (finite ? ": latency " + juce::String (instance->getLatencySamples())
                                 : juce::String (": not finite")));
        ++round;
    }
    instance->releaseResources();
    report.check (wrong.isEmpty(),
                  "lifecycle: prepared and released at 8 rates and block sizes, plays and "
                  "reports its latency each time",
                  wrong.joinIntoString ("; "));
}

void LifecycleChecks::checkEditor()
{
    auto instance = format.createPrepared (ExpectedPlugin::latencies[0].rate, 512);
    if (instance == nullptr)
        return;

    // JUCE's LV2 host embeds the plug-in's window in one of its own on the screen as it makes the editor.
    if (format.getFormatName() == "LV2"
        && juce::SystemStats::getEnvironmentVariable ("DISPLAY", {}).isEmpty())
    {
        report.skip ("lifecycle: the editor opens and closes",
                     "JUCE's LV2 host puts the editor's window on a screen, and there is none (DISPLAY)");
        return;
    }

    // Opened and closed as a host opens its window, without putting it on screen.
    const int openings = 3;
    int opened = 0;
    for (int i = 0; i < openings; ++i)
    {
        std::unique_ptr<juce::AudioProcessorEditor> editor (instance->createEditorIfNeeded());
        if (editor != nullptr && instance->getActiveEditor() == editor.get() && editor->getWidth() > 0
            && editor->getHeight() > 0)
            ++opened;
        editor.reset();
        MessagePump::runBriefly();
    }
    report.check (opened == openings, "lifecycle: the editor opens with a size and closes, 3 times",
                  juce::String (opened) + " opened");
    report.check (instance->getActiveEditor() == nullptr,
                  "lifecycle: the host has no editor after closing it");
    report.check (play (*instance, ExpectedPlugin::latencies[0].rate, 512, seedBase),
                  "lifecycle: the instance plays after its editor was closed");
}

void LifecycleChecks::liveOnce (int round)
{
    const auto& entry = ExpectedPlugin::latencies[(size_t) round % ExpectedPlugin::latencies.size()];
    auto instance = format.createPrepared (entry.rate, 512);
    if (instance == nullptr)
        return;
    play (*instance, entry.rate, 512, seedBase + round);
    if (format.getFormatName() != "LV2"
        || juce::SystemStats::getEnvironmentVariable ("DISPLAY", {}).isNotEmpty())
        std::unique_ptr<juce::AudioProcessorEditor> (instance->createEditorIfNeeded()).reset();
    instance->releaseResources();
    instance.reset();
    MessagePump::runBriefly();
}

void LifecycleChecks::checkLeaks()
{
    // The first lives fill what is made once per process and kept: the format's own tables, caches and
    // threads. After them, more lives must leave the heap and the threads as they were.
    const int warmUp = 3;
    for (int round = 0; round < warmUp; ++round)
        liveOnce (round);

    const auto heapBefore = heapInUse();
    const int threadsBefore = countThreads();
    const int lives = 12;
    for (int round = 0; round < lives; ++round)
        liveOnce (warmUp + round);
    const auto heapAfter = heapInUse();
    const int threadsAfter = countThreads();

    // An instance holds hundreds of kilobytes at least (its bank, its converters' tables), so a leak of
    // one over 12 lives shows far above this; the lives themselves leave a few kilobytes of caches.
    const size_t allowance = 64 * 1024;
    const auto grown = heapAfter > heapBefore ? heapAfter - heapBefore : 0;
    report.check (grown < allowance, "lifecycle: 12 more instance lives leave the heap as it was",
                  "it grew by " + juce::String ((juce::int64) grown) + " bytes");
    report.check (threadsAfter == threadsBefore, "lifecycle: and the threads as they were",
                  juce::String (threadsBefore) + " threads before, " + juce::String (threadsAfter)
                      + " after");
}
