#include "FaceLayout.h"

namespace
{
using Look = FaceLayout::Look;
using Icon = FaceLayout::Icon;
using Control = FaceLayout::Control;

// The frame counts of the strips: a knob turns in 61 steps, the bits switch has 17 positions (1 to 16
// bits and off), the filter type 5 (LP, BP, HP, BR, off), the meters 12 (dark and 11 lamps).
constexpr int knobFrames = 61;
constexpr int bitsFrames = 17;
constexpr int typeFrames = 5;
constexpr int meterFrames = 12;

// The bits switch names its ends beside the scale and 8 bits on it.
const std::vector<const char*> bitsDetents{ "", "", "", "", "", "", "", "8", "",
                                            "", "", "", "", "", "", "", "" };
const std::vector<const char*> typeDetents{ "LP", "BP", "HP", "BR", "OFF" };

Control knob (const char* name, int x, int y, const char* parameter, float defaultValue, const char* caption,
              const char* low, const char* high)
{
    Control c{
        "Knob", name, Look::knob, {}, knobFrames, { x, y, 37, 35 }, parameter, {}, {}, {}, defaultValue
    };
    c.caption = caption;
    c.lowText = low;
    c.highText = high;
    return c;
}

Control steppedKnob (const char* name, int x, int y, const char* parameter, int frames, const char* caption,
                     const std::vector<const char*>& detents)
{
    Control c{ "Switch",  name, Look::steppedKnob,         {}, frames, { x, y, 37, 35 },
               parameter, {},   { { "style", "Rotary" } }, {}, 1.0f };
    c.caption = caption;
    c.detents = detents;
    if (frames == bitsFrames)
    {
        c.lowText = "1";
        c.highText = "OFF";
    }
    return c;
}

Control lever (const char* name, int x, int y, const char* parameter)
{
    return { "Switch", name, Look::lever, {}, 2, { x, y, 27, 59 }, parameter, {}, { { "style", "Vertical" } },
             {},       0.0f };
}

Control lampButton (const char* name, int x, int y, int height, const char* parameter, float defaultValue,
                    const char* caption)
{
    Control c{ "ToggleButton",
               name,
               Look::lampButton,
               {},
               4,
               { x, y, 37, height },
               parameter,
               {},
               { { "style", "3D" }, { "clickEvent", "onRelease" } },
               {},
               defaultValue };
    c.caption = caption;
    return c;
}

Control pushButton (const char* name, juce::Rectangle<int> bounds, const char* click, const char* ctrlClick,
                    bool repeats, Icon icon)
{
    Control c{ "Button",
               name,
               Look::pushButton,
               {},
               2,
               bounds,
               nullptr,
               { { "onClick", click }, { "onClickWithCtrl", ctrlClick } },
               {},
               {},
               0.0f };
    if (repeats)
        c.attributes.push_back ({ "autorepeat", "yes" });
    c.icon = icon;
    return c;
}

Control animation (const char* name, Look look, const char* resource, int frames, juce::Rectangle<int> bounds)
{
    return { "Animation", name, look, resource, frames, bounds, nullptr, {}, {}, {}, 0.0f };
}

std::vector<Control> makeControls()
{
    std::vector<Control> controls{
        pushButton ("OptionsButton", { 78, 14, 38, 43 }, "Options", "About", true, Icon::gear),
        pushButton ("PrevPresetButton", { 297, 15, 33, 42 }, "Select previous preset", "Copy current preset",
                    true, Icon::previous),
        pushButton ("NextPresetButton", { 335, 16, 34, 41 }, "Select next preset", "Paste copied preset",
                    true, Icon::next),
        pushButton ("BrowsePresetButton", { 372, 17, 33, 40 }, "Browse presets", "Store current preset",
                    false, Icon::list),
        { "Display",
          "PresetNameDisplay",
          Look::display,
          FaceLayout::fontResource,
          1,
          { 130, 28, 153, 13 },
          "Current Preset Name",
          {},
          { { "caretColour", "FFBEF6FF" }, { "backgroundColour", "FF232224" } },
          { { "firstASCII", " " }, { "fontHeight", "9" } },
          0.0f },
        animation ("LeftVUMeter", Look::meter, "LeftVUMeterAnimation.png", meterFrames, { 551, 99, 34, 89 }),
        animation ("RightVUMeter", Look::meter, "RightVUMeterAnimation.png", meterFrames,
                   { 585, 100, 37, 89 }),
        knob ("OutputVolumeKnob", 566, 50, "Output Volume", 0.5f, "OUTPUT", "-inf", "+12"),
        knob ("PreampKnob", 20, 15, "Preamp", 0.0f, "PREAMP", "0", "+48"),
        steppedKnob ("LeftBitsKnob", 86, 83, "Left Bits", bitsFrames, "BITS", bitsDetents),
        knob ("LeftFrequencyKnob", 157, 84, "Left Frequency", 1.0f, "RATE", "44", "44.1k"),
        lampButton ("LeftAALPFButton", 216, 82, 39, "Left Link Freq", 0.0f, "ANTI-ALIAS"),
        lever ("LeftFilterOrderSwitch", 268, 67, "Left Filter Order"),
        steppedKnob ("LeftFilterTypeKnob", 311, 84, "Left Filter Type", typeFrames, "TYPE", typeDetents),
        knob ("LeftCutoffKnob", 370, 83, "Left Cutoff", 1.0f, "CUTOFF", "14", "12k"),
        knob ("LeftResoKnob", 426, 83, "Left Reso/Bandwidth", 0.0f, "RESO", "0", "100"),
        steppedKnob ("RightBitsKnob", 86, 149, "Right Bits", bitsFrames, "BITS", bitsDetents),
        knob ("RightFrequencyKnob", 157, 149, "Right Frequency", 1.0f, "RATE", "44", "44.1k"),
        lampButton ("RightAALPFButton", 217, 149, 39, "Right Link Freq", 0.0f, "ANTI-ALIAS"),
        lever ("RightFilterOrderSwitch", 268, 134, "Right Filter Order"),
        steppedKnob ("RightFilterTypeKnob", 310, 149, "Right Filter Type", typeFrames, "TYPE", typeDetents),
        knob ("RightCutoffKnob", 370, 149, "Right Cutoff", 1.0f, "CUTOFF", "14", "12k"),
        knob ("RightResoKnob", 427, 149, "Right Reso/Bandwidth", 0.0f, "RESO", "0", "100"),
        lampButton ("LinkParamsButton", 499, 147, 42, "Link Channels", 1.0f, "LINK"),
        knob ("FXKnob", 498, 83, "FX", 1.0f, "MIX", "DRY", "WET"),
        animation ("LeftChannelProcessLed", Look::lamp, "LeftChannelProcessLed.png", 2, { 22, 78, 34, 13 }),
        animation ("RightChannelProcessLed", Look::lamp, "RightChannelProcessLed.png", 2,
                   { 23, 143, 34, 13 }),
    };
    return controls;
}

} // namespace

