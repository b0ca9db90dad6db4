#include "ExpectedPlugin.h"
#include "common/ResourceLoader.h"
#include "support/PluginHarness.h"

#include <gtest/gtest.h>

namespace
{
std::unique_ptr<juce::XmlElement> parseResource (const juce::String& key)
{
    auto xml = juce::XmlDocument::parse (loadResourceText (key));
    EXPECT_NE (xml, nullptr) << key;
    return xml;
}

// A preset as the plug-in writes one: revision 1, every parameter in table order, each value normalised
// and in the plug-in's own six-decimal form.
void expectWrittenByThePlugin (const juce::XmlElement& preset)
{
    const auto name = preset.getStringAttribute ("name");
    EXPECT_EQ (preset.getTagName(), "Preset");
    EXPECT_EQ (preset.getStringAttribute ("application"), "Vantrice") << name;
    EXPECT_EQ (preset.getStringAttribute ("rev"), "1") << name;
    ASSERT_EQ ((size_t) preset.getNumChildElements(), ExpectedPlugin::parameters.size()) << name;
    int i = 0;
    for (auto* row : preset.getChildIterator())
    {
        const auto text = row->getStringAttribute ("value");
        const auto value = row->getDoubleAttribute ("value", -1.0);
        EXPECT_EQ (row->getStringAttribute ("name"), ExpectedPlugin::parameters[(size_t) i++].name) << name;
        EXPECT_TRUE (value >= 0.0 && value <= 1.0) << name << ": " << text;
        EXPECT_EQ (text, BasePluginOldStyle::formatPresetValue ((float) value)) << name;
    }
}
} // namespace

// Three groups of 42 presets as the plug-in writes them; the linked group links its channels and the
// unlinked one doesn't.
TEST (FactoryBank, PresetsAreThePluginsOwnAndLinkAsTheirGroupSays)
{
    auto bank = parseResource ("default.vtprsb");
    ASSERT_NE (bank, nullptr);
    EXPECT_EQ (bank->getTagName(), "PresetBank");
    EXPECT_EQ (bank->getStringAttribute ("name"), "Vantrice Default Bank");
    juce::StringArray groups;
    int count = 0;
    for (auto* group : bank->getChildIterator())
    {
        const auto groupName = group->getStringAttribute ("name");
        groups.add (groupName + " x" + juce::String (group->getNumChildElements()));
        for (auto* preset : group->getChildIterator())
        {
            ++count;
            expectWrittenByThePlugin (*preset);
            auto valueOf = [preset] (int index)
            { return (float) preset->getChildElement (index)->getDoubleAttribute ("value"); };
            if (groupName != "Classic Boxes")
            {
                EXPECT_EQ (valueOf (ParameterIndex::linkChannels),
                           groupName == "Linked Channels" ? 1.0f : 0.0f)
                    << preset->getStringAttribute ("name");
            }
        }
    }
    EXPECT_EQ (groups.joinIntoString (", "), "Classic Boxes x11, Linked Channels x19, Unlinked Channels x12");
    EXPECT_EQ (count, 42);
}
