#include "ExpectedPlugin.h"
#include "support/PluginHarness.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace
{
constexpr int parameterCount = ParameterIndex::count;
constexpr int bankSize = BasePluginOldStyle::numPresetsInBank;

// Everything a state chunk may touch, in comparable form.
struct Snapshot
{
    std::vector<float> live;
    int presetNumber = 0;
    std::string presetName;
    int current = 0;
    std::string bankName;
    std::vector<std::string> names;
    std::vector<std::vector<float>> slots;
    std::vector<std::string> groups; // name and size
    std::vector<std::string> map;    // controller and parameter
};

Snapshot snapshotOf (Vantrice& plugin)
{
    Snapshot s;
    auto& manager = plugin.getParameterManager();
    for (int i = 0; i < parameterCount; ++i)
        s.live.push_back (manager.getNormalizedValue (i));
    s.presetNumber = manager.getParameter (BasePluginOldStyle::currentPresetNumberId)->getIntValue();
    s.presetName = manager.getStringValue (BasePluginOldStyle::currentPresetNameId).toStdString();
    s.current = plugin.getCurrentPreset();
    s.bankName = plugin.getBankName().toStdString();
    for (int p = 0; p < bankSize; ++p)
    {
        s.names.push_back (plugin.getPresetName (p).toStdString());
        std::vector<float> values;
        for (int i = 0; i < parameterCount; ++i)
            values.push_back (plugin.getPreset (p)->getValue (i));
        s.slots.push_back (values);
    }
    for (int g = 0; g < plugin.getNumGroups(); ++g)
        s.groups.push_back (plugin.getGroupName (g).toStdString() + " x"
                            + std::to_string (plugin.getGroupSize (g)));
    for (int controller = 0; controller < MidiControl::numControllers; ++controller)
        if (auto* p = plugin.getMidiControl().getAssignedParameter (controller))
            s.map.push_back (std::to_string (controller) + " " + p->getName().toStdString());
    return s;
}

void expectSame (const Snapshot& a, const Snapshot& b)
{
    EXPECT_EQ (a.live, b.live);
    EXPECT_EQ (a.presetNumber, b.presetNumber);
    EXPECT_EQ (a.presetName, b.presetName);
    EXPECT_EQ (a.current, b.current);
    EXPECT_EQ (a.bankName, b.bankName);
    EXPECT_EQ (a.names, b.names);
    EXPECT_EQ (a.slots, b.slots);
    EXPECT_EQ (a.groups, b.groups);
    EXPECT_EQ (a.map, b.map);
}

// Slot values pass through six decimals on their way through a document.
void expectSlotsClose (const Snapshot& a, const Snapshot& b)
{
    ASSERT_EQ (a.slots.size(), b.slots.size());
    for (size_t p = 0; p < a.slots.size(); ++p)
        for (size_t i = 0; i < a.slots[p].size(); ++i)
            ASSERT_NEAR (a.slots[p][i], b.slots[p][i], 1e-6f) << "preset " << p << " parameter " << i;
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
    for (int i = 0; i < parameterCount; ++i)
        manager.setNormalizedValue (i, 0.013f + offset + 0.041f * (float) i);
    plugin.storePreset (9);
    for (int i = 0; i < parameterCount; ++i)
        manager.setNormalizedValue (i, 0.029f + offset + 0.037f * (float) i);
    plugin.getMidiControl().assign (7, manager.getParameter (15), false);
    plugin.getMidiControl().assign (20, manager.getParameter (3), false);
}

/** A plug-in prepared as a host prepares it. */
struct Started : PluginHarness
{
    explicit Started (const juce::File& settingsFolder = {})
        : PluginHarness (settingsFolder)
    {
        prepared();
    }
};

/** Instances of one test share a settings folder, so that one hands its settings on to the next. */
class PluginState : public ::testing::Test
{
protected:
    Started startPlugin() { return Started (folder); }
    juce::File settingsFile() const { return folder.getChildFile ("Vantrice.ini"); }

    const ScratchFolder scratch{ "vantrice-test" };
    const juce::File folder = scratch.getFolder();
};

TEST_F (PluginState, RoundTripBringsBackValuesBankSelectionAndMap)
{
    auto source = startPlugin();
    makeDistinct (*source, 0.0f);
    const auto saved = stateOf (*source);

    auto target = startPlugin();
    const auto fresh = snapshotOf (*target);
    restore (*target, saved);

    const auto expected = snapshotOf (*source);
    const auto restored = snapshotOf (*target);
    for (int i = 0; i < parameterCount; ++i)
        ASSERT_NE (fresh.live[(size_t) i], expected.live[(size_t) i]) << "parameter " << i;
    EXPECT_EQ (restored.live, expected.live);
    EXPECT_EQ (restored.current, 5);
    EXPECT_EQ (restored.presetNumber, 5);
    EXPECT_EQ (restored.presetName, expected.names[5]);
    EXPECT_EQ (restored.bankName, expected.bankName);
    EXPECT_EQ (restored.names, expected.names);
    EXPECT_EQ (restored.groups, expected.groups);
    expectSlotsClose (restored, expected);
    EXPECT_EQ (restored.map, (std::vector<std::string>{ "7 Output Volume", "20 Left Link Freq" }));
    EXPECT_EQ (restored.names[7], "Renamed Seven");
}

TEST_F (PluginState, EditedValuesSurviveWhileTheSlotKeepsTheStoredOnes)
{
    auto source = startPlugin();
    source->selectPreset (4);
    const float stored = source->getPreset (4)->getValue (0);
    const float edited = stored < 0.5f ? 0.8125f : 0.1875f;
    source->getParameterManager().setNormalizedValue (0, edited);
    const auto saved = stateOf (*source);

    auto target = startPlugin();
    restore (*target, saved);
    EXPECT_EQ (target->getCurrentPreset(), 4);
    EXPECT_EQ (target->getParameterManager().getNormalizedValue (0), edited);
    EXPECT_NEAR (target->getPreset (4)->getValue (0), stored, 1e-6f);

    target->selectNextPreset();
    target->selectPreviousPreset();
    EXPECT_EQ (target->getCurrentPreset(), 4);
    EXPECT_NEAR (target->getParameterManager().getNormalizedValue (0), stored, 1e-6f);
}

TEST_F (PluginState, AParameterMissingFromTheStateKeepsItsValue)
{
    auto source = startPlugin();
    makeDistinct (*source, 0.0f);
    auto xml = source->createStateXml();
    auto* parametersState = xml->getChildByName ("ParametersState");
    parametersState->removeChildElement (parametersState->getChildByAttribute ("name", "Preamp"), true);
    ASSERT_EQ (parametersState->getNumChildElements(), parameterCount - 1);

    auto target = startPlugin();
    target->getParameterManager().setNormalizedValue (0, 0.4375f);
    restore (*target, chunkOf (*xml));

    EXPECT_EQ (target->getParameterManager().getNormalizedValue (0), 0.4375f);
    for (int i = 1; i < parameterCount; ++i)
        EXPECT_EQ (target->getParameterManager().getNormalizedValue (i),
                   source->getParameterManager().getNormalizedValue (i))
            << "parameter " << i;
}

// A tone through one started plug-in: prepared before or after the restore, or after a block played.
enum class RestoreMoment
{
    beforePrepare,
    afterPrepare,
    afterPlaying
};

std::vector<float> playAfterRestore (const juce::File& folder, const juce::MemoryBlock& state,
                                     RestoreMoment moment)
{
    auto plugin = std::make_unique<Vantrice>();
    plugin->start (folder.getChildFile ("Vantrice.so"));
    juce::AudioBuffer<float> buffer (2, 512);
    juce::MidiBuffer midi;
    const auto fill = [&buffer]
    {
        for (int c = 0; c < 2; ++c)
            for (int i = 0; i < buffer.getNumSamples(); ++i)
                buffer.setSample (c, i, 0.5f * std::sin (0.05f * (float) (i + 7 * c)));
    };

    if (moment == RestoreMoment::beforePrepare)
        restore (*plugin, state);
    plugin->setRateAndBufferSizeDetails (44100.0, buffer.getNumSamples());
    plugin->prepareToPlay (44100.0, buffer.getNumSamples());
    if (moment == RestoreMoment::afterPlaying)
    {
        fill();
        plugin->processBlock (buffer, midi);
    }
    if (moment != RestoreMoment::beforePrepare)
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
    const auto restoredFirst = playAfterRestore (folder, saved, RestoreMoment::beforePrepare);
    EXPECT_EQ (playAfterRestore (folder, saved, RestoreMoment::afterPrepare), restoredFirst);
    // Once audio has played, the restored settings glide in like any other change.
    EXPECT_NE (playAfterRestore (folder, saved, RestoreMoment::afterPlaying), restoredFirst);
}

TEST_F (PluginState, ProgramChunkCarriesTheSlotNotTheLiveValues)
{
    auto source = startPlugin();
    source->selectPreset (6);
    for (int i = 0; i < parameterCount; ++i)
        source->getParameterManager().setNormalizedValue (i, 0.5f + 0.02f * (float) i);

    juce::MemoryBlock chunk;
    source->getCurrentProgramStateInformation (chunk);
    const auto xml = juce::AudioProcessor::getXmlFromBinary (chunk.getData(), (int) chunk.getSize());
    ASSERT_NE (xml, nullptr);
    EXPECT_EQ (xml->getTagName(), "Preset");
    EXPECT_EQ (xml->getStringAttribute ("application"), "Vantrice");
    EXPECT_EQ (xml->getStringAttribute ("name"), source->getPresetName (6));
    EXPECT_EQ (xml->getIntAttribute ("rev"), 1);
    for (int i = 0; i < parameterCount; ++i)
    {
        auto* row = xml->getChildByAttribute ("name", source->getParameterManager().getParameterName (i));
        ASSERT_NE (row, nullptr) << "parameter " << i;
        EXPECT_NEAR (row->getDoubleAttribute ("value"), source->getPreset (6)->getValue (i), 1e-6) << i;
    }

    auto target = startPlugin();
    target->selectPreset (11);
    target->setCurrentProgramStateInformation (chunk.getData(), (int) chunk.getSize());

    EXPECT_EQ (target->getCurrentPreset(), 11);
    EXPECT_EQ (target->getPresetName (11), source->getPresetName (6));
    for (int i = 0; i < parameterCount; ++i)
    {
        EXPECT_NEAR (target->getPreset (11)->getValue (i), source->getPreset (6)->getValue (i), 1e-6f) << i;
        EXPECT_EQ (target->getParameterManager().getNormalizedValue (i), target->getPreset (11)->getValue (i))
            << "parameter " << i;
    }
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

BadChunk cut (const char* name, int numerator, int denominator)
{
    return { name, [=] (const juce::MemoryBlock& valid)
             {
                 return juce::MemoryBlock (valid.getData(),
                                           valid.getSize() * (size_t) numerator / (size_t) denominator);
             } };
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
        <NotPresetableParams><param name="Preamp" value="0.99"/></NotPresetableParams>
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
    expectSame (snapshotOf (*target), before);
    if (!GetParam().givesXml)
    {
        target->setCurrentProgramStateInformation (chunk.getData(), (int) chunk.getSize());
        expectSame (snapshotOf (*target), before);
    }

    // The valid chunk does change the target, so the comparison above can fail.
    restore (*target, valid);
    EXPECT_NE (snapshotOf (*target).live, before.live);
}

INSTANTIATE_TEST_SUITE_P (Chunks, BadChunkTarget, ::testing::ValuesIn (badChunks),
                          [] (const ::testing::TestParamInfo<BadChunk>& paramInfo)
                          { return std::string (paramInfo.param.name); });

const char* const oldState = R"(<VantricePluginState currentPreset="2">
  <UniqueData/>
  <VantricePresetBank name="Old Bank">
    <VantricePresetGroup name="Old Group A">
      <VantricePreset name="Old A0">
        <param name="Preamp" value="0.1"/>
        <param name="Left Bits" value="0.2"/>
      </VantricePreset>
      <VantricePreset name="Old A1">
        <param name="Preamp" value="0.3"/>
        <param name="Left Bits" value="0.4"/>
      </VantricePreset>
    </VantricePresetGroup>
    <VantricePresetGroup name="Old Group B">
      <VantricePreset name="Old B0">
        <param name="Preamp" value="0.625"/>
        <param name="Left Bits" value="0.375"/>
        <param name="Left Cutoff" value="0.25"/>
        <param name="Output Volume" value="0.75"/>
      </VantricePreset>
    </VantricePresetGroup>
  </VantricePresetBank>
  <MidiControlMap name="Vantrice">
    <assign CC="11" param="FX"/>
  </MidiControlMap>
</VantricePluginState>)";

std::unique_ptr<juce::XmlElement> oldStateWith (int currentPreset, bool withBank)
{
    auto xml = juce::parseXML (oldState);
    xml->setAttribute ("currentPreset", currentPreset);
    if (!withBank)
        xml->deleteAllChildElementsWithTagName ("VantricePresetBank");
    return xml;
}

std::vector<float> liveValues (Vantrice& plugin)
{
    std::vector<float> v;
    for (int i = 0; i < parameterCount; ++i)
        v.push_back (plugin.getParameterManager().getNormalizedValue (i));
    return v;
}

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
        auto& manager = plugin->getParameterManager();
        plugin->getMidiControl().assign (30, manager.getParameter (ParameterIndex::leftFrequency), false);
        plugin->selectPreset (6);
        for (int i = 0; i < parameterCount; ++i)
            manager.setNormalizedValue (i, 0.111f + 0.023f * (float) i);
        const auto before = snapshotOf (*plugin);

        restore (*plugin, chunkOf (*oldStateWith (c.currentPreset, c.withBank)));
        const auto after = snapshotOf (*plugin);
        EXPECT_EQ (plugin->getCurrentPreset(), c.selected);
        EXPECT_EQ (after.presetName, after.names[(size_t) c.selected]);
        EXPECT_EQ (liveValues (*plugin), after.slots[(size_t) c.selected]);
        EXPECT_EQ (after.map, (std::vector<std::string>{ "11 FX" }));
        if (!c.withBank)
        {
            EXPECT_EQ (after.names, before.names);
            continue;
        }
        EXPECT_EQ (after.bankName, "Old Bank");
        EXPECT_EQ (after.groups,
                   (std::vector<std::string>{ "Old Group A x2", "Old Group B x1", "Not used x125" }));
        EXPECT_EQ (after.names[2], "Old B0");
        EXPECT_EQ (after.names[3], "Preset 3");
        EXPECT_EQ (after.slots[2][ParameterIndex::preamp], 0.625f);
        EXPECT_EQ (after.slots[2][ParameterIndex::outputVolume], 0.75f);
        // Presets of the old format had both filter orders "Post".
        EXPECT_EQ (after.slots[2][ParameterIndex::leftFilterOrder], 0.0f);
        EXPECT_EQ (after.slots[2][ParameterIndex::rightFilterOrder], 0.0f);
    }
}