const std::vector<FaceLayout::Control>& FaceLayout::getControls()
{
    static const std::vector<Control> controls = []
    {
        auto made = makeControls();
        for (auto& c : made)
            if (c.resource.isEmpty())
                c.resource = juce::String (c.name) + ".png";
        return made;
    }();
    return controls;
}

juce::String FaceLayout::createSkinXml()
{
    juce::XmlElement root ("PluginEditor");
    root.setAttribute ("background", backgroundResource);
    root.setAttribute ("application", "Vantrice");
    for (const auto& c : getControls())
    {
        auto* element = root.createNewChildElement (c.tag);
        element->setAttribute ("name", c.name);
        for (const auto& a : c.attributes)
            element->setAttribute (a.name, a.value);
        if (c.parameter != nullptr)
        {
            auto* link = element->createNewChildElement ("links")->createNewChildElement ("link");
            link->setAttribute ("as", "connectedTo");
            link->setAttribute ("param", c.parameter);
        }
        if (!c.actions.empty())
        {
            auto* actions = element->createNewChildElement ("actions");
            for (const auto& a : c.actions)
            {
                auto* action = actions->createNewChildElement ("action");
                action->setAttribute ("type", a.name);
                action->setAttribute ("event", a.value);
            }
        }
        auto* gfx = element->createNewChildElement ("gfx");
        gfx->setAttribute ("resource", c.resource);
        if (c.look != Look::display)
            gfx->setAttribute ("framesNum", c.frames);
        for (const auto& a : c.gfxAttributes)
            gfx->setAttribute (a.name, a.value);
        auto* pos = element->createNewChildElement ("pos");
        pos->setAttribute ("left", c.bounds.getX());
        pos->setAttribute ("top", c.bounds.getY());
        auto* size = element->createNewChildElement ("size");
        size->setAttribute ("width", c.bounds.getWidth());
        size->setAttribute ("height", c.bounds.getHeight());
    }
    juce::XmlElement::TextFormat format;
    format.lineWrapLength = 120;
    format.newLineChars = "\n";
    return root.toString (format);
}
