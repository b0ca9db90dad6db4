#include "ExpectedPlugin.h"
#include "support/PluginHarness.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <ostream>

namespace
{
constexpr int parameterCount = ParameterIndex::count;

/** A plug-in prepared as a host prepares it. */
struct Started : PluginHarness
{
    explicit Started (const juce::File& settingsFolder = {})
        : PluginHarness (settingsFolder)
    {
        prepared();
    }
};

// Everything a state chunk carries (live values, bank, selection, map) as the plug-in writes it, and the
// live values and name of the selection, which a document passes by.
juce::String snapshotOf (Vantrice& plugin)
{
    auto text = plugin.createStateXml()->toString();
    for (int i = 0; i < parameterCount; ++i)
        text << " " << plugin.getParameterManager().getNormalizedValue (i);
    return text + plugin.getParameterManager().getStringValue (BasePluginOldStyle::currentPresetNameId)
           + plugin.getParameterManager().getStringValue (BasePluginOldStyle::currentPresetNumberId);
}

juce::MemoryBlock chunkOf (const juce::XmlElement& xml)
{
    juce::MemoryBlock block;
    juce::AudioProcessor::copyXmlToBinary (xml, block);
    return block;
}

juce::MemoryBlock stateOf (Vantrice& plugin)
{
    juce::MemoryBlock block;
    plugin.getStateInformation (block);
    return block;
}

void restore (Vantrice& plugin, const juce::MemoryBlock& block)
{
    plugin.setStateInformation (block.getData(), (int) block.getSize());
}

// A plug-in whose state differs from a fresh one's in every part a chunk carries.
void makeDistinct (Vantrice& plugin, float offset)
{
    auto& manager = plugin.getParameterManager();
    plugin.selectPreset (5);
    plugin.setPresetName (7, "Renamed Seven");
    plugin.setGroupName (1, "Renamed Group");
    plugin.movePreset (2, 40, 0, 2);
    for (int i = 0; i < parameterCount; ++i)
        manager.setNormalizedValue (i, 0.013f + offset + 0.041f * (float) i);
    plugin.storePreset (9);
    for (int i = 0; i < parameterCount; ++i)
        manager.setNormalizedValue (i, 0.029f + offset + 0.037f * (float) i);
    plugin.getMidiControl().assign (7, manager.getParameter (ParameterIndex::outputVolume), false);
    plugin.getMidiControl().assign (20, manager.getParameter (ParameterIndex::leftLinkFreq), false);
}

/** Instances of one test share a settings folder, so that one hands its settings on to the next. */
class PluginState : public ::testing::Test
{
protected:
    Started startPlugin() { return Started (folder); }
    juce::File settingsFile() const { return folder.getChildFile ("Vantrice.ini"); }

