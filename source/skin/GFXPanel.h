#pragma once

#include "skin/BaseGFXController.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** Groups controls: reads a nested list of control elements, moves them by its offsets and hands its
    listeners on to them. It takes no clicks itself but lets them through to its children. */
class GFXPanel : public BaseGFXController, public juce::Component
{
public:
    explicit GFXPanel (const juce::String& name = {});
    ~GFXPanel() override;

    virtual void showWhenTrue (Parameter* p);
    virtual void showWhenFalse (Parameter* p);

    /** As every control's, and then on every control of the panel. */
    void addListener (Listener* listener) override;
    void loadFromXml (const juce::XmlElement& element, ParameterManager& parameters, EventsMap& events,
                      BasePluginEditor* editor) override;
    void paint (juce::Graphics& g) override;

    /** Takes a control made in code, as the skin's own are taken: owned here, shown, last child. */
    void addControl (std::unique_ptr<juce::Component> component, GUIController& controller);

    bool isTransparent() const noexcept { return transparent; }
    void setTransparent (bool shouldBeTransparent);
    juce::Array<GUIController*> getControllers() const;

private:
    juce::CriticalSection controllersLock;
    juce::Array<GUIController*> controllers;
    juce::OwnedArray<juce::Component> components;
    bool transparent = false;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (GFXPanel)
};
