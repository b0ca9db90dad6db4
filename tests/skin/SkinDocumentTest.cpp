#include "ExpectedPlugin.h"
#include "common/ResourceLoader.h"
#include "frame/EventsMap.h"
#include "skin/SkinXml.h"

#include <gtest/gtest.h>

#include <map>

namespace
{
struct Expected
{
    const char* tag;
    const char* name;
    const char* resource;
    int frames;
    int left, top, width, height;
    const char* binding; // the linked parameter, or the events "onClick|onClickWithCtrl"
};

// The face as it is meant to be: what a skin of this plug-in must hold, control by control.
const Expected face[] = {
    { "Button", "OptionsButton", "OptionsButton.png", 2, 78, 14, 38, 43, "Options|About" },
    { "Button", "PrevPresetButton", "PrevPresetButton.png", 2, 297, 15, 33, 42,
      "Select previous preset|Copy current preset" },
    { "Button", "NextPresetButton", "NextPresetButton.png", 2, 335, 16, 34, 41,
      "Select next preset|Paste copied preset" },
    { "Button", "BrowsePresetButton", "BrowsePresetButton.png", 2, 372, 17, 33, 40,
      "Browse presets|Store current preset" },
    { "Display", "PresetNameDisplay", "Fonts.png", 0, 130, 28, 153, 13, "Current Preset Name" },
    { "Animation", "LeftVUMeter", "LeftVUMeterAnimation.png", 12, 551, 99, 34, 89, "" },
    { "Animation", "RightVUMeter", "RightVUMeterAnimation.png", 12, 585, 100, 37, 89, "" },
    { "Knob", "OutputVolumeKnob", "OutputVolumeKnob.png", 61, 566, 50, 37, 35, "Output Volume" },
    { "Knob", "PreampKnob", "PreampKnob.png", 61, 20, 15, 37, 35, "Preamp" },
    { "Switch", "LeftBitsKnob", "LeftBitsKnob.png", 17, 86, 83, 37, 35, "Left Bits" },
    { "Knob", "LeftFrequencyKnob", "LeftFrequencyKnob.png", 61, 157, 84, 37, 35, "Left Frequency" },
    { "ToggleButton", "LeftAALPFButton", "LeftAALPFButton.png", 4, 216, 82, 37, 39, "Left Link Freq" },
    { "Switch", "LeftFilterOrderSwitch", "LeftFilterOrderSwitch.png", 2, 268, 67, 27, 59,
      "Left Filter Order" },
    { "Switch", "LeftFilterTypeKnob", "LeftFilterTypeKnob.png", 5, 311, 84, 37, 35, "Left Filter Type" },
    { "Knob", "LeftCutoffKnob", "LeftCutoffKnob.png", 61, 370, 83, 37, 35, "Left Cutoff" },
    { "Knob", "LeftResoKnob", "LeftResoKnob.png", 61, 426, 83, 37, 35, "Left Reso/Bandwidth" },
    { "Switch", "RightBitsKnob", "RightBitsKnob.png", 17, 86, 149, 37, 35, "Right Bits" },
    { "Knob", "RightFrequencyKnob", "RightFrequencyKnob.png", 61, 157, 149, 37, 35, "Right Frequency" },
    { "ToggleButton", "RightAALPFButton", "RightAALPFButton.png", 4, 217, 149, 37, 39, "Right Link Freq" },
    { "Switch", "RightFilterOrderSwitch", "RightFilterOrderSwitch.png", 2, 268, 134, 27, 59,
      "Right Filter Order" },
    { "Switch", "RightFilterTypeKnob", "RightFilterTypeKnob.png", 5, 310, 149, 37, 35, "Right Filter Type" },
    { "Knob", "RightCutoffKnob", "RightCutoffKnob.png", 61, 370, 149, 37, 35, "Right Cutoff" },
    { "Knob", "RightResoKnob", "RightResoKnob.png", 61, 427, 149, 37, 35, "Right Reso/Bandwidth" },
    { "ToggleButton", "LinkParamsButton", "LinkParamsButton.png", 4, 499, 147, 37, 42, "Link Channels" },
    { "Knob", "FXKnob", "FXKnob.png", 61, 498, 83, 37, 35, "FX" },
    { "Animation", "LeftChannelProcessLed", "LeftChannelProcessLed.png", 2, 22, 78, 34, 13, "" },
    { "Animation", "RightChannelProcessLed", "RightChannelProcessLed.png", 2, 23, 143, 34, 13, "" },
};

std::unique_ptr<juce::XmlElement> embeddedSkin() { return juce::parseXML (loadResourceText ("skin.xml")); }

juce::String bindingOf (const juce::XmlElement& control)
{
    juce::StringArray events;
    if (auto* actions = SkinXml::getChild (control, "actions"))
        for (auto* action : actions->getChildIterator())
            events.add (SkinXml::getAttribute (*action, "event"));
    if (!events.isEmpty())
        return events.joinIntoString ("|");
    if (auto* links = SkinXml::getChild (control, "links"))
        if (auto* link = SkinXml::getChild (*links, "link"))
            return SkinXml::getAttribute (*link, "param");
    return {};
}
} // namespace

