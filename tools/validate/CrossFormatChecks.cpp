#include "CrossFormatChecks.h"

#include "AudioComparison.h"
#include "BlockRunner.h"
#include "ExpectedPlugin.h"
#include "StateChecks.h"
#include "TestSignal.h"

namespace
{
constexpr double checkRate = 96000.0;
constexpr int maxBlockSize = 1024;
constexpr juce::int64 seedBase = 17000;
} // namespace

CrossFormatChecks::CrossFormatChecks (PluginLoader& loader, const std::array<juce::File, 3>& artefacts,
                                      const juce::File& scratchRoot, ValidationReport& reportToUse)
    : report (reportToUse)
{
    const char* const names[] = { "VST", "VST3", "LV2" };
    for (size_t i = 0; i < artefacts.size(); ++i)
        formats.push_back (
            std::make_unique<FormatUnderTest> (loader, names[i], artefacts[i], scratchRoot, report));
}

void CrossFormatChecks::run()
{
    report.setScope ("cross-format");
    bool allLoaded = true;
    for (auto& format : formats)
    {
        report.setScope ("cross-format " + format->getLabel());
        allLoaded = format->load() && allLoaded;
    }
    report.setScope ("cross-format");
    if (!allLoaded)
        return;

    juce::int64 seed = seedBase;
    for (auto& from : formats)
        for (auto& to : formats)
            if (from != to)
                checkPair (*from, *to, ++seed);
}

void CrossFormatChecks::checkPair (FormatUnderTest& from, FormatUnderTest& to, juce::int64 seed)
{
    const auto pair = "state: " + from.getLabel() + " to " + to.getLabel();
    auto source = from.createPrepared (checkRate, maxBlockSize);
    auto target = to.createPrepared (checkRate, maxBlockSize);
    if (source == nullptr || target == nullptr)
        return;

    auto session = from.getStateXml (*source);
    if (!report.check (session != nullptr, pair + ": the saved state holds the plug-in's state"))
        return;
    StateChecks::makeSessionState (*session, seed);
    from.setStateXml (*source, *session);

    // The chunk as the source's host saved it, handed to the target's host in its own form.
    const auto chunk = from.getChunk (*source);
    const bool handed = to.setChunk (*target, chunk);
    const auto sourceState = from.getStateXml (*source);
    const auto targetState = to.getStateXml (*target);
    report.check (handed && targetState != nullptr && sourceState != nullptr
                      && targetState->isEquivalentTo (sourceState.get(), false),
                  pair + ": the chunk restores the same state");
    const auto missing =
        targetState != nullptr ? StateChecks::findMissing (*targetState, seed) : juce::String ("all");
    report.check (missing.isEmpty(), pair + ": parameters, preset, names, stored value and map come back",
                  missing);

    // Both were playing when the state came, so both take it the same way in every format.
    const int length = (int) (checkRate * 0.05);
    const auto input = TestSignal::makeMaterial (length, checkRate, seed);
    auto fromSource = input, fromTarget = input;
    BlockRunner::run (*source, fromSource, BlockRunner::randomBlocks (length, maxBlockSize, seed));
    BlockRunner::run (*target, fromTarget, BlockRunner::randomBlocks (length, maxBlockSize, seed + 1));
    juce::String whyNot;
    const bool same = AudioComparison::identical (fromTarget, fromSource, whyNot);
    report.check (same, pair + ": and sounds the same, bit for bit", whyNot);
}