TEST_F (PluginState, OldPresetAndBankFilesLoadAndAreSavedInThePresentForm)
{
    auto plugin = startPlugin();
    EXPECT_EQ (plugin->getPresetWildcards(), "*.vtprs; *.vtp");
    EXPECT_EQ (plugin->getBankWildcards(), "*.vtprsb; *.vtb");
    EXPECT_EQ (plugin->getMapWildcards(), "*.vtccmap; *.vtc");
    const auto oldFile = folder.getChildFile ("Old.vtp");
    ASSERT_TRUE (oldFile.replaceWithText (R"(<VantricePreset name="Old File Preset">
  <param name="Preamp" value="0.125"/><param name="FX" value="0.5"/></VantricePreset>)"));
    plugin->selectPreset (2);
    ASSERT_TRUE (plugin->loadPresetFile (oldFile, 2));
    EXPECT_EQ (plugin->getPresetName (2), "Old File Preset");
    EXPECT_EQ (liveValues (*plugin), snapshotOf (*plugin).slots[2]);

    const auto savedFile = folder.getChildFile ("Saved.vtprs");
    ASSERT_TRUE (plugin->savePresetFile (savedFile, 2));
    const auto saved = juce::parseXML (savedFile);
    ASSERT_NE (saved, nullptr);
    EXPECT_EQ (saved->getTagName(), "Preset");
    EXPECT_EQ (saved->getIntAttribute ("rev"), 1);
    EXPECT_DOUBLE_EQ (saved->getChildByAttribute ("name", "Preamp")->getDoubleAttribute ("value"), 0.125);

    const auto bankFile = folder.getChildFile ("Old.vtb");
    ASSERT_TRUE (
        bankFile.replaceWithText (oldStateWith (0, true)->getChildByName ("VantricePresetBank")->toString()));
    ASSERT_TRUE (plugin->loadBankFile (bankFile));
    EXPECT_EQ (plugin->getBankName(), "Old Bank");
    EXPECT_EQ (liveValues (*plugin), snapshotOf (*plugin).slots[2]);
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
        EXPECT_EQ (plugin->getPresetsMode(), BasePluginOldStyle::factoryPresets);
        EXPECT_EQ (plugin->getPresetName (0), "MPC 60");
    }
}

