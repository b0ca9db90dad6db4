#include "ExpectedPlugin.h"
#include "support/PluginHarness.h"

#include <gtest/gtest.h>

namespace
{
/** Counts what the plug-in tells the host. */
struct HostSpy : juce::AudioProcessorParameter::Listener, juce::AudioProcessorListener
{
    void parameterValueChanged (int, float) override { ++valueChanges; }
    void parameterGestureChanged (int, bool starting) override { (starting ? gestureStarts : gestureEnds)++; }
    void audioProcessorParameterChanged (juce::AudioProcessor*, int, float) override {}
    void audioProcessorChanged (juce::AudioProcessor*, const ChangeDetails& details) override
    {
        if (details.parameterInfoChanged)
            ++infoChanges;
        if (details.latencyChanged)
            ++latencyChanges;
    }

    int valueChanges = 0, gestureStarts = 0, gestureEnds = 0, infoChanges = 0, latencyChanges = 0;
};

void setParameter (Vantrice& plugin, int index, float value)
{
    plugin.getParameterManager().setNormalizedValue (index, value);
}
} // namespace

// The texts a host must show, from the validator's table: the display of the current value, and a
// value's own text, which ignores the link.
TEST (VantriceParameters, TextsAreTheHostVisibleOnes)
{
    PluginHarness plugin;
    for (const auto& c : ExpectedPlugin::texts)
    {
        SCOPED_TRACE (juce::String (ExpectedPlugin::parameters[(size_t) c.index].name) + " at "
                      + juce::String (c.value));
        setParameter (*plugin, ParameterIndex::linkChannels, c.linked ? 1.0f : 0.0f);
        setParameter (*plugin, c.index, c.value);
        EXPECT_EQ (plugin->getParameterTextFor (c.index), juce::String (c.text));
        EXPECT_EQ (plugin->getParameters()[c.index]->getCurrentValueAsText(), juce::String (c.text));
        if (!c.linked)
        {
            EXPECT_EQ (plugin->getParameterTextForValue (c.index, c.value), juce::String (c.text));
        }
    }
}

TEST (VantriceParameters, HostSeesEighteenNamedParametersWithTheirSteps)
{
    PluginHarness plugin;
    const auto& list = plugin->getParameters();
    ASSERT_EQ (list.size(), ParameterIndex::count);
    for (int i = 0; i < ParameterIndex::count; ++i)
    {
        const auto& expected = ExpectedPlugin::parameters[(size_t) i];
        auto* p = list[i];
        EXPECT_EQ (p->getName (100), juce::String (expected.name));
        EXPECT_EQ (p->isDiscrete(), expected.numSteps > 0) << i;
        if (expected.numSteps > 0)
        {
            EXPECT_EQ (p->getNumSteps(), expected.numSteps) << i;
        }
        EXPECT_EQ (p->getDefaultValue(), expected.startValue)
            << "hosts are told what a new instance starts with";
        EXPECT_EQ (p->getValue(), plugin->getPreset (0)->getValue (i))
            << "the first preset is applied at start";
    }
}

TEST (VantriceParameters, HostWritesDoNotComeBackWhileEditorMovesAndGesturesDo)
{
    PluginHarness plugin;
    HostSpy spy;
    auto* host = plugin->getParameters()[0];
    host->addListener (&spy);

    host->setValue (0.25f);
    EXPECT_EQ (spy.valueChanges, 0) << "the host's own write is not sent back";
    EXPECT_EQ (plugin->getParameterManager().getNormalizedValue (0), 0.25f);
    EXPECT_EQ (plugin->getVantriceCore()->getRawValue (0), 0.25);

    setParameter (*plugin, 0, 0.5f);
    EXPECT_EQ (spy.valueChanges, 1) << "a knob movement reaches the host";
    setParameter (*plugin, 0, 0.5f);
    EXPECT_EQ (spy.valueChanges, 1) << "an unchanged value tells nobody";

    auto* p = plugin->getParameterManager().getParameter (0);
    for (auto* l : p->getImmediateListeners())
        l->parameterGestureBegan (p);
    for (auto* l : p->getImmediateListeners())
        l->parameterGestureEnded (p);
    EXPECT_EQ (spy.gestureStarts, 1);
    EXPECT_EQ (spy.gestureEnds, 1);
    host->removeListener (&spy);
}

TEST (VantriceParameters, TypedTextIsTheExactInverseOfTheDisplay)
{
    PluginHarness plugin;
    setParameter (*plugin, 13, 0.0f);
    for (int index = 0; index < ParameterIndex::count; ++index)
    {
        auto* host = plugin->getParameters()[index];
        for (int k = 0; k <= 400; ++k)
        {
            const float v = (float) k / 400.0f;
            const auto text = host->getText (v, 100);
            const float back = host->getValueForText (text);
            EXPECT_EQ (host->getText (back, 100), text) << "parameter " << index << " at " << v;
        }
    }
}

TEST (VantriceParameters, FormatsSeeDistinctIdsAndValueListsThatIgnoreTheLink)
{
    PluginHarness plugin;
    juce::StringArray ids;
    for (auto* p : plugin->getParameters())
        if (auto* withId = dynamic_cast<juce::AudioProcessorParameterWithID*> (p))
            ids.add (withId->getParameterID());
    ASSERT_EQ (ids.size(), (size_t) ParameterIndex::count);
    auto sorted = ids;
    sorted.sort (false);
    EXPECT_EQ (sorted, ids) << "identifiers sort in index order";
    EXPECT_EQ (ids[0], "p00");
    EXPECT_EQ (ids[17], "p17");

    ASSERT_TRUE (plugin->getParameterManager().getBoolValue (13)) << "linked at start";
    const auto types = plugin->getParameters()[10]->getAllValueStrings();
    EXPECT_EQ (types, juce::StringArray ({ "LP", "BP", "HP", "BR", "Off" }));
    const auto bits = plugin->getParameters()[7]->getAllValueStrings();
    ASSERT_EQ (bits.size(), 17);
    EXPECT_EQ (bits[0], "1 bit");
    EXPECT_EQ (bits[16], "Quant. Off");
    EXPECT_EQ (plugin->getParameters()[10]->getCurrentValueAsText(), "linked")
        << "the display still says linked";
}