TEST (SkinDocument, HoldsTheFaceControlByControlInOrder)
{
    auto skin = embeddedSkin();
    ASSERT_NE (skin, nullptr);
    EXPECT_EQ (skin->getTagName(), "PluginEditor");
    EXPECT_EQ (skin->getStringAttribute ("background"), "Background.png");

    ASSERT_EQ (skin->getNumChildElements(), (int) std::size (face));
    int i = 0;
    for (auto* control : skin->getChildIterator())
    {
        const auto& e = face[i++];
        SCOPED_TRACE (e.name);
        EXPECT_EQ (control->getTagName(), e.tag);
        EXPECT_EQ (control->getStringAttribute ("name"), e.name);
        auto* gfx = SkinXml::getChild (*control, "gfx");
        ASSERT_NE (gfx, nullptr);
        EXPECT_EQ (gfx->getStringAttribute ("resource"), e.resource);
        if (e.frames > 0)
        {
            EXPECT_EQ (gfx->getIntAttribute ("framesNum"), e.frames);
        }
        EXPECT_EQ (SkinXml::getChild (*control, "pos")->getIntAttribute ("left"), e.left);
        EXPECT_EQ (SkinXml::getChild (*control, "pos")->getIntAttribute ("top"), e.top);
        EXPECT_EQ (SkinXml::getChild (*control, "size")->getIntAttribute ("width"), e.width);
        EXPECT_EQ (SkinXml::getChild (*control, "size")->getIntAttribute ("height"), e.height);
        EXPECT_EQ (bindingOf (*control), e.binding);

        // Every picture has the size its frames ask for.
        juce::Image image;
        ASSERT_TRUE (loadResourceImage (e.resource, image));
        EXPECT_FALSE (image.hasAlphaChannel());
        if (e.frames > 0)
        {
            EXPECT_EQ (image.getWidth(), e.width);
            EXPECT_EQ (image.getHeight(), e.height * e.frames);
        }
        // The sharper set for high-density screens: exactly twice the size.
        juce::Image doubled;
        ASSERT_TRUE (loadResourceImage (juce::String (e.resource).replace (".png", "@2x.png"), doubled));
        EXPECT_EQ (doubled.getBounds(), image.getBounds() * 2);
    }
}

TEST (SkinDocument, BindsEveryHostParameterOnceAndNamesOnlyKnownEvents)
{
    auto skin = embeddedSkin();
    ASSERT_NE (skin, nullptr);
    EventsMap events;
    events.addBuiltInEvents();

    std::map<juce::String, int> bound;
    for (auto* control : skin->getChildIterator())
    {
        if (auto* links = SkinXml::getChild (*control, "links"))
            for (auto* link : links->getChildIterator())
                if (SkinXml::getAttribute (*link, "as") == "connectedTo")
                    ++bound[SkinXml::getAttribute (*link, "param")];
        if (auto* actions = SkinXml::getChild (*control, "actions"))
            for (auto* action : actions->getChildIterator())
            {
                EXPECT_TRUE (events.hasEvent (SkinXml::getAttribute (*action, "event")))
                    << SkinXml::getAttribute (*action, "event");
            }
    }
    for (const auto& p : ExpectedPlugin::parameters)
        EXPECT_EQ (bound[p.name], 1) << p.name;

    juce::Image background;
    ASSERT_TRUE (loadResourceImage ("Background.png", background));
    EXPECT_EQ (background.getBounds(), juce::Rectangle<int> (633, 207));
}