struct BankChoice
{
    const char* name;
    const char* mode;
    const char* file;     // relative to the test folder; empty for none
    const char* contents; // written into the file first; null to leave it as it is
    const char* firstPreset;
    int numGroups;
    int presetsMode;
};

void PrintTo (const BankChoice& c, std::ostream* out) { *out << c.name; }

class BankAtStart : public PluginState, public ::testing::WithParamInterface<BankChoice>
{
};

// Whatever the user's bank holds, the plug-in starts either with it or exactly as with no user bank: the
// factory bank, its first preset audible. The setting and the file are left for the next start.
TEST_P (BankAtStart, FollowsThePresetsMode)
{
    const auto& c = GetParam();
    folder.getChildFile ("a folder").createDirectory();
    const auto file = juce::String (c.file).isEmpty() ? juce::File() : folder.getChildFile (c.file);
    if (c.contents != nullptr)
    {
        ASSERT_TRUE (file.replaceWithText (c.contents));
    }
    juce::XmlElement settings ("UserSettings");
    settings.setAttribute ("application", "Vantrice");
    auto* presets = settings.createNewChildElement ("ResourcesSettings")->createNewChildElement ("Presets");
    presets->setAttribute ("default", c.mode);
    presets->setAttribute ("file", file.getFullPathName());
    ASSERT_TRUE (settings.writeTo (settingsFile()));

    {
        auto plugin = startPlugin();
        EXPECT_EQ (plugin->getPresetName (0), c.firstPreset);
        EXPECT_EQ (plugin->getNumGroups(), c.numGroups);
        EXPECT_EQ (plugin->getPresetsMode(), c.presetsMode);
        EXPECT_EQ (plugin->getCurrentPreset(), 0);
        EXPECT_EQ (plugin->getParameterManager().getStringValue (BasePluginOldStyle::currentPresetNameId),
                   c.firstPreset);
        if (juce::String (c.firstPreset) == "MPC 60")
        {
            for (int i = 0; i < parameterCount; ++i)
                EXPECT_EQ (plugin->getParameterManager().getNormalizedValue (i),
                           ExpectedPlugin::parameters[(size_t) i].startValue)
                    << ExpectedPlugin::parameters[(size_t) i].name;
            EXPECT_EQ (plugin->getRecentDirectory(),
                       juce::File::getSpecialLocation (juce::File::userHomeDirectory).getFullPathName());
        }
        if (c.presetsMode == BasePluginOldStyle::userDefinedPresets)
        {
            EXPECT_EQ (plugin->getPresetsFile(), file.getFullPathName())
                << "kept, to be tried again next time";
        }
    }
    if (c.contents != nullptr)
    {
        EXPECT_EQ (file.loadFileAsString(), c.contents) << "the user's file is left alone";
    }
}