    const ScratchFolder scratch{ "vantrice-test" };
    const juce::File folder = scratch.getFolder();
};

struct StateSpy : BasePlugin::StateListener
{
    void stateLoaded (BasePlugin*) override { ++loaded; }
    void stateSaved (BasePlugin*) override { ++saved; }
    int loaded = 0, saved = 0;
};

// The live values come back as they were, edited away from their slot, with the bank, the selection and
// the map; the state's listeners hear of the saving and the loading on the message thread.
TEST_F (PluginState, RoundTripBringsBackEverythingItCarries)
{
    auto source = startPlugin();
    makeDistinct (*source, 0.0f);
    ASSERT_NE (liveValues (*source), slotValues (*source, source->getCurrentPreset()));
    StateSpy spy;
    source->addStateListener (&spy);
    const auto saved = stateOf (*source);
    auto target = startPlugin();
    target->addStateListener (&spy);
    ASSERT_NE (snapshotOf (*target), snapshotOf (*source));

    restore (*target, saved);
    EXPECT_EQ (snapshotOf (*target), snapshotOf (*source));
    const int selected = source->getCurrentPreset();
    EXPECT_EQ (target->getCurrentPreset(), selected);
    juce::MessageManager::getInstance()->runDispatchLoopUntil (20);
    EXPECT_EQ (spy.saved, 1);
    EXPECT_EQ (spy.loaded, 1);

    // The slot kept its stored values: reselecting it brings them.
    target->selectNextPreset();
    target->selectPreviousPreset();
    EXPECT_EQ (liveValues (*target), slotValues (*target, selected));
    source->removeStateListener (&spy);
    target->removeStateListener (&spy);
}

// A tone through one started plug-in, restored before or after it is prepared, or after a block played.
std::vector<float> playAfterRestore (const juce::File& folder, const juce::MemoryBlock& state, int moment)
{
    PluginHarness plugin (folder);
    juce::AudioBuffer<float> buffer (2, 512);
    juce::MidiBuffer midi;
    const auto fill = [&buffer]
    {
        for (int c = 0; c < 2; ++c)
            for (int i = 0; i < buffer.getNumSamples(); ++i)
                buffer.setSample (c, i, 0.5f * std::sin (0.05f * (float) (i + 7 * c)));
    };
    if (moment == 0)
        restore (*plugin, state);
    plugin.prepared (44100.0, buffer.getNumSamples());
    if (moment == 2)
    {
        fill();
        plugin->processBlock (buffer, midi);
    }
    if (moment != 0)
        restore (*plugin, state);
    fill();
    plugin->processBlock (buffer, midi);
    return { buffer.getReadPointer (1), buffer.getReadPointer (1) + buffer.getNumSamples() };
}

TEST_F (PluginState, ARestoreBeforeAnythingPlayedSoundsTheSameWhetherPreparedOrNot)
{
    auto source = startPlugin();
    makeDistinct (*source, 0.0f);
    const auto saved = stateOf (*source);
    // Some hosts prepare first and restore after, others the other way round; the sound is one.
    const auto restoredFirst = playAfterRestore (folder, saved, 0);
    EXPECT_EQ (playAfterRestore (folder, saved, 1), restoredFirst);
    // Once audio has played, the restored settings glide in like any other change.
    EXPECT_NE (playAfterRestore (folder, saved, 2), restoredFirst);
}

TEST_F (PluginState, ProgramChunkCarriesTheSlotIntoTheSelectedOne)
{
    auto source = startPlugin();
    source->selectPreset (6);
    for (int i = 0; i < parameterCount; ++i)
        source->getParameterManager().setNormalizedValue (i, 0.5f + 0.02f * (float) i);
    juce::MemoryBlock chunk;
    source->getCurrentProgramStateInformation (chunk);

    auto target = startPlugin();
    target->selectPreset (11);
    target->setCurrentProgramStateInformation (chunk.getData(), (int) chunk.getSize());
    EXPECT_EQ (target->getCurrentPreset(), 11);
    EXPECT_EQ (target->getPresetName (11), source->getPresetName (6));
    EXPECT_EQ (slotValues (*target, 11), slotValues (*source, 6));
    EXPECT_EQ (liveValues (*target), slotValues (*target, 11));
}

// Chunks that must change nothing: damaged ones, and documents that are no state of ours. A program
// chunk that gives no document changes nothing either.
struct BadChunk
{
    const char* name;
    std::function<juce::MemoryBlock (const juce::MemoryBlock& valid)> make;
    bool givesXml = false;
};

void PrintTo (const BadChunk& c, std::ostream* out) { *out << c.name; }

BadChunk edited (const char* name, std::function<void (juce::MemoryBlock&)> edit)
{
    return { name, [edit] (const juce::MemoryBlock& valid)
             {
                 auto block = valid;
                 edit (block);
                 return block;
             } };
}

BadChunk cut (const char* name, size_t numerator, size_t denominator)
{
    return { name, [=] (const juce::MemoryBlock& valid)
             { return juce::MemoryBlock (valid.getData(), valid.getSize() * numerator / denominator); } };
}

BadChunk document (const char* name, const char* text)
{
    return { name,
             [text] (const juce::MemoryBlock&)
             {
                 juce::MemoryBlock block;
                 if (auto xml = juce::parseXML (text))
                     juce::AudioProcessor::copyXmlToBinary (*xml, block);
                 else
                     block.append (text, std::strlen (text));
                 return block;
             },
             juce::parseXML (text) != nullptr };
}

const BadChunk badChunks[] = {
    cut ("Empty", 0, 1),
    { "HeaderOnly", [] (const juce::MemoryBlock& valid) { return juce::MemoryBlock (valid.getData(), 8); } },
    cut ("TruncatedAtAQuarter", 1, 4),
    cut ("TruncatedAtThreeQuarters", 3, 4),
    edited ("WrongMagic", [] (juce::MemoryBlock& b) { b[0] = 'W'; }),
    edited ("LengthZero", [] (juce::MemoryBlock& b) { b.copyFrom ("\0\0\0\0", 4, 4); }),
    edited ("LengthNegative", [] (juce::MemoryBlock& b) { b.copyFrom ("\xff\xff\xff\xff", 4, 4); }),
    edited ("RandomBytesInAWrapper",
            [] (juce::MemoryBlock& b)
            {
                juce::Random random (77);
                for (size_t i = 8; i < b.getSize(); ++i)
                    b[i] = (char) random.nextInt (256);
            }),
    document ("TextThatIsNoXml", "this is not a plug-in state"),
    document ("AnotherApplication", R"(<PluginState application="Other"><ParametersState>
        <param name="Preamp" value="0.99"/></ParametersState><PresetsState currentPreset="7"/></PluginState>)"),
    document ("NoApplication", R"(<PluginState><ParametersState><param name="Preamp" value="0.99"/>
        </ParametersState></PluginState>)"),
    document ("OldStateOfAnotherPlugin", R"(<OtherPluginState currentPreset="7"/>)"),
    document ("PresetParametersAsIfOutsidePresets", R"(<PluginState application="Vantrice">
        <NotPresetableParams><param name="Preamp" value="0.99"/>
        <param name="Current Preset Number" value="0.5"/></NotPresetableParams>
        <NotPresetParams><param name="Preamp" value="0.99"/></NotPresetParams></PluginState>)"),
    document ("APresetInsteadOfAState", R"(<Preset application="Vantrice" name="Intruder">
        <param name="Preamp" value="0.99"/></Preset>)"),
};

class BadChunkTarget : public PluginState, public ::testing::WithParamInterface<BadChunk>
{
};

TEST_P (BadChunkTarget, LeavesEverythingAsItWas)
{
    Started source;
    makeDistinct (*source, 0.2f);
    const auto valid = stateOf (*source);
    auto target = startPlugin();
    makeDistinct (*target, 0.0f);
    target->selectPreset (3);
    const auto chunk = GetParam().make (valid);
    ASSERT_EQ (juce::AudioProcessor::getXmlFromBinary (chunk.getData(), (int) chunk.getSize()) != nullptr,
               GetParam().givesXml);

    const auto before = snapshotOf (*target);
    target->setStateInformation (chunk.getData(), (int) chunk.getSize());
    EXPECT_EQ (snapshotOf (*target), before);
    if (!GetParam().givesXml)
    {
        target->setCurrentProgramStateInformation (chunk.getData(), (int) chunk.getSize());
        EXPECT_EQ (snapshotOf (*target), before);
    }

    // The valid chunk does change the target, so the comparison above can fail.
    restore (*target, valid);
    EXPECT_NE (snapshotOf (*target), before);
}

INSTANTIATE_TEST_SUITE_P (Chunks, BadChunkTarget, ::testing::ValuesIn (badChunks),
                          [] (const ::testing::TestParamInfo<BadChunk>& paramInfo)
                          { return std::string (paramInfo.param.name); });

// A chunk whose header claims more text than it holds is read as far as it goes.
TEST_F (PluginState, AChunkIsReadNoFurtherThanItsEnd)
{
    auto source = startPlugin();
    makeDistinct (*source, 0.0f);
    auto chunk = stateOf (*source);
    chunk.copyFrom ("\xf0\xff\xff\x7f", 4, 4);
    auto target = startPlugin();
    restore (*target, chunk);
    EXPECT_EQ (snapshotOf (*target), snapshotOf (*source));
}

const char* const oldState = R"(<VantricePluginState currentPreset="2"><UniqueData/>
  <VantricePresetBank name="Old Bank">
    <VantricePresetGroup name="Old Group A">
      <VantricePreset name="Old A0"><param name="Preamp" value="0.1"/></VantricePreset>
      <VantricePreset name="Old A1"><param name="Preamp" value="0.3"/></VantricePreset>
    </VantricePresetGroup>
    <VantricePresetGroup name="Old Group B">
      <VantricePreset name="Old B0"><param name="Preamp" value="0.625"/>
        <param name="Output Volume" value="0.75"/></VantricePreset>
    </VantricePresetGroup>
  </VantricePresetBank>
  <MidiControlMap name="Vantrice"><assign CC="11" param="FX"/></MidiControlMap>
</VantricePluginState>)";

