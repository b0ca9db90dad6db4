#pragma once

#include "skin/BaseGFXController.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** A two-sided momentary control: a press on one half raises that half's event (or its Ctrl event) at
    once, and the control shows that side pressed until the mouse comes up. Its strip has three frames:
    less pressed, at rest, more pressed. */
class GFXRocker : public BaseGFXController, public juce::Component
{
public:
    explicit GFXRocker (const juce::String& name = {});

    void setAction (const juce::String& type, int uid, const juce::String& label) override;
    void loadFromXml (const juce::XmlElement& element, ParameterManager& parameters, EventsMap& events,
                      BasePluginEditor* editor) override;

    void mouseDown (const juce::MouseEvent& e) override;
    void mouseDrag (const juce::MouseEvent& e) override;
    void mouseUp (const juce::MouseEvent& e) override;
    void paint (juce::Graphics& g) override;

    bool isHorizontal() const noexcept { return orientation == 1; }
    int getShownFrame() const noexcept { return showRest ? 1 : frame; }

private:
    bool isMoreSide (juce::Point<int> position) const;

    int orientation = 0; // 0 vertical, 1 horizontal
    int lessUid = -1, moreUid = -1, ctrlLessUid = -1, ctrlMoreUid = -1;
    int frame = 1; // 0 pressed on the less side, 1 at rest, 2 pressed on the more side
    bool showRest = false;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (GFXRocker)
};
