#include "ExpectedPlugin.h"
#include "common/ResourceLoader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <vector>

namespace
{

struct Group
{
    juce::String name;
    std::vector<juce::String> presets;
};

const std::vector<Group> factoryGroups{
    { "Classic Boxes",
      { "MPC 60", "16bit 8kHz", "16bit 16kHz", "16bit 32kHz", "909 Hats", "C64 Volume Registry",
        "C64 PWM Coding", "Emulator", "FZ-1 Lo", "EPS", "SP-1200" } },
    { "Linked Channels",
      { "Liquid", "Rambling Guitar", "Traceable Amounts", "Dirt", "Cripple", "High Voltage", "Screamer",
        "Acid Crush", "Bottomizer /Ruff'n'Jam", "Non-linear Equations", "Acid line", "Hello mr Nyquist",
        "Industrial LoFi", "Ringing Kick", "Phone Call", "Sand Paper", "Digital Loudness", "Electrified",
        "Old Timer" } },
    { "Unlinked Channels",
      { "Weird HRTF", "Crush Widener", "Stereo Wind", "Phase Shift", "Trance lead 1", "Trance lead 2",
        "Kelvane widening", "One wish left profeser", "Dist'n'Crush", "No So Distant Past",
        "Independent Bands", "Stereo Wide" } },
};

std::unique_ptr<juce::XmlElement> parseResource (const juce::String& key)
{
    auto text = loadResourceText (key);
    EXPECT_TRUE (text.isNotEmpty()) << key;
    auto xml = juce::XmlDocument::parse (text);
    EXPECT_NE (xml, nullptr) << key;
    return xml;
}

std::vector<const juce::XmlElement*> childrenOf (const juce::XmlElement& parent)
{
    std::vector<const juce::XmlElement*> children;
    for (auto* child : parent.getChildIterator())
        children.push_back (child);
    return children;
}

// Every preset of the bank with the name of its group, in file order.
struct PresetEntry
{
    juce::String group;
    const juce::XmlElement* preset;
};

std::vector<PresetEntry> presetsOf (const juce::XmlElement& bank)
{
    std::vector<PresetEntry> entries;
    for (auto* group : bank.getChildWithTagNameIterator ("PresetGroup"))
        for (auto* preset : group->getChildWithTagNameIterator ("Preset"))
            entries.push_back ({ group->getStringAttribute ("name"), preset });
    return entries;
}

const juce::XmlElement* findPreset (const juce::XmlElement& bank, const juce::String& name)
{
    for (auto& entry : presetsOf (bank))
        if (entry.preset->getStringAttribute ("name") == name)
            return entry.preset;
    ADD_FAILURE() << "no preset " << name;
    return nullptr;
}

std::vector<double> valuesOf (const juce::XmlElement& preset)
{
    std::vector<double> values;
    for (auto* param : preset.getChildWithTagNameIterator ("param"))
        values.push_back (param->getDoubleAttribute ("value"));
    return values;
}

double valueOf (const juce::XmlElement& preset, const juce::String& parameterName)
{
    for (auto* param : preset.getChildWithTagNameIterator ("param"))
        if (param->getStringAttribute ("name") == parameterName)
            return param->getDoubleAttribute ("value");
    ADD_FAILURE() << "no parameter " << parameterName;
    return -1.0;
}

// The text the plug-in itself writes for a value: six decimals at most, "%.9g".
juce::String writtenForm (double value)
{
    const auto scaled = static_cast<float> (value) * 1.0e6f;
    char text[64];
    std::snprintf (text, sizeof (text), "%.9g", std::nearbyint (static_cast<double> (scaled)) * 1.0e-6);
    return text;
}

void expectParamsInTableOrder (const juce::XmlElement& preset)
{
    const auto name = preset.getStringAttribute ("name");
    const auto children = childrenOf (preset);
    ASSERT_EQ (children.size(), ExpectedPlugin::parameters.size()) << name;
    for (size_t i = 0; i < children.size(); ++i)
    {
        EXPECT_EQ (children[i]->getTagName(), "param") << name;
        EXPECT_EQ (children[i]->getStringAttribute ("name"), ExpectedPlugin::parameters[i].name)
            << name << " row " << (int) i;
        EXPECT_TRUE (children[i]->hasAttribute ("value")) << name << " row " << (int) i;
    }
}

double rateCurve (double v)
{
    const auto r =
        ((((1.6276041666666399 * v - 3.255208333333264) * v + 3.5807291666666026) * v - 1.432291666666641) * v
         + 0.47916666666666236)
            * v
        + 2.704652017625984e-16;
    return r < 0.001 ? 0.001 : r;
}

int bitsOf (double v) { return (int) std::floor (16.0 * v + 0.5) + 1; }
} // namespace