// An old state has no live values: it applies its selected preset, from its own bank or, without one,
// from the bank that is there; a selection beyond the bank keeps the current one and applies that.
TEST_F (PluginState, OldStateRestoresItsBankAndMapAndAppliesItsSelection)
{
    struct Case
    {
        int currentPreset;
        bool withBank;
        int selected;
    };
    for (const auto& c : { Case{ 2, true, 2 }, Case{ 500, true, 6 }, Case{ 3, false, 3 } })
    {
        SCOPED_TRACE (juce::String (c.currentPreset) + (c.withBank ? " with a bank" : " without a bank"));
        auto plugin = startPlugin();
        plugin->selectPreset (6);
        for (int i = 0; i < parameterCount; ++i)
            plugin->getParameterManager().setNormalizedValue (i, 0.111f + 0.023f * (float) i);
        const auto factoryName = plugin->getPresetName (2);
        auto xml = juce::parseXML (oldState);
        xml->setAttribute ("currentPreset", c.currentPreset);
        if (!c.withBank)
            xml->deleteAllChildElementsWithTagName ("VantricePresetBank");

        restore (*plugin, chunkOf (*xml));
        EXPECT_EQ (plugin->getCurrentPreset(), c.selected);
        EXPECT_EQ (liveValues (*plugin), slotValues (*plugin, c.selected));
        EXPECT_EQ (plugin->getMidiControl().getAssignedParameter (11)->getName(), "FX");
        EXPECT_EQ (plugin->getPresetName (2), c.withBank ? "Old B0" : factoryName);
        if (c.withBank)
        {
            EXPECT_EQ (plugin->getBankName(), "Old Bank");
            EXPECT_EQ (plugin->getGroupName (1) + " " + juce::String (plugin->getGroupSize (1)),
                       "Old Group B 1");
            EXPECT_EQ (plugin->getPresetName (3), "Preset 3");
            EXPECT_EQ (plugin->getPreset (2)->getValue (ParameterIndex::outputVolume), 0.75f);
        }
    }
}

