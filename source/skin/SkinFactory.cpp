#include "skin/SkinFactory.h"

#include "skin/GFXAnimation.h"
#include "skin/GFXButton.h"
#include "skin/GFXDisplay.h"
#include "skin/GFXDisplayFloat.h"
#include "skin/GFXKnob.h"
#include "skin/GFXMultiStateButton.h"
#include "skin/GFXPanel.h"
#include "skin/GFXRocker.h"
#include "skin/GFXSwitch.h"
#include "skin/GFXToggleButton.h"
#include "skin/ModWheel.h"
#include "skin/MusicKeyboard.h"
#include "skin/NoteDisplay.h"
#include "skin/NumericDisplay.h"
#include "skin/PatternNumberDisplay.h"
#include "skin/PitchBender.h"
#include "skin/SkinXml.h"

namespace
{
template <typename ControlClass>
SkinFactory::Control make (const juce::String& name)
{
    auto control = std::make_unique<ControlClass> (name);
    SkinFactory::Control made;
    made.controller = control.get();
    made.view = control.get();
    made.component = std::move (control);
    return made;
}

struct Entry
{
    const char* tag;
    bool panelOnly;
    SkinFactory::Control (*create) (const juce::String& name); // null: not made by this build
};

// Every tag a skin may use, in the order they are tried.
const Entry entries[] = {
    { "Knob", false, make<GFXKnob> },
    { "Switch", false, make<GFXSwitch> },
    { "Animation", false, make<GFXAnimation> },
    { "Button", false, make<GFXButton> },
    { "ToggleButton", false, make<GFXToggleButton> },
    { "MultiStateButton", false, make<GFXMultiStateButton> },
    { "Display", false, make<GFXDisplay> },
    { "DisplayFloat", false, make<GFXDisplayFloat> },
    { "Rocker", false, make<GFXRocker> },
    { "Panel", false, make<GFXPanel> },
    { "NumericDisplay", false, make<NumericDisplay> },
    { "PatternNumberDisplay", false, make<PatternNumberDisplay> },
    { "NoteDisplay", true, make<NoteDisplay> },
    { "MusicKeyboard", true, make<MusicKeyboard> },
    { "PitchBender", true, make<PitchBender> },
    { "ModWheel", true, make<ModWheel> },
    { "ParameterModulator", true, nullptr }, // not made: its matrix is left out of this product
};
} // namespace

SkinFactory::Control SkinFactory::create (const juce::String& tag, const juce::String& name, Place place)
{
    for (const auto& entry : entries)
        if (tag.equalsIgnoreCase (entry.tag))
        {
            if (entry.create == nullptr || (entry.panelOnly && place != Place::panel))
                return {};
            return entry.create (name);
        }
    return {};
}

void SkinFactory::buildControls (const juce::XmlElement& parent, Place place,
                                 const std::function<void (Control&)>& adopt,
                                 const std::function<void (Control&, const juce::XmlElement&)>& load)
{
    for (auto* child : parent.getChildIterator())
    {
        auto made = create (child->getTagName(), SkinXml::getAttribute (*child, "name"), place);
        if (made.controller == nullptr)
            continue;
        adopt (made);
        load (made, *child);
    }
}

juce::StringArray SkinFactory::getTags()
{
    juce::StringArray tags;
    for (const auto& entry : entries)
        tags.add (entry.tag);
    return tags;
}

bool SkinFactory::isMade (const juce::String& tag)
{
    for (const auto& entry : entries)
        if (tag.equalsIgnoreCase (entry.tag))
            return entry.create != nullptr;
    return false;
}