constexpr const char* ourPreset = R"(<Preset application="Vantrice" name="Mine First" rev="1">)"
                                  R"(<param name="Output Volume" value="0.4"/></Preset>)";

INSTANTIATE_TEST_SUITE_P (
    Modes, BankAtStart,
    ::testing::Values (
        BankChoice{ "Factory", "factoryPresets", "", nullptr, "MPC 60", 4, 0 },
        BankChoice{ "Cleared", "clearPresets", "", nullptr, "Preset 0", 1, 1 },
        BankChoice{ "UnknownModeChangesNothing", "somethingElse", "", nullptr, "MPC 60", 4, 0 },
        BankChoice{ "UserFileLoads", "userDefinedPresets", "mine.vtprsb",
                    R"(<PresetBank name="Mine"><PresetGroup name="Mine">)"
                    R"(<Preset application="Vantrice" )"
                    R"(name="Mine First" rev="1"><param name="Output Volume" value="0.4"/></Preset>)"
                    R"(</PresetGroup></PresetBank>)",
                    "Mine First", 2, 2 },
        BankChoice{ "UserFileIsADirectory", "userDefinedPresets", "a folder", nullptr, "MPC 60", 4, 2 },
        BankChoice{ "UserFileMissing", "userDefinedPresets", "missing.vtprsb", nullptr, "MPC 60", 4, 2 },
        BankChoice{ "UserFileEmptyName", "userDefinedPresets", "", nullptr, "MPC 60", 4, 2 },
        BankChoice{ "UserFileEmpty", "userDefinedPresets", "empty.vtprsb", "", "MPC 60", 4, 2 },
        BankChoice{ "UserFileTruncated", "userDefinedPresets", "cut.vtprsb",
                    R"(<PresetBank name="Mine"><PresetGroup name="Mine"><Preset application="Vant)", "MPC 60",
                    4, 2 },
        BankChoice{ "UserFileIsAPreset", "userDefinedPresets", "mistake.vtprs", ourPreset, "MPC 60", 4, 2 },
        BankChoice{ "UserFileOfAnotherApplication", "userDefinedPresets", "project.xml",
                    R"(<Project version="2"><Track name="Drums"/></Project>)", "MPC 60", 4, 2 },
        BankChoice{ "UserBankOfAnotherApplication", "userDefinedPresets", "other.vtprsb",
                    R"(<PresetBank name="Theirs"><PresetGroup name="Theirs">)"
                    R"(<Preset application="Other" name="Theirs"/></PresetGroup></PresetBank>)",
                    "MPC 60", 4, 2 }),
    [] (const ::testing::TestParamInfo<BankChoice>& paramInfo)
    { return std::string (paramInfo.param.name); });