TEST (FactoryBank, DefaultPresetHoldsTheStartValues)
{
    auto preset = parseResource ("default.vtprs");
    ASSERT_NE (preset, nullptr);

    EXPECT_EQ (preset->getTagName(), "Preset");
    EXPECT_EQ (preset->getStringAttribute ("application"), "Vantrice");
    EXPECT_EQ (preset->getStringAttribute ("name"), "empty");
    EXPECT_EQ (preset->getStringAttribute ("rev"), "1");
    expectParamsInTableOrder (*preset);

    const auto values = valuesOf (*preset);
    ASSERT_EQ (values.size(), ExpectedPlugin::parameters.size());
    for (size_t i = 0; i < values.size(); ++i)
        EXPECT_EQ (values[i], (double) ExpectedPlugin::parameters[i].defaultValue)
            << ExpectedPlugin::parameters[i].name;

    for (auto* param : preset->getChildWithTagNameIterator ("param"))
        EXPECT_EQ (param->getStringAttribute ("value"), writtenForm (param->getDoubleAttribute ("value")));
}

TEST (FactoryBank, BankRootCarriesOnlyItsName)
{
    auto bank = parseResource ("default.vtprsb");
    ASSERT_NE (bank, nullptr);

    EXPECT_EQ (bank->getTagName(), "PresetBank");
    EXPECT_EQ (bank->getStringAttribute ("name"), "Vantrice Default Bank");
    EXPECT_FALSE (bank->hasAttribute ("application"));
    EXPECT_FALSE (bank->hasAttribute ("rev"));
}

TEST (FactoryBank, GroupsHaveTheirNamesAndSizesInOrder)
{
    auto bank = parseResource ("default.vtprsb");
    ASSERT_NE (bank, nullptr);

    const auto groups = childrenOf (*bank);
    ASSERT_EQ (groups.size(), factoryGroups.size());
    for (size_t g = 0; g < groups.size(); ++g)
    {
        EXPECT_EQ (groups[g]->getTagName(), "PresetGroup");
        EXPECT_EQ (groups[g]->getStringAttribute ("name"), factoryGroups[g].name);
        EXPECT_EQ ((size_t) groups[g]->getNumChildElements(), factoryGroups[g].presets.size())
            << factoryGroups[g].name;
    }
    EXPECT_EQ (presetsOf (*bank).size(), 42u);
}

TEST (FactoryBank, PresetNamesAreExactAndInOrder)
{
    auto bank = parseResource ("default.vtprsb");
    ASSERT_NE (bank, nullptr);

    std::vector<juce::String> expected;
    for (auto& group : factoryGroups)
        for (auto& name : group.presets)
            expected.push_back (group.name + "/" + name);

    std::vector<juce::String> actual;
    for (auto& entry : presetsOf (*bank))
        actual.push_back (entry.group + "/" + entry.preset->getStringAttribute ("name"));

    EXPECT_EQ (actual, expected);
}

TEST (FactoryBank, EveryPresetIsACompleteRevisionOnePreset)
{
    auto bank = parseResource ("default.vtprsb");
    ASSERT_NE (bank, nullptr);

    for (auto& entry : presetsOf (*bank))
    {
        const auto& preset = *entry.preset;
        const auto name = preset.getStringAttribute ("name");
        EXPECT_EQ (preset.getStringAttribute ("application"), "Vantrice") << name;
        EXPECT_TRUE (preset.hasAttribute ("rev")) << name;
        EXPECT_EQ (preset.getIntAttribute ("rev"), 1) << name;
        expectParamsInTableOrder (preset);
    }
}

