#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** A check box with its text on the right. The component is as wide as box, gap and text together;
    only a click on the box changes it. */
class CheckBox : public juce::Component, public juce::Button::Listener
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void checkBoxChanged (CheckBox* source) = 0;
    };

    CheckBox();
    ~CheckBox() override;

    void setText (const juce::String& newText);
    const juce::String& getText() const noexcept { return text; }
    bool getToggleState() const noexcept { return button.getToggleState(); }
    /** Tells nobody. */
    void setToggleState (bool state);
    void addListener (Listener* listener);
    void removeListener (Listener* listener);
    juce::ImageButton& getButton() noexcept { return button; }

    void lookAndFeelChanged() override;
    void paint (juce::Graphics& g) override;
    void buttonClicked (juce::Button* clicked) override;

private:
    void layout();

    juce::Array<Listener*> listeners;
    juce::ImageButton button;
    juce::String text;
    juce::Font font;
    int gap = 0;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (CheckBox)
};