TEST_F (PluginState, WrittenAtDestructionAndReadByTheNextInstance)
{
    const auto recent = folder.getChildFile ("recent");
    ASSERT_TRUE (recent.createDirectory());
    const auto bankFile =
        recent.getChildFile ("mine.vtprsb"); // loading it at start makes its folder the recent one
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
        plugin->setRecentDirectory (recent.getFullPathName());
        plugin->getMidiControl().setUseDefaultMap (true);
        plugin->getMidiControl().setDefaultMapFile (mapFile.getFullPathName());
        EXPECT_EQ (plugin->getUserSettingsFile(), settingsFile());
        EXPECT_FALSE (settingsFile().exists());
    }
    ASSERT_TRUE (settingsFile().existsAsFile());

    auto next = startPlugin();
    EXPECT_EQ (next->getStoringMode(), BasePluginOldStyle::automatic);
    EXPECT_EQ (next->getChangingType(), BasePluginOldStyle::silent);
    EXPECT_EQ (next->getPresetsMode(), BasePluginOldStyle::userDefinedPresets);
    EXPECT_EQ (next->getPresetsFile(), bankFile.getFullPathName());
    EXPECT_EQ (next->getRecentDirectory(), recent.getFullPathName());
    EXPECT_TRUE (next->getMidiControl().getUseDefaultMap());
    EXPECT_EQ (next->getMidiControl().getDefaultMapFile(), mapFile.getFullPathName());
    EXPECT_EQ (snapshotOf (*next).map, (std::vector<std::string>{ "30 Left Frequency" }));
    EXPECT_EQ (next->getPresetName (0), "User Bank First");
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