TEST (FactoryBank, ValuesAreNormalisedAndWrittenAsThePluginWritesThem)
{
    auto bank = parseResource ("default.vtprsb");
    ASSERT_NE (bank, nullptr);

    for (auto& entry : presetsOf (*bank))
    {
        const auto name = entry.preset->getStringAttribute ("name");
        for (auto* param : entry.preset->getChildWithTagNameIterator ("param"))
        {
            const auto text = param->getStringAttribute ("value");
            const auto value = param->getDoubleAttribute ("value", -1.0);
            const auto where = name + " / " + param->getStringAttribute ("name") + " = " + text;

            EXPECT_GE (value, 0.0) << where;
            EXPECT_LE (value, 1.0) << where;
            EXPECT_NEAR (value * 1.0e6, std::round (value * 1.0e6), 1.0e-6) << where;
            EXPECT_EQ (text, writtenForm (value)) << where;
        }
    }
}

TEST (FactoryBank, GivenRowsAreExact)
{
    auto bank = parseResource ("default.vtprsb");
    ASSERT_NE (bank, nullptr);

    const std::vector<std::pair<juce::String, std::vector<double>>> rows{
        { "MPC 60", { 0.475, 0.685, 0.93, 0, 1, 1, 0, 1, 1, 0, 1, 1, 0, 1, 1, 0.235, 0, 0 } },
        { "SP-1200", { 0.35, 0.705, 0.78, 0, 1, 1, 0, 1, 1, 0, 1, 1, 0, 1, 1, 0.23, 0, 0 } },
        { "Liquid", { 0, 1, 0.7, 0, 0.31, 0.484, 0.236, 1, 1, 0, 1, 1, 0, 1, 1, 0.616, 1, 0 } },
        { "Weird HRTF",
          { 0, 0.435, 0.772, 0, 0.83, 0.336, 0.18, 0.45, 0.816, 0, 0.835, 0.488, 0.08, 0, 1, 0.5, 0, 0 } },
    };

    for (auto& [name, expected] : rows)
    {
        auto* preset = findPreset (*bank, name);
        ASSERT_NE (preset, nullptr) << name;
        const auto values = valuesOf (*preset);
        ASSERT_EQ (values.size(), expected.size()) << name;
        for (size_t i = 0; i < values.size(); ++i)
            EXPECT_EQ (values[i], expected[i]) << name << " / " << ExpectedPlugin::parameters[i].name;
    }
}

TEST (FactoryBank, LinkChannelsMatchesTheGroup)
{
    auto bank = parseResource ("default.vtprsb");
    ASSERT_NE (bank, nullptr);

    int checked = 0;
    for (auto& entry : presetsOf (*bank))
    {
        const auto link = valueOf (*entry.preset, "Link Channels");
        const auto name = entry.preset->getStringAttribute ("name");
        if (entry.group == "Linked Channels")
        {
            EXPECT_EQ (link, 1.0) << name;
            ++checked;
        }
        else if (entry.group == "Unlinked Channels")
        {
            EXPECT_EQ (link, 0.0) << name;
            ++checked;
        }
    }
    EXPECT_EQ (checked, 19 + 12);
}

TEST (FactoryBank, SixteenBitPresetsHoldAtTheirNamedRates)
{
    auto bank = parseResource ("default.vtprsb");
    ASSERT_NE (bank, nullptr);

    const std::vector<std::pair<juce::String, double>> rows{
        { "16bit 8kHz", 8000.0 },
        { "16bit 16kHz", 16000.0 },
        { "16bit 32kHz", 32000.0 },
    };

    for (auto& [name, hertz] : rows)
    {
        auto* preset = findPreset (*bank, name);
        ASSERT_NE (preset, nullptr) << name;

        // The plug-in reads the value as a float before the curves see it.
        const auto bits = (double) (float) valueOf (*preset, "Left Bits");
        const auto frequency = (double) (float) valueOf (*preset, "Left Frequency");
        EXPECT_EQ (bitsOf (bits), 16) << name;
        EXPECT_NEAR (rateCurve (frequency) * 44100.0, hertz, hertz * 0.02) << name;
    }
}
