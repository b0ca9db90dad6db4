#include "support/PluginHarness.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace
{
constexpr int presetNumberId = BasePluginOldStyle::currentPresetNumberId;
constexpr int presetNameId = BasePluginOldStyle::currentPresetNameId;

int sumOfSizes (const Vantrice& p)
{
    int sum = 0;
    for (int g = 0; g < p.getNumGroups(); ++g)
        sum += p.getGroupSize (g);
    return sum;
}

std::unique_ptr<juce::XmlElement> parse (const juce::String& text) { return juce::XmlDocument::parse (text); }

juce::String presetXml (const juce::String& attributes, const juce::String& rows)
{
    return "<Preset " + attributes + ">" + rows + "</Preset>";
}

float live (Vantrice& p, int index) { return p.getParameterManager().getNormalizedValue (index); }
} // namespace

TEST (PresetBank, RandomMovesKeepTheRowTheSizesAndTheSelection)
{
    PluginHarness plugin;
    plugin->setCurrentPreset (5, false);
    const auto* selected = plugin->getPreset (5);
    const float liveBefore = live (*plugin, 0);

    std::set<const Preset*> all;
    for (int i = 0; i < 128; ++i)
        all.insert (plugin->getPreset (i));

    std::mt19937 random (1234);
    auto pick = [&random] (int n) { return n > 0 ? (int) (random() % (unsigned) n) : 0; };
    for (int step = 0; step < 2000; ++step)
    {
        const int groups = plugin->getNumGroups();
        switch (pick (5))
        {
            case 0:
            {
                const int fromGroup = pick (groups), toGroup = pick (groups);
                if (plugin->getGroupSize (fromGroup) == 0)
                    break;
                const int from = plugin->getPresetIndex (fromGroup, pick (plugin->getGroupSize (fromGroup)));
                const int to = juce::jlimit (
                    0, 127, plugin->getGroupStart (toGroup) + pick (plugin->getGroupSize (toGroup) + 1));
                plugin->movePreset (from, to, fromGroup, toGroup);
                break;
            }
            case 1:
            {
                const int fromGroup = pick (groups), toGroup = pick (groups);
                juce::SparseSet<int> selection;
                for (int k = 0; k < plugin->getGroupSize (fromGroup); ++k)
                    if (pick (3) == 0)
                        selection.addRange ({ k, k + 1 });
                plugin->movePresetsToGroup (toGroup, fromGroup, selection);
                break;
            }
            case 2:
                plugin->moveGroup (pick (groups), pick (groups));
                break;
            case 3:
                plugin->insertGroup (pick (groups));
                break;
            default:
                plugin->removeEmptyGroup (pick (groups));
                break;
        }

        ASSERT_EQ (sumOfSizes (*plugin), 128) << "step " << step;
        for (int g = 0; g < plugin->getNumGroups(); ++g)
        {
            if (plugin->getGroupSize (g) > 0)
            {
                ASSERT_EQ (plugin->getGroupOfPreset (plugin->getGroupEnd (g)), g) << "step " << step;
            }
        }
        ASSERT_EQ (plugin->getPreset (plugin->getCurrentPreset()), selected) << "step " << step;
    }

    std::set<const Preset*> after;
    for (int i = 0; i < 128; ++i)
        after.insert (plugin->getPreset (i));
    EXPECT_EQ (after, all);
    EXPECT_EQ (live (*plugin, 0), liveBefore) << "moves change no parameter";
}

TEST (PresetBank, MovesFollowTheirRules)
{
    PluginHarness plugin;
    // Groups: Classic Boxes 0..10, Linked Channels 11..29, Unlinked Channels 30..41, Not used 42..127.
    plugin->moveGroup (0, 1);
    EXPECT_EQ (plugin->getGroupName (1), "Classic Boxes");
    EXPECT_EQ (plugin->getPresetName (19), "MPC 60") << "behind the larger group's last preset";
    EXPECT_EQ (plugin->getPresetName (0), "Liquid");
    EXPECT_EQ (plugin->getCurrentPreset(), 19);

    juce::SparseSet<int> selection;
    selection.addRange ({ 0, 2 });
    selection.addRange ({ 5, 6 });
    plugin->movePresetsToGroup (2, 1, selection); // three Classic Boxes to the end of the Unlinked group
    EXPECT_EQ (plugin->getGroupSize (1), 8);
    EXPECT_EQ (plugin->getGroupSize (2), 15);
    EXPECT_EQ (plugin->getPresetNameInGroup (2, 12), "MPC 60");
    EXPECT_EQ (plugin->getPresetNameInGroup (2, 13), "16bit 8kHz");
    EXPECT_EQ (plugin->getPresetNameInGroup (2, 14), "C64 Volume Registry");
    EXPECT_EQ (plugin->getPresetName (plugin->getCurrentPreset()), "MPC 60");

    // A selection reaching past its group is refused whole.
    juce::SparseSet<int> tooFar;
    tooFar.addRange ({ 7, 9 });
    plugin->movePresetsToGroup (2, 1, tooFar);
    EXPECT_EQ (plugin->getGroupSize (1), 8);
    EXPECT_EQ (plugin->getGroupSize (2), 15);
}