TEST_F (PluginState, OldPresetAndBankFilesLoadAndAreSavedInThePresentForm)
{
    auto plugin = startPlugin();
    EXPECT_EQ (plugin->getPresetWildcards() + " " + plugin->getBankWildcards() + " "
                   + plugin->getMapWildcards(),
               "*.vtprs; *.vtp *.vtprsb; *.vtb *.vtccmap; *.vtc");
    const auto oldFile = folder.getChildFile ("Old.vtp");
    ASSERT_TRUE (oldFile.replaceWithText (
        R"(<VantricePreset name="Old File"><param name="Preamp" value="0.125"/></VantricePreset>)"));
    plugin->selectPreset (2);
    // Presets of the old format had both filter orders "Post".
    plugin->getPreset (2)->setValue (ParameterIndex::leftFilterOrder, 1.0f);
    ASSERT_TRUE (plugin->loadPresetFile (oldFile, 2));
    EXPECT_EQ (plugin->getPresetName (2), "Old File");
    EXPECT_EQ (liveValues (*plugin), slotValues (*plugin, 2));
    EXPECT_EQ (plugin->getPreset (2)->getValue (ParameterIndex::leftFilterOrder), 0.0f);

    const auto savedFile = folder.getChildFile ("Saved.vtprs");
    ASSERT_TRUE (plugin->savePresetFile (savedFile, 2));
    const auto saved = juce::parseXML (savedFile);
    ASSERT_NE (saved, nullptr);
    EXPECT_EQ (saved->getTagName() + " " + saved->getStringAttribute ("rev"), "Preset 1");
    EXPECT_EQ (saved->getChildByAttribute ("name", "Preamp")->getStringAttribute ("value"), "0.125");

    const auto bankFile = folder.getChildFile ("Old.vtb");
    ASSERT_TRUE (bankFile.replaceWithText (
        juce::parseXML (oldState)->getChildByName ("VantricePresetBank")->toString()));
    ASSERT_TRUE (plugin->loadBankFile (bankFile));
    EXPECT_EQ (plugin->getPresetName (2), "Old B0");
    EXPECT_EQ (liveValues (*plugin), slotValues (*plugin, 2));
}

