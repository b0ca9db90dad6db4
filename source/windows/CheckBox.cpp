#include "windows/CheckBox.h"

#include "common/ListenerWalk.h"
#include "windows/DefaultLookAndFeel.h"

CheckBox::CheckBox()
{
    button.setClickingTogglesState (true);
    button.addListener (this);
    addAndMakeVisible (button);
    layout();
}

CheckBox::~CheckBox() { button.removeListener (this); }

void CheckBox::setText (const juce::String& newText)
{
    if (newText == text)
        return;
    text = newText;
    layout();
    repaint();
}

void CheckBox::setToggleState (bool state) { button.setToggleState (state, juce::dontSendNotification); }

void CheckBox::addListener (Listener* listener)
{
    if (listener != nullptr)
        listeners.addIfNotAlreadyThere (listener);
}

void CheckBox::removeListener (Listener* listener) { listeners.removeFirstMatchingValue (listener); }

void CheckBox::layout()
{
    const int width = gap + juce::roundToInt (font.getStringWidthFloat (text)) + button.getWidth();
    const int height = juce::jmax (button.getHeight(), (int) std::ceil (font.getHeight()));
    setSize (width, height);
    button.setTopLeftPosition (0, (height - button.getHeight()) / 2);
}

void CheckBox::lookAndFeelChanged()
{
    if (auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel()))
    {
        button.setImages (true, false, true, look->getCheckBoxOffImage(), 1.0f, {}, {}, 1.0f, {},
                          look->getCheckBoxOnImage(), 1.0f, {});
        font = look->getCheckBoxFont();
        gap = look->getCheckBoxGap();
    }
    layout();
}

void CheckBox::paint (juce::Graphics& g)
{
    const int x = button.getRight() + gap;
    g.setColour (juce::Colours::black);
    g.setFont (font);
    g.drawText (text, x, 0, getWidth() - x, getHeight(), juce::Justification::centredLeft, false);
}

void CheckBox::buttonClicked (juce::Button* clicked)
{
    if (clicked == &button)
        callListenersBackwards (listeners, [this] (Listener& l) { l.checkBoxChanged (this); });
}