TEST (PresetFiles, ValuesAreWrittenWithSixDecimals)
{
    EXPECT_EQ (BasePluginOldStyle::formatPresetValue (0.1234567f), "0.123457");
    EXPECT_EQ (BasePluginOldStyle::formatPresetValue (0.475f), "0.475");
    EXPECT_EQ (BasePluginOldStyle::formatPresetValue (1.0f), "1");
    EXPECT_EQ (BasePluginOldStyle::formatPresetValue (0.0f), "0");
    // Scaled in single precision, as the family's files have it: these fall to the other side in double.
    EXPECT_EQ (BasePluginOldStyle::formatPresetValue (4.5e-6f), "4e-06");
    EXPECT_EQ (BasePluginOldStyle::formatPresetValue (7.5e-6f), "8e-06");
    EXPECT_EQ (BasePluginOldStyle::formatStateValue (0.5f), "0.5");
}

TEST (PresetFiles, BankRoundTripKeepsGroupsNamesAndValues)
{
    PluginHarness plugin;
    plugin->setGroupName (1, "Renamed");
    plugin->getPreset (3)->setValue (6, 0.1234567f);
    const auto file = plugin.folder.getChildFile ("bank" + plugin->getBankExtension());
    ASSERT_TRUE (plugin->saveBankFile (file));
    EXPECT_TRUE (file.loadFileAsString().startsWith ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"));
    EXPECT_EQ (plugin->getRecentDirectory(), plugin.folder.getFullPathName());

    PluginHarness other;
    ASSERT_TRUE (other->loadBankFile (file));
    ASSERT_EQ (other->getNumGroups(), plugin->getNumGroups());
    for (int g = 0; g < plugin->getNumGroups(); ++g)
    {
        EXPECT_EQ (other->getGroupName (g), plugin->getGroupName (g));
        EXPECT_EQ (other->getGroupSize (g), plugin->getGroupSize (g));
    }
    for (int i = 0; i < 128; ++i)
    {
        EXPECT_EQ (other->getPresetName (i), plugin->getPresetName (i));
        for (int k = 0; k < ParameterIndex::count; ++k)
            EXPECT_NEAR (other->getPreset (i)->getValue (k), plugin->getPreset (i)->getValue (k), 5e-7);
    }
    EXPECT_FLOAT_EQ (other->getPreset (3)->getValue (6), 0.123457f);
}

TEST (PresetFiles, PresetRevisionRuleResetsTheFilterOrders)
{
    PluginHarness plugin;
    auto* slot = plugin->getPreset (7);
    const juce::String orders =
        "<param name=\"Left Filter Order\" value=\"1\"/><param name=\"Right Filter Order\" value=\"1\"/>";

    struct Case
    {
        const char* rev;
        bool rowsInFile;
        float expected;
    };
    for (const auto& c : { Case{ "", false, 0.0f }, Case{ "rev=\"0\"", false, 0.0f }, Case{ "", true, 1.0f },
                           Case{ "rev=\"1\"", false, 1.0f } })
    {
        slot->setValue (16, 1.0f);
        slot->setValue (17, 1.0f);
        auto xml = parse (presetXml ("application=\"Vantrice\" name=\"x\" " + juce::String (c.rev),
                                     c.rowsInFile ? orders : juce::String()));
        ASSERT_TRUE (plugin->readPresetInto (*xml, 7));
        EXPECT_EQ (slot->getValue (16), c.expected) << c.rev << c.rowsInFile;
        EXPECT_EQ (slot->getValue (17), c.expected) << c.rev << c.rowsInFile;
    }
}

TEST (PresetFiles, MalformedPresetsChangeNothingOrOnlyWhatTheyName)
{
    PluginHarness plugin;
    auto* slot = plugin->getPreset (2);
    const auto before = plugin->createPresetXml (2)->toString();

    // Not a preset at all, or another product's: the slot stays.
    for (const char* text :
         { "<Preset name=\"x\"/>", "<Preset application=\"Other\" name=\"x\"/>", "<Bank/>" })
    {
        auto xml = parse (text);
        ASSERT_NE (xml, nullptr);
        EXPECT_FALSE (plugin->readPresetInto (*xml, 2)) << text;
        EXPECT_EQ (plugin->createPresetXml (2)->toString(), before) << text;
    }

    // A rev 1 preset that lists only the preamp changes only position 0 and the name; unknown names and
    // values without a number are taken as the rules say.
    auto xml =
        parse (presetXml ("application=\"Vantrice\" rev=\"1\"",
                          "<param name=\"Preamp\" value=\"0.25\"/><param name=\"Nope\" value=\"1\"/>"));
    const float bits = slot->getValue (1);
    ASSERT_TRUE (plugin->readPresetInto (*xml, 2));
    EXPECT_EQ (plugin->getPresetName (2), "unnamed");
    EXPECT_EQ (slot->getValue (0), 0.25f);
    EXPECT_EQ (slot->getValue (1), bits);

    auto noValue =
        parse (presetXml ("application=\"Vantrice\" rev=\"1\" name=\"y\"", "<param name=\"Preamp\"/>"));
    ASSERT_TRUE (plugin->readPresetInto (*noValue, 2));
    EXPECT_EQ (slot->getValue (0), 0.0f);

    // A file that doesn't parse changes nothing, not even the folder the next dialog opens in.
    const auto elsewhere = plugin.folder.getChildFile ("elsewhere");
    ASSERT_TRUE (elsewhere.createDirectory());
    const auto recent = plugin->getRecentDirectory();
    EXPECT_FALSE (plugin->loadPresetFile (elsewhere.getChildFile ("missing.vtprs"), 2));
    const auto garbage = elsewhere.getChildFile ("garbage.vtprs");
    garbage.replaceWithText ("this is < not xml");
    EXPECT_FALSE (plugin->loadPresetFile (garbage, 2));
    EXPECT_EQ (plugin->getPresetName (2), "y");
    EXPECT_EQ (plugin->getRecentDirectory(), recent);
}

TEST (PresetFiles, BanksFollowTheReadingRules)
{
    PluginHarness plugin;

    // An empty bank: 128 cleared presets in one group "Not used".
    ASSERT_TRUE (plugin->readBank (*parse ("<PresetBank/>")));
    EXPECT_EQ (plugin->getBankName(), "Preset Bank");
    ASSERT_EQ (plugin->getNumGroups(), 1);
    EXPECT_EQ (plugin->getGroupName (0), "Not used");
    EXPECT_EQ (plugin->getGroupSize (0), 128);
    EXPECT_EQ (plugin->getPresetName (127), "Preset 127");
    EXPECT_EQ (plugin->getPreset (5)->getValue (15), 0.5f) << "the default preset's values";

    // 130 presets in one group fill the row and drop the last two, with no "Not used".
    juce::String many = "<PresetBank name=\"Big\"><PresetGroup name=\"All\">";
    for (int i = 0; i < 130; ++i)
        many << presetXml ("application=\"Vantrice\" rev=\"1\" name=\"P" + juce::String (i) + "\"", {});
    many << "</PresetGroup></PresetBank>";
    ASSERT_TRUE (plugin->readBank (*parse (many)));
    EXPECT_EQ (plugin->getNumGroups(), 1);
    EXPECT_EQ (plugin->getGroupSize (0), 128);
    EXPECT_EQ (plugin->getPresetName (127), "P127");

    // Groups without names, presets of other products and foreign elements.
    const juce::String mixed = "<PresetBank><PresetGroup name=\"A\"/><Other/><PresetGroup>"
                               + presetXml ("application=\"Other\" name=\"no\"", {})
                               + presetXml ("application=\"Vantrice\" name=\"yes\"", {})
                               + "</PresetGroup><PresetGroup/></PresetBank>";
    ASSERT_TRUE (plugin->readBank (*parse (mixed)));
    ASSERT_EQ (plugin->getNumGroups(), 4);
    EXPECT_EQ (plugin->getGroupName (1), "group 2");
    EXPECT_EQ (plugin->getGroupName (2), "group 3");
    EXPECT_EQ (plugin->getGroupSize (1), 1);
    EXPECT_EQ (plugin->getPresetName (0), "yes");
    EXPECT_EQ (plugin->getGroupSize (3), 127);

    // Not a bank, and a file that doesn't parse, change nothing.
    EXPECT_FALSE (plugin->readBank (*parse ("<PresetGroup/>")));
    const auto garbage = plugin.folder.getChildFile ("garbage.vtprsb");
    garbage.replaceWithText ("no markup here");
    EXPECT_FALSE (plugin->loadBankFile (garbage));
    EXPECT_EQ (plugin->getNumGroups(), 4);
}

TEST (PresetManager, SelectionStepsAndProgramChanges)
{
    PluginHarness plugin;
    plugin->selectPreviousPreset();
    EXPECT_EQ (plugin->getCurrentPreset(), 0) << "no wrap at the start";
    plugin->handleEvent (1002);
    EXPECT_EQ (plugin->getCurrentPreset(), 1);
    EXPECT_EQ (plugin->getParameterManager().getStringValue (presetNameId), "16bit 8kHz");
    EXPECT_EQ ((int) plugin->getParameterManager().getValue (presetNumberId), 1);
    plugin->setCurrentPreset (127, false);
    plugin->selectNextPreset();
    EXPECT_EQ (plugin->getCurrentPreset(), 127) << "no wrap at the end";

    plugin->selectPreset (1);
    plugin->getParameterManager().setNormalizedValue (0, 0.9f);
    plugin->selectPreset (1);
    EXPECT_EQ (live (*plugin, 0), 0.9f) << "choosing the selected preset again does nothing";
    plugin->programChange (1);
    EXPECT_EQ (live (*plugin, 0), plugin->getPreset (1)->getValue (0)) << "a program change reloads it";
}

TEST (PresetManager, StoringModesDecideWhetherTheSlotFollows)
{
    for (const int mode : { BasePluginOldStyle::onDemand, BasePluginOldStyle::automatic })
    {
        PluginHarness plugin;
        plugin->setStoringMode (mode);
        const float stored = plugin->getPreset (0)->getValue (0);
        plugin->getParameterManager().setNormalizedValue (0, 0.9f);
        plugin->selectNextPreset();
        plugin->selectPreviousPreset();
        EXPECT_EQ (live (*plugin, 0), mode == BasePluginOldStyle::automatic ? 0.9f : stored) << mode;
    }

    PluginHarness plugin;
    plugin->getParameterManager().setNormalizedValue (0, 0.3f);
    plugin->setStoringMode (BasePluginOldStyle::automatic);
    EXPECT_EQ (plugin->getPreset (0)->getValue (0), 0.3f) << "switching to automatic stores at once";

    // Storing with the event changes neither the name nor a parameter.
    plugin->setStoringMode (BasePluginOldStyle::onDemand);
    plugin->getParameterManager().setNormalizedValue (2, 0.4f);
    plugin->handleEvent (1009);
    EXPECT_EQ (plugin->getPreset (0)->getValue (2), 0.4f);
    EXPECT_EQ (plugin->getPresetName (0), "MPC 60");
}

TEST (PresetManager, CopyAndPaste)
{
    PluginHarness plugin;
    plugin->pasteCopiedPreset();
    EXPECT_EQ (plugin->getPresetName (0), "MPC 60") << "nothing to paste yet";

    plugin->getParameterManager().setNormalizedValue (0, 0.77f); // live, not stored
    plugin->handleEvent (1007);
    plugin->getParameterManager().setNormalizedValue (0, 0.1f);
    plugin->selectPreset (4);
    plugin->handleEvent (1008);
    EXPECT_EQ (plugin->getPresetName (4), "MPC 60_copy");
    EXPECT_EQ (plugin->getPreset (4)->getValue (0), 0.77f);
    EXPECT_EQ (live (*plugin, 0), 0.77f);
    EXPECT_EQ (plugin->getParameterManager().getStringValue (presetNameId), "MPC 60_copy");
    EXPECT_TRUE (plugin->isClipboardFilled());
}