// What one instance sets, the next one starts with: written when the last one goes.
TEST_F (PluginState, UserSettingsAreWrittenAtDestructionAndReadByTheNextInstance)
{
    const auto recent = folder.getChildFile ("recent");
    ASSERT_TRUE (recent.createDirectory());
    const auto bankFile = recent.getChildFile ("mine.vtprsb");
    const auto mapFile = folder.getChildFile ("mine.vtccmap");
    {
        auto plugin = startPlugin();
        plugin->setPresetName (0, "User Bank First");
        ASSERT_TRUE (plugin->saveBankFile (bankFile));
        plugin->getMidiControl().assign (30, plugin->getParameterManager().getParameter (2), false);
        ASSERT_TRUE (plugin->getMidiControl().saveFile (mapFile));
        plugin->setStoringMode (BasePluginOldStyle::automatic);
        plugin->setChangingType (BasePluginOldStyle::silent);
        plugin->setPresetsMode (BasePluginOldStyle::userDefinedPresets);
        plugin->setPresetsFile (bankFile.getFullPathName());
        plugin->getMidiControl().setUseDefaultMap (true);
        plugin->getMidiControl().setDefaultMapFile (mapFile.getFullPathName());
        EXPECT_FALSE (settingsFile().exists());
    }
    auto next = startPlugin();
    EXPECT_EQ (next->getStoringMode(), BasePluginOldStyle::automatic);
    EXPECT_EQ (next->getChangingType(), BasePluginOldStyle::silent);
    EXPECT_EQ (next->getPresetsFile(), bankFile.getFullPathName());
    EXPECT_EQ (next->getRecentDirectory(), recent.getFullPathName());
    EXPECT_EQ (next->getMidiControl().getDefaultMapFile(), mapFile.getFullPathName());
    EXPECT_EQ (next->getMidiControl().getAssignedParameter (30)->getName(), "Left Frequency");
    EXPECT_EQ (next->getPresetName (0), "User Bank First");
}

// Settings files that don't parse, or are another's, count as absent. Each of them would, if read, set the
// automatic and silent modes and clear the bank.
TEST_F (PluginState, UserSettingsThatAreNotOursCountAsAbsent)
{
    const juce::String settings =
        R"(<ResourcesSettings><Presets default="clearPresets"/></ResourcesSettings>)"
        R"(<PresetSettings storing="automatic" changing="silent"/>)";
    const juce::String files[] = {
        "",
        "storing=automatic changing=silent",
        R"(<UserSettings application="Vantrice">)" + settings,
        R"(<UserSettings application="Other">)" + settings + "</UserSettings>",
        R"(<Settings application="Vantrice">)" + settings + "</Settings>",
    };
    for (const auto& text : files)
    {
        SCOPED_TRACE (text);
        ASSERT_TRUE (settingsFile().replaceWithText (text));
        auto plugin = startPlugin();
        EXPECT_EQ (plugin->getStoringMode(), BasePluginOldStyle::onDemand);
        EXPECT_EQ (plugin->getChangingType(), BasePluginOldStyle::normal);
        EXPECT_EQ (plugin->getPresetName (0), "MPC 60");
    }
}

