#include "dsp/ParameterIndex.h"
#include "frame/FerrowynEffect.h"
#include "parameters/FloatParameter.h"

#include <gtest/gtest.h>

namespace
{
/** Logs what the family layer asks of a core. */
struct LoggingCore : FerrowynEffectCore
{
    LoggingCore()
        : FerrowynEffectCore (nullptr)
    {
    }

    void processStereo (float**, float**, int numSamples) override { runs.push_back (numSamples); }
    void processMono (float**, int numSamples) override { runs.push_back (numSamples); }
    void clockTick (int index, Clock*) override { ticks.push_back ({ index, total() }); }
    void setQuality (int level) override { qualities.push_back (level); }
    void setTempo (double bpm) override { tempo = bpm; }

    int total() const
    {
        int sum = 0;
        for (int r : runs)
            sum += r;
        return sum;
    }

    std::vector<int> runs, qualities;
    std::vector<std::pair<int, int>> ticks; // clock, sample at which it ticked
    double tempo = 0.0;
};

/** A family member with a clock and a quality setting, unlike the crusher. */
struct ClockedEffect : FerrowynEffect
{
    explicit ClockedEffect (bool restart)
        : FerrowynEffect (ParameterIndex::count)
        , needsRestart (restart)
    {
        parameters.addParameter (new FloatParameter (qualityId, "Quality", 0.0f, 1.0f, 0.0f));
    }

    juce::String getPluginName() const override { return "Clocked"; }
    juce::String getPluginCode() const override { return "CL"; }
    int getNumberOfParameters() const override { return ParameterIndex::count; }
    Core* createCore() override { return new LoggingCore(); }
    int getNumberOfClocks() const override { return 1; }
    bool hasQualitySettings() const override { return true; }
    bool qualityNeedsRestart() const override { return needsRestart; }

    LoggingCore& logging() { return *static_cast<LoggingCore*> (getCore()); }

    static constexpr int qualityId = 200;
    const bool needsRestart;
};

/** A host playing from the start at a fixed tempo. */
struct PlayingHead : juce::AudioPlayHead
{
    juce::Optional<PositionInfo> getPosition() const override
    {
        PositionInfo info;
        info.setBpm (120.0);
        info.setPpqPosition (ppq);
        info.setIsPlaying (true);
        return info;
    }

    double ppq = 0.0;
};

struct Started
{
    explicit Started (bool restart = true)
        : folder (juce::File::createTempFile ("vantrice-family"))
    {
        folder.createDirectory();
        effect = std::make_unique<ClockedEffect> (restart);
        effect->start (folder.getChildFile ("Clocked.so"));
    }

    ~Started()
    {
        effect.reset();
        folder.deleteRecursively();
    }

    juce::File folder;
    std::unique_ptr<ClockedEffect> effect;
};
} // namespace

TEST (FamilyClock, RunsAreCutAtTheClockEdgesOfTheHostsGrid)
{
    Started s;
    auto& effect = *s.effect;
    PlayingHead head;
    effect.setPlayHead (&head);
    effect.prepareToPlay (44100.0, 4096);

    juce::AudioBuffer<float> buffer (2, 4096);
    juce::MidiBuffer midi;
    for (int block = 0; block < 3; ++block)
    {
        head.ppq = block * 4096 / 22050.0; // quarters at 120 bpm and 44100 Hz
        buffer.clear();
        effect.processBlock (buffer, midi);
    }

    // Sixteenth notes of 5512.5 samples, the gate on for half: the gate opens at 0, 5513 and 11025.
    auto& core = effect.logging();
    ASSERT_GE (core.ticks.size(), 2u);
    EXPECT_EQ (core.ticks[0].second, 0);
    EXPECT_EQ (core.ticks[1].second, 5513);
    EXPECT_EQ (core.tempo, 120.0);
    EXPECT_EQ (core.total(), 3 * 4096);
    for (int r : core.runs)
        EXPECT_GT (r, 0);
    effect.setPlayHead (nullptr);
}

TEST (FamilyQuality, StartsAtTheDefaultLevelAndTravelsWithStateAndSettings)
{
    juce::File folder;
    {
        Started s;
        folder = s.folder;
        auto* quality = s.effect->getParameterManager().getParameterByName ("Quality");
        ASSERT_NE (quality, nullptr);
        EXPECT_EQ (quality->getNormalizedValue(), 0.0f) << "level 0 until the settings say otherwise";

        quality->setNormalizedValue (2 * 0.33333334f, true);
        auto state = s.effect->createStateXml();
        ASSERT_NE (state->getFirstChildElement(), nullptr);
        EXPECT_EQ (state->getFirstChildElement()->getTagName(), "UniqueData");
        EXPECT_EQ (state->getFirstChildElement()->getStringAttribute ("quality"), "high");

        quality->setNormalizedValue (0.0f, true);
        s.effect->readState (*state);
        EXPECT_EQ (FerrowynEffect::qualityLevelOf (quality->getNormalizedValue()), 2);

        auto unknown = juce::XmlElement ("UniqueData");
        unknown.setAttribute ("quality", "ultra");
        s.effect->readUniqueData (unknown);
        EXPECT_EQ (FerrowynEffect::qualityLevelOf (quality->getNormalizedValue()), 2)
            << "an unknown name changes nothing";

        s.effect->setDefaultQuality (3);
        auto settings = s.effect->createUserSettingsXml();
        auto* qualitySettings = settings->getChildByName ("QualitySettings");
        ASSERT_NE (qualitySettings, nullptr);
        EXPECT_EQ (qualitySettings->getStringAttribute ("default"), "highest");
        s.effect->saveUserSettings();
        s.folder = juce::File(); // keep the folder for the next instance
    }

    auto next = std::make_unique<ClockedEffect> (true);
    next->start (folder.getChildFile ("Clocked.so"));
    EXPECT_EQ (next->getDefaultQuality(), 3);
    EXPECT_EQ (FerrowynEffect::qualityLevelOf (
                   next->getParameterManager().getParameterByName ("Quality")->getNormalizedValue()),
               3);
    next.reset();
    folder.deleteRecursively();
}

TEST (FamilyQuality, ReachesTheCoreAtPrepareOrAtOnceAsTheEffectAsks)
{
    for (const bool restart : { true, false })
    {
        Started s (restart);
        auto& core = s.effect->logging();
        core.qualities.clear();
        s.effect->getParameterManager().getParameterByName ("Quality")->setNormalizedValue (1.0f, true);
        EXPECT_EQ (core.qualities.size(), restart ? 0u : 1u) << restart;

        s.effect->prepareToPlay (48000.0, 256);
        ASSERT_FALSE (core.qualities.empty());
        EXPECT_EQ (core.qualities.back(), 3);
        EXPECT_EQ (core.qualities.size(), 1u)
            << "once: at prepare where it needs a restart, else at the change";
    }
}
