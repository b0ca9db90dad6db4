#include "ExpectedPlugin.h"
#include "dsp/Vantrice.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace
{
constexpr int parameterCount = ParameterIndex::count;
constexpr int bankSize = BasePluginOldStyle::numPresetsInBank;

// Sets an environment variable for one scope, and puts back what was there.
struct ScopedEnvironment
{
    ScopedEnvironment (const char* nameToSet, const juce::String& value)
        : name (nameToSet)
    {
        if (const char* old = std::getenv (name))
        {
            hadValue = true;
            oldValue = old;
        }
        setenv (name, value.toRawUTF8(), 1);
    }

    ~ScopedEnvironment()
    {
        if (hadValue)
            setenv (name, oldValue.c_str(), 1);
        else
            unsetenv (name);
    }

    const char* name;
    bool hadValue = false;
    std::string oldValue;
};

std::unique_ptr<Vantrice> startPlugin (const juce::File& folder)
{
    auto plugin = std::make_unique<Vantrice>();
    plugin->start (folder.getChildFile ("Vantrice.so"));
    plugin->setRateAndBufferSizeDetails (44100.0, 256);
    plugin->prepareToPlay (44100.0, 256);
    return plugin;
}

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

class PluginState : public ::testing::Test
{
protected:
    TempFolder temp;
};

//==============================================================================
// Round trips.

TEST_F (PluginState, RoundTripBringsBackValuesBankSelectionAndMap)
{
    auto source = startPlugin (temp.folder);
    makeDistinct (*source, 0.0f);
    const auto saved = stateOf (*source);

    auto target = startPlugin (temp.folder);
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

TEST_F (PluginState, TheDocumentHasItsPartsInOrder)
{
    auto plugin = startPlugin (temp.folder);
    const auto block = stateOf (*plugin);
    const auto xml = juce::AudioProcessor::getXmlFromBinary (block.getData(), (int) block.getSize());
    ASSERT_NE (xml, nullptr);

    EXPECT_EQ (xml->getTagName(), "PluginState");
    EXPECT_EQ (xml->getStringAttribute ("application"), "Vantrice");
    std::vector<std::string> children;
    for (auto* child : xml->getChildIterator())
        children.push_back (child->getTagName().toStdString());
    EXPECT_EQ (children, (std::vector<std::string>{ "UniqueData", "ParametersState", "PresetsState",
                                                    "MidiControlMap" }));
    EXPECT_EQ (xml->getChildByName ("UniqueData")->getNumAttributes(), 0);
    EXPECT_EQ (xml->getChildByName ("ParametersState")->getNumChildElements(), parameterCount);
}

TEST_F (PluginState, EditedValuesSurviveWhileTheSlotKeepsTheStoredOnes)
{
    auto source = startPlugin (temp.folder);
    source->selectPreset (4);
    const float stored = source->getPreset (4)->getValue (0);
    const float edited = stored < 0.5f ? 0.8125f : 0.1875f;
    source->getParameterManager().setNormalizedValue (0, edited);
    const auto saved = stateOf (*source);

    auto target = startPlugin (temp.folder);
    restore (*target, saved);
    EXPECT_EQ (target->getCurrentPreset(), 4);
    EXPECT_EQ (target->getParameterManager().getNormalizedValue (0), edited);
    EXPECT_NEAR (target->getPreset (4)->getValue (0), stored, 1e-6f);

    target->selectNextPreset();
    target->selectPreviousPreset();
    EXPECT_EQ (target->getCurrentPreset(), 4);
    EXPECT_NEAR (target->getParameterManager().getNormalizedValue (0), stored, 1e-6f);
}

TEST_F (PluginState, SelectionBeyondTheRowLeavesTheSelectionButReadsTheBank)
{
    auto source = startPlugin (temp.folder);
    source->setPresetName (3, "Marked");
    auto xml = source->createStateXml();
    xml->getChildByName ("PresetsState")->setAttribute ("currentPreset", 200);

    auto target = startPlugin (temp.folder);
    target->selectPreset (2);
    restore (*target, chunkOf (*xml));

    EXPECT_EQ (target->getCurrentPreset(), 2);
    EXPECT_EQ (
        target->getParameterManager().getParameter (BasePluginOldStyle::currentPresetNumberId)->getIntValue(),
        2);
    EXPECT_EQ (target->getPresetName (3), "Marked");
}

TEST_F (PluginState, AParameterMissingFromTheStateKeepsItsValue)
{
    auto source = startPlugin (temp.folder);
    makeDistinct (*source, 0.0f);
    auto xml = source->createStateXml();
    auto* parametersState = xml->getChildByName ("ParametersState");
    parametersState->removeChildElement (parametersState->getChildByAttribute ("name", "Preamp"), true);
    ASSERT_EQ (parametersState->getNumChildElements(), parameterCount - 1);

    auto target = startPlugin (temp.folder);
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
    auto source = startPlugin (temp.folder);
    makeDistinct (*source, 0.0f);
    const auto saved = stateOf (*source);

    // Some hosts prepare first and restore after, others the other way round; the sound is one.
    const auto restoredFirst = playAfterRestore (temp.folder, saved, RestoreMoment::beforePrepare);
    EXPECT_EQ (playAfterRestore (temp.folder, saved, RestoreMoment::afterPrepare), restoredFirst);
    // Once audio has played, the restored settings glide in like any other change.
    EXPECT_NE (playAfterRestore (temp.folder, saved, RestoreMoment::afterPlaying), restoredFirst);
}

TEST_F (PluginState, ProgramChunkCarriesTheSlotNotTheLiveValues)
{
    auto source = startPlugin (temp.folder);
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

    auto target = startPlugin (temp.folder);
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

//==============================================================================
// Chunks that must change nothing.

struct BadChunk
{
    std::string name;
    bool givesXml; // parses, but is no state of this plug-in
    std::function<juce::MemoryBlock (const juce::MemoryBlock& valid, const juce::XmlElement& validXml)> make;
};

void PrintTo (const BadChunk& c, std::ostream* out) { *out << c.name; }

juce::MemoryBlock wrapText (const juce::String& text)
{
    juce::MemoryOutputStream out;
    out.writeInt (0x21324356);
    const auto utf8 = text.toStdString();
    out.writeInt ((int) utf8.size());
    out.write (utf8.data(), utf8.size());
    out.writeByte (0);
    out.writeByte (0);
    return out.getMemoryBlock();
}

juce::MemoryBlock randomBytes (juce::int64 seed, size_t size, bool withWrapper)
{
    juce::Random random (seed);
    juce::MemoryBlock block (size);
    for (size_t i = 0; i < size; ++i)
        block[i] = (char) random.nextInt (256);
    if (withWrapper)
    {
        const juce::uint32 magic = 0x21324356, length = (juce::uint32) size - 8;
        block.copyFrom (&magic, 0, 4);
        block.copyFrom (&length, 4, 4);
    }
    return block;
}

std::vector<BadChunk> badChunks()
{
    std::vector<BadChunk> cases;
    for (size_t size = 0; size <= 8; ++size)
        cases.push_back ({ "First" + std::to_string (size) + "Bytes", false,
                           [size] (const juce::MemoryBlock& valid, const juce::XmlElement&)
                           { return juce::MemoryBlock (valid.getData(), size); } });

    auto edited = [] (std::function<void (juce::MemoryBlock&)> edit)
    {
        return [edit] (const juce::MemoryBlock& valid, const juce::XmlElement&)
        {
            auto block = valid;
            edit (block);
            return block;
        };
    };
    cases.push_back ({ "WrongMagic", false, edited ([] (juce::MemoryBlock& b) { b[0] = 'W'; }) });
    cases.push_back ({ "LengthZero", false,
                       edited (
                           [] (juce::MemoryBlock& b)
                           {
                               for (size_t i = 4; i < 8; ++i)
                                   b[i] = 0;
                           }) });
    cases.push_back ({ "LengthNegative", false,
                       edited (
                           [] (juce::MemoryBlock& b)
                           {
                               for (size_t i = 4; i < 8; ++i)
                                   b[i] = (char) 0xff;
                           }) });
    for (int quarter = 1; quarter <= 3; ++quarter)
        cases.push_back ({ "TruncatedAt" + std::to_string (quarter) + "Quarters", false,
                           [quarter] (const juce::MemoryBlock& valid, const juce::XmlElement&)
                           {
                               const auto text = valid.getSize() - 10;
                               return juce::MemoryBlock (valid.getData(), 8 + text * (size_t) quarter / 4);
                           } });
    cases.push_back ({ "RandomBytes", false, [] (const juce::MemoryBlock&, const juce::XmlElement&) {
                          return randomBytes (20240611, 4096, false);
                      } });
    cases.push_back ({ "RandomBytesInAWrapper", false,
                       [] (const juce::MemoryBlock&, const juce::XmlElement&)
                       { return randomBytes (77, 4096, true); } });
    cases.push_back ({ "TextThatIsNoXml", false, [] (const juce::MemoryBlock&, const juce::XmlElement&) {
                          return wrapText ("this is not a plug-in state");
                      } });
    cases.push_back ({ "AnotherApplication", true,
                       [] (const juce::MemoryBlock&, const juce::XmlElement& validXml)
                       {
                           auto xml = validXml;
                           xml.setAttribute ("application", "Other");
                           return chunkOf (xml);
                       } });
    cases.push_back ({ "NoApplication", true,
                       [] (const juce::MemoryBlock&, const juce::XmlElement& validXml)
                       {
                           auto xml = validXml;
                           xml.removeAttribute ("application");
                           return chunkOf (xml);
                       } });
    cases.push_back ({ "OldStateOfAnotherPlugin", true,
                       [] (const juce::MemoryBlock&, const juce::XmlElement& validXml)
                       {
                           auto xml = validXml;
                           xml.setTagName ("OtherPluginState");
                           xml.setAttribute ("currentPreset", 3);
                           return chunkOf (xml);
                       } });
    cases.push_back ({ "PresetParametersAsIfOutsidePresets", true,
                       [] (const juce::MemoryBlock&, const juce::XmlElement&)
                       {
                           // Nothing of ours writes these; a foreign chunk may not reach the eighteen through
                           // them.
                           juce::XmlElement state ("PluginState");
                           state.setAttribute ("application", "Vantrice");
                           for (auto* tag : { "NotPresetableParams", "NotPresetParams" })
                           {
                               auto* row = state.createNewChildElement (tag)->createNewChildElement ("param");
                               row->setAttribute ("name", "Preamp");
                               row->setAttribute ("value", 0.99);
                           }
                           return chunkOf (state);
                       } });
    cases.push_back ({ "APresetInsteadOfAState", true,
                       [] (const juce::MemoryBlock&, const juce::XmlElement&)
                       {
                           juce::XmlElement preset ("Preset");
                           preset.setAttribute ("application", "Vantrice");
                           preset.setAttribute ("name", "Intruder");
                           auto* row = preset.createNewChildElement ("param");
                           row->setAttribute ("name", "Preamp");
                           row->setAttribute ("value", 0.99);
                           return chunkOf (preset);
                       } });
    return cases;
}

// The target of every bad chunk; the valid chunk they are made from is made once.
class BadChunkTarget : public PluginState, public ::testing::WithParamInterface<BadChunk>
{
protected:
    static void SetUpTestSuite()
    {
        sourceFolder = std::make_unique<TempFolder>();
        auto source = startPlugin (sourceFolder->folder);
        makeDistinct (*source, 0.2f);
        source->getMidiControl().assign (40, source->getParameterManager().getParameter (0), false);
        validXml = source->createStateXml();
        valid = stateOf (*source);
    }

    static void TearDownTestSuite()
    {
        validXml.reset();
        sourceFolder.reset();
    }

    void SetUp() override
    {
        target = startPlugin (temp.folder);
        makeDistinct (*target, 0.0f);
        target->selectPreset (3);
        chunk = GetParam().make (valid, *validXml);
    }

    static inline std::unique_ptr<TempFolder> sourceFolder;
    static inline std::unique_ptr<juce::XmlElement> validXml;
    static inline juce::MemoryBlock valid;
    juce::MemoryBlock chunk;
    std::unique_ptr<Vantrice> target;
};

class BadStateChunk : public BadChunkTarget
{
};

TEST_P (BadStateChunk, LeavesEverythingAsItWas)
{
    const auto parsed = juce::AudioProcessor::getXmlFromBinary (chunk.getData(), (int) chunk.getSize());
    ASSERT_EQ (parsed != nullptr, GetParam().givesXml);

    const auto before = snapshotOf (*target);
    target->setStateInformation (chunk.getData(), (int) chunk.getSize());
    expectSame (snapshotOf (*target), before);

    // The valid chunk does change the target, so the comparison above can fail.
    restore (*target, valid);
    EXPECT_NE (snapshotOf (*target).live, before.live);
}

INSTANTIATE_TEST_SUITE_P (Chunks, BadStateChunk, ::testing::ValuesIn (badChunks()),
                          [] (const ::testing::TestParamInfo<BadChunk>& paramInfo)
                          { return paramInfo.param.name; });

// A program chunk that gives no document changes nothing either.
class BadProgramChunk : public BadChunkTarget
{
};

TEST_P (BadProgramChunk, LeavesEverythingAsItWas)
{
    const auto before = snapshotOf (*target);
    target->setCurrentProgramStateInformation (chunk.getData(), (int) chunk.getSize());
    expectSame (snapshotOf (*target), before);
}

std::vector<BadChunk> chunksWithoutXml()
{
    auto cases = badChunks();
    cases.erase (std::remove_if (cases.begin(), cases.end(), [] (const BadChunk& c) { return c.givesXml; }),
                 cases.end());
    return cases;
}

INSTANTIATE_TEST_SUITE_P (Chunks, BadProgramChunk, ::testing::ValuesIn (chunksWithoutXml()),
                          [] (const ::testing::TestParamInfo<BadChunk>& paramInfo)
                          { return paramInfo.param.name; });

//==============================================================================
// Old states and files.

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

class OldState : public PluginState
{
protected:
    void SetUp() override
    {
        plugin = startPlugin (temp.folder);
        auto& manager = plugin->getParameterManager();
        plugin->getMidiControl().assign (30, manager.getParameter (2), false);
        for (int i = 0; i < parameterCount; ++i)
            manager.setNormalizedValue (i, 0.111f + 0.023f * (float) i);
    }

    std::vector<float> live()
    {
        std::vector<float> v;
        for (int i = 0; i < parameterCount; ++i)
            v.push_back (plugin->getParameterManager().getNormalizedValue (i));
        return v;
    }

    std::vector<float> slot (int index)
    {
        std::vector<float> v;
        for (int i = 0; i < parameterCount; ++i)
            v.push_back (plugin->getPreset (index)->getValue (i));
        return v;
    }

    std::unique_ptr<Vantrice> plugin;
};

TEST_F (OldState, RestoresTheBankAndTheMapAndAppliesTheSelectedPreset)
{
    restore (*plugin, chunkOf (*oldStateWith (2, true)));

    EXPECT_EQ (plugin->getBankName(), "Old Bank");
    EXPECT_EQ (plugin->getPresetName (0), "Old A0");
    EXPECT_EQ (plugin->getPresetName (1), "Old A1");
    EXPECT_EQ (plugin->getPresetName (2), "Old B0");
    EXPECT_EQ (plugin->getPresetName (3), "Preset 3");
    const auto s = snapshotOf (*plugin);
    EXPECT_EQ (s.groups, (std::vector<std::string>{ "Old Group A x2", "Old Group B x1", "Not used x125" }));
    EXPECT_EQ (s.map, (std::vector<std::string>{ "11 FX" }));

    EXPECT_EQ (plugin->getCurrentPreset(), 2);
    EXPECT_EQ (s.presetNumber, 2);
    EXPECT_EQ (s.presetName, "Old B0");
    EXPECT_FLOAT_EQ (plugin->getPreset (2)->getValue (0), 0.625f);
    EXPECT_FLOAT_EQ (plugin->getPreset (2)->getValue (5), 0.25f);
    EXPECT_FLOAT_EQ (plugin->getPreset (2)->getValue (15), 0.75f);
    EXPECT_FLOAT_EQ (plugin->getPreset (0)->getValue (1), 0.2f);
    // Presets of the old format had both filter orders "Post".
    EXPECT_EQ (plugin->getPreset (2)->getValue (16), 0.0f);
    EXPECT_EQ (plugin->getPreset (2)->getValue (17), 0.0f);
    EXPECT_EQ (live(), slot (2));
}

TEST_F (OldState, SelectionBeyondTheBankKeepsTheSelectionAndAppliesIt)
{
    plugin->selectPreset (6);
    for (int i = 0; i < parameterCount; ++i)
        plugin->getParameterManager().setNormalizedValue (i, 0.9f - 0.01f * (float) i);
    restore (*plugin, chunkOf (*oldStateWith (500, true)));

    EXPECT_EQ (plugin->getCurrentPreset(), 6);
    EXPECT_EQ (plugin->getPresetName (2), "Old B0");
    EXPECT_EQ (plugin->getPresetName (6), "Preset 6");
    EXPECT_EQ (live(), slot (6));
    EXPECT_EQ (plugin->getParameterManager().getStringValue (BasePluginOldStyle::currentPresetNameId),
               "Preset 6");
}

TEST_F (OldState, WithoutABankSelectsFromTheBankThatIsThere)
{
    const auto namesBefore = snapshotOf (*plugin).names;
    restore (*plugin, chunkOf (*oldStateWith (3, false)));

    EXPECT_EQ (snapshotOf (*plugin).names, namesBefore);
    EXPECT_EQ (plugin->getCurrentPreset(), 3);
    EXPECT_EQ (live(), slot (3));
    EXPECT_EQ (snapshotOf (*plugin).map, (std::vector<std::string>{ "11 FX" }));
}

TEST_F (OldState, APresentStateGoesThePresentWay)
{
    auto xml = plugin->createStateXml();
    auto other = startPlugin (temp.folder);
    other->selectPreset (8);
    restore (*other, chunkOf (*xml));

    // No preset applied: the live values are those of the state.
    EXPECT_EQ (other->getCurrentPreset(), 0);
    for (int i = 0; i < parameterCount; ++i)
        EXPECT_EQ (other->getParameterManager().getNormalizedValue (i),
                   plugin->getParameterManager().getNormalizedValue (i))
            << "parameter " << i;
}

TEST_F (OldState, OldPresetFileLoadsAndIsSavedInThePresentForm)
{
    EXPECT_EQ (plugin->getPresetExtension(), ".vtprs");
    EXPECT_EQ (plugin->getOlderPresetExtension (0), ".vtp");
    EXPECT_EQ (plugin->getOlderBankExtension (0), ".vtb");
    EXPECT_EQ (plugin->getOlderMapExtension (0), ".vtc");

    const auto oldFile = temp.folder.getChildFile ("Old.vtp");
    ASSERT_TRUE (oldFile.replaceWithText (R"(<?xml version="1.0" encoding="UTF-8"?>
<VantricePreset name="Old File Preset">
  <param name="Preamp" value="0.125"/>
  <param name="FX" value="0.5"/>
</VantricePreset>
)"));

    plugin->selectPreset (2);
    ASSERT_TRUE (plugin->loadPresetFile (oldFile, 2));
    EXPECT_EQ (plugin->getPresetName (2), "Old File Preset");
    EXPECT_FLOAT_EQ (plugin->getPreset (2)->getValue (0), 0.125f);
    EXPECT_FLOAT_EQ (plugin->getPreset (2)->getValue (14), 0.5f);
    EXPECT_EQ (live(), slot (2));

    const auto savedFile = temp.folder.getChildFile ("Saved" + plugin->getPresetExtension());
    ASSERT_TRUE (plugin->savePresetFile (savedFile, 2));
    const auto saved = juce::parseXML (savedFile);
    ASSERT_NE (saved, nullptr);
    EXPECT_EQ (saved->getTagName(), "Preset");
    EXPECT_EQ (saved->getStringAttribute ("application"), "Vantrice");
    EXPECT_EQ (saved->getStringAttribute ("name"), "Old File Preset");
    EXPECT_EQ (saved->getIntAttribute ("rev"), 1);
    EXPECT_DOUBLE_EQ (saved->getChildByAttribute ("name", "Preamp")->getDoubleAttribute ("value"), 0.125);

    // Loading into a slot that isn't selected leaves the live values.
    const auto before = live();
    ASSERT_TRUE (plugin->loadPresetFile (oldFile, 9));
    EXPECT_EQ (plugin->getPresetName (9), "Old File Preset");
    EXPECT_EQ (live(), before);
}

TEST_F (OldState, OldBankFileLoads)
{
    const auto file = temp.folder.getChildFile ("Old.vtb");
    ASSERT_TRUE (
        file.replaceWithText (oldStateWith (0, true)->getChildByName ("VantricePresetBank")->toString()));

    ASSERT_TRUE (plugin->loadBankFile (file));
    EXPECT_EQ (plugin->getBankName(), "Old Bank");
    EXPECT_EQ (plugin->getPresetName (2), "Old B0");
    EXPECT_EQ (live(), slot (0));
}

//==============================================================================
// User settings.

class UserSettings : public PluginState
{
protected:
    juce::File settingsFile() const { return temp.folder.getChildFile ("Vantrice.ini"); }
};

TEST_F (UserSettings, WrittenAtDestructionAndReadByTheNextInstance)
{
    const auto recent = temp.folder.getChildFile ("recent");
    ASSERT_TRUE (recent.createDirectory());
    const auto bankFile =
        recent.getChildFile ("mine.vtprsb"); // loading it at start makes its folder the recent one
    const auto mapFile = temp.folder.getChildFile ("mine.vtccmap");

    {
        auto plugin = startPlugin (temp.folder);
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

    auto next = startPlugin (temp.folder);
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

TEST_F (UserSettings, TheWrittenFileHasTheFamilyLayout)
{
    startPlugin (temp.folder).reset();

    const auto text = settingsFile().loadFileAsString();
    EXPECT_TRUE (text.startsWith (R"(<?xml version="1.0" encoding="UTF-8"?>)")) << text;
    const auto xml = juce::parseXML (text);
    ASSERT_NE (xml, nullptr);
    EXPECT_EQ (xml->getTagName(), "UserSettings");
    EXPECT_EQ (xml->getStringAttribute ("application"), "Vantrice");

    std::vector<std::string> children;
    for (auto* child : xml->getChildIterator())
        children.push_back (child->getTagName().toStdString());
    EXPECT_EQ (children,
               (std::vector<std::string>{ "PluginDirectories", "ResourcesSettings", "PresetSettings" }));

    auto* recent = xml->getChildByName ("PluginDirectories")->getChildByName ("RecentlyUsed");
    ASSERT_NE (recent, nullptr);
    EXPECT_EQ (recent->getStringAttribute ("dir"),
               juce::File::getSpecialLocation (juce::File::userHomeDirectory).getFullPathName());
    auto* resources = xml->getChildByName ("ResourcesSettings");
    EXPECT_EQ (resources->getChildByName ("Presets")->getStringAttribute ("default"), "factoryPresets");
    EXPECT_FALSE (resources->getChildByName ("Presets")->hasAttribute ("file"));
    EXPECT_EQ (resources->getChildByName ("MidiCCMap")->getStringAttribute ("default"), "noMapping");
    EXPECT_FALSE (resources->getChildByName ("MidiCCMap")->hasAttribute ("file"));
    auto* presetSettings = xml->getChildByName ("PresetSettings");
    EXPECT_EQ (presetSettings->getStringAttribute ("storing"), "onDemand");
    EXPECT_EQ (presetSettings->getStringAttribute ("changing"), "normal");
}

TEST_F (UserSettings, ARecentDirectoryThatIsGoneLeavesTheHomeDirectory)
{
    const auto home = juce::File::getSpecialLocation (juce::File::userHomeDirectory).getFullPathName();
    const auto gone = temp.folder.getChildFile ("gone").getFullPathName();
    ASSERT_TRUE (settingsFile().replaceWithText (R"(<?xml version="1.0" encoding="UTF-8"?>
<UserSettings application="Vantrice">
  <PluginDirectories><RecentlyUsed dir=")" + gone + R"("/></PluginDirectories>
  <PresetSettings storing="onDemand" changing="silent"/>
</UserSettings>
)"));

    {
        auto plugin = startPlugin (temp.folder);
        EXPECT_EQ (plugin->getChangingType(), BasePluginOldStyle::silent) << "the file was read";
        EXPECT_EQ (plugin->getRecentDirectory(), home);
    }

    // What goes back into the file is the last valid directory, never an empty one.
    const auto written = juce::parseXML (settingsFile());
    ASSERT_NE (written, nullptr);
    EXPECT_EQ (written->getChildByName ("PluginDirectories")
                   ->getChildByName ("RecentlyUsed")
                   ->getStringAttribute ("dir"),
               home);
}

struct IgnoredSettings
{
    const char* name;
    const char* text;
};

void PrintTo (const IgnoredSettings& c, std::ostream* out) { *out << c.name; }

class IgnoredUserSettings : public UserSettings, public ::testing::WithParamInterface<IgnoredSettings>
{
};

TEST_P (IgnoredUserSettings, CountAsAbsent)
{
    ASSERT_TRUE (settingsFile().replaceWithText (GetParam().text));
    auto plugin = startPlugin (temp.folder);

    EXPECT_EQ (plugin->getStoringMode(), BasePluginOldStyle::onDemand);
    EXPECT_EQ (plugin->getChangingType(), BasePluginOldStyle::normal);
    EXPECT_EQ (plugin->getPresetsMode(), BasePluginOldStyle::factoryPresets);
    EXPECT_EQ (plugin->getRecentDirectory(),
               juce::File::getSpecialLocation (juce::File::userHomeDirectory).getFullPathName());
    EXPECT_EQ (plugin->getPresetName (0), "MPC 60");
}

// Each of them would, if read, set the automatic and silent modes and clear the bank.
INSTANTIATE_TEST_SUITE_P (
    Files, IgnoredUserSettings,
    ::testing::Values (
        IgnoredSettings{ "Empty", "" }, IgnoredSettings{ "NoXml", "storing=automatic changing=silent" },
        IgnoredSettings{ "Truncated", R"(<UserSettings application="Vantrice"><ResourcesSettings>)"
                                      R"(<Presets default="clearPresets"/></ResourcesSettings>)"
                                      R"(<PresetSettings storing="automatic" changing="silent"/>)" },
        IgnoredSettings{ "AnotherApplication", R"(<UserSettings application="Other"><ResourcesSettings>)"
                                               R"(<Presets default="clearPresets"/></ResourcesSettings>)"
                                               R"(<PresetSettings storing="automatic" changing="silent"/>)"
                                               R"(</UserSettings>)" },
        IgnoredSettings{ "AnotherRoot", R"(<Settings application="Vantrice"><ResourcesSettings>)"
                                        R"(<Presets default="clearPresets"/></ResourcesSettings>)"
                                        R"(<PresetSettings storing="automatic" changing="silent"/>)"
                                        R"(</Settings>)" }),
    [] (const ::testing::TestParamInfo<IgnoredSettings>& paramInfo)
    { return std::string (paramInfo.param.name); });

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

class BankAtStart : public UserSettings, public ::testing::WithParamInterface<BankChoice>
{
};

// Whatever the user's bank holds, the plug-in starts either with it or exactly as with no user bank: the
// factory bank, its first preset audible. The setting and the file are left for the next start.
TEST_P (BankAtStart, FollowsThePresetsMode)
{
    const auto& c = GetParam();
    temp.folder.getChildFile ("a folder").createDirectory();
    const auto file = juce::String (c.file).isEmpty() ? juce::File() : temp.folder.getChildFile (c.file);
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
        auto plugin = startPlugin (temp.folder);
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

//==============================================================================
// Where the settings live.

struct Fallback
{
    const char* name;
    std::function<juce::File (const juce::File& temp)> pluginFolder;
};

void PrintTo (const Fallback& c, std::ostream* out) { *out << c.name; }

class SettingsFallback : public UserSettings, public ::testing::WithParamInterface<Fallback>
{
};

TEST_P (SettingsFallback, UsesTheConfigurationFolderWhenBesideTheBinaryCannotBeWritten)
{
    const auto config = temp.folder.getChildFile ("config");
    const auto expected = config.getChildFile ("Vantrice").getChildFile ("Vantrice.ini");
    ASSERT_TRUE (expected.getParentDirectory().createDirectory());
    ASSERT_TRUE (expected.replaceWithText (R"(<?xml version="1.0" encoding="UTF-8"?>
<UserSettings application="Vantrice"><PresetSettings storing="onDemand" changing="silent"/></UserSettings>
)"));
    const auto folder = GetParam().pluginFolder (temp.folder);

    const ScopedEnvironment environment ("XDG_CONFIG_HOME", config.getFullPathName());
    {
        auto plugin = std::make_unique<Vantrice>();
        plugin->start (folder.getChildFile ("Vantrice.so"));
        EXPECT_EQ (plugin->getUserSettingsFile(), expected);
        EXPECT_EQ (plugin->getChangingType(), BasePluginOldStyle::silent) << "read from there";
        plugin->setStoringMode (BasePluginOldStyle::automatic);
    }

    const auto written = juce::parseXML (expected);
    ASSERT_NE (written, nullptr);
    EXPECT_EQ (written->getChildByName ("PresetSettings")->getStringAttribute ("storing"), "automatic");
    EXPECT_FALSE (folder.getChildFile ("Vantrice.ini").existsAsFile());
}

INSTANTIATE_TEST_SUITE_P (
    Folders, SettingsFallback,
    ::testing::Values (Fallback{ "FolderDoesNotExist", [] (const juce::File& base)
                                 { return base.getChildFile ("missing").getChildFile ("deeper"); } },
                       Fallback{ "FolderIsAFile",
                                 [] (const juce::File& base)
                                 {
                                     auto file = base.getChildFile ("plain file");
                                     file.replaceWithText ("not a folder");
                                     return file;
                                 } }),
    [] (const ::testing::TestParamInfo<Fallback>& paramInfo) { return std::string (paramInfo.param.name); });

TEST_F (UserSettings, BesideTheBinaryWhenItsFolderCanBeWritten)
{
    const ScopedEnvironment environment ("XDG_CONFIG_HOME",
                                         temp.folder.getChildFile ("config").getFullPathName());
    auto plugin = startPlugin (temp.folder);
    EXPECT_EQ (plugin->getUserSettingsFile(), settingsFile());
    EXPECT_EQ (plugin->getPluginFolder(), temp.folder.getFullPathName());
}
} // namespace