// Whatever the user's bank holds, the plug-in starts either with it or exactly as with no user bank: the
// factory bank, its first preset audible. The setting and the file are left for the next start.
TEST_F (PluginState, TheBankAtStartFollowsThePresetsMode)
{
    struct Case
    {
        const char* mode;
        const char* file;     // relative to the test folder; empty for none
        const char* contents; // written into the file first; null to leave it as it is
        const char* firstPreset;
    };
    const char* const ourPreset = R"(<Preset application="Vantrice" name="Mine First" rev="1"/>)";
    const Case cases[] = {
        { "factoryPresets", "", nullptr, "MPC 60" },
        { "clearPresets", "", nullptr, "Preset 0" },
        { "userDefinedPresets", "mine.vtprsb",
          R"(<PresetBank name="Mine"><PresetGroup name="Mine"><Preset application="Vantrice" name="Mine First" )"
          R"(rev="1"><param name="Output Volume" value="0.4"/></Preset></PresetGroup></PresetBank>)",
          "Mine First" },
        { "userDefinedPresets", "a folder", nullptr, "MPC 60" },
        { "userDefinedPresets", "missing.vtprsb", nullptr, "MPC 60" },
        { "userDefinedPresets", "cut.vtprsb", R"(<PresetBank name="Mine"><PresetGroup name="Mine"><Pre)",
          "MPC 60" },
        { "userDefinedPresets", "mistake.vtprs", ourPreset, "MPC 60" },
        { "userDefinedPresets", "project.xml", R"(<Project version="2"><Track name="Drums"/></Project>)",
          "MPC 60" },
        { "userDefinedPresets", "other.vtprsb",
          R"(<PresetBank name="Theirs"><PresetGroup name="Theirs"><Preset application="Other" name="Theirs"/>)"
          R"(</PresetGroup></PresetBank>)",
          "MPC 60" },
    };
    folder.getChildFile ("a folder").createDirectory();
    for (const auto& c : cases)
    {
        SCOPED_TRACE (juce::String (c.mode) + " " + c.file);
        const auto file = juce::String (c.file).isEmpty() ? juce::File() : folder.getChildFile (c.file);
        if (c.contents != nullptr)
        {
            ASSERT_TRUE (file.replaceWithText (c.contents));
        }
        const auto settings = "<UserSettings application=\"Vantrice\"><ResourcesSettings><Presets default=\""
                              + juce::String (c.mode) + "\" file=\"" + file.getFullPathName()
                              + "\"/></ResourcesSettings></UserSettings>";
        ASSERT_TRUE (settingsFile().replaceWithText (settings));
        {
            auto plugin = startPlugin();
            EXPECT_EQ (plugin->getPresetName (0), c.firstPreset);
            EXPECT_EQ (plugin->getCurrentPreset(), 0);
            EXPECT_EQ (liveValues (*plugin), slotValues (*plugin, 0));
            if (juce::String (c.firstPreset) == "MPC 60")
            {
                EXPECT_EQ (plugin->getNumGroups(), 4);
                EXPECT_EQ (plugin->getRecentDirectory(),
                           juce::File::getSpecialLocation (juce::File::userHomeDirectory).getFullPathName());
            }
            if (juce::String (c.mode) == "userDefinedPresets")
            {
                EXPECT_EQ (plugin->getPresetsFile(), file.getFullPathName()) << "kept, to be tried again";
            }
        }
        if (c.contents != nullptr)
        {
            EXPECT_EQ (file.loadFileAsString(), c.contents) << "the user's file is left alone";
        }
    }
}

// Beside the binary when its folder can be written, else in the configuration folder.
TEST_F (PluginState, UserSettingsLiveBesideTheBinaryOrInTheConfigurationFolder)
{
    const auto config = folder.getChildFile ("config");
    const auto fallback = config.getChildFile ("Vantrice").getChildFile ("Vantrice.ini");
    const auto plainFile = folder.getChildFile ("plain file");
    ASSERT_TRUE (plainFile.replaceWithText ("not a folder"));
    ASSERT_TRUE (setenv ("XDG_CONFIG_HOME", config.getFullPathName().toRawUTF8(), 1) == 0);
    const std::pair<juce::File, juce::File> cases[] = { { folder, settingsFile() },
                                                        { folder.getChildFile ("missing"), fallback },
                                                        { plainFile, fallback } };
    for (const auto& [pluginFolder, expected] : cases)
    {
        SCOPED_TRACE (pluginFolder.getFullPathName());
        {
            auto plugin = std::make_unique<Vantrice>();
            plugin->start (pluginFolder.getChildFile ("Vantrice.so"));
            EXPECT_EQ (plugin->getUserSettingsFile(), expected);
            plugin->setChangingType (BasePluginOldStyle::silent);
        }
        EXPECT_TRUE (expected.existsAsFile());
        auto next = std::make_unique<Vantrice>();
        next->start (pluginFolder.getChildFile ("Vantrice.so"));
        EXPECT_EQ (next->getChangingType(), BasePluginOldStyle::silent) << "read from there";
        next.reset();
        expected.deleteFile();
    }
    unsetenv ("XDG_CONFIG_HOME");
}
} // namespace
