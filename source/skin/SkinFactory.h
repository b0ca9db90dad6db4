#pragma once

#include "skin/GUIController.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <memory>

/** Makes skin controls from their tags. One table holds every tag a skin may use, in the order tags are
    tried; a tag whose class this build doesn't make is passed over like an unknown one. */
class SkinFactory final
{
public:
    /** Where a control stands: some classes are only made inside a panel. */
    enum class Place
    {
        root,
        panel
    };

    /** A made control: its component (owned until adopted) and its controller side. */
    struct Control
    {
        std::unique_ptr<juce::Component> component;
        juce::Component* view = nullptr;
        GUIController* controller = nullptr;
    };

    /** The control the tag names, named `name`; an empty one for an unknown tag or one that may not
        stand at `place`. */
    static Control create (const juce::String& tag, const juce::String& name, Place place);

    /** Makes the control of each child element of `parent` in document order, named by its attribute
        `name`, skipping the rest. Each one is first handed to `adopt`, which takes its component, then to
        `load`, which reads it from its element and shows it. */
    static void buildControls (const juce::XmlElement& parent, Place place,
                               const std::function<void (Control&)>& adopt,
                               const std::function<void (Control&, const juce::XmlElement&)>& load);

    /** The tags of the table in order, and whether this build makes each. */
    static juce::StringArray getTags();
    static bool isMade (const juce::String& tag);
};
