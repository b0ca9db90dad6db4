#include "windows/RadioButtons.h"

#include "common/ListenerWalk.h"
#include "windows/DefaultLookAndFeel.h"

namespace
{
const juce::Colour frameColour (0xff7c7c7c);
// The page's colour: the heading's patch opens a gap in the frame.
const juce::Colour pageColour (0xffc5c5c5);
} // namespace

RadioButtons::RadioButtons (const juce::String& titleToUse, const juce::StringArray& labelsToUse)
    : title (titleToUse)
    , labels (labelsToUse)
{
    for (int row = 0; row < labels.size(); ++row)
    {
        auto* button = buttons.add (new juce::ImageButton ("RadioButton" + juce::String (row)));
        button->setClickingTogglesState (true);
        button->setTriggeredOnMouseDown (true);
        button->addListener (this);
        addAndMakeVisible (button);
    }
    lookAndFeelChanged();
}

RadioButtons::~RadioButtons()
{
    for (auto* button : buttons)
        button->removeListener (this);
}

void RadioButtons::setSelectedIndex (int index, bool notify)
{
    selectedIndex = juce::isPositiveAndBelow (index, labels.size()) ? index : -1;
    for (int row = 0; row < buttons.size(); ++row)
        buttons[row]->setToggleState (row == selectedIndex, juce::dontSendNotification);
    if (notify)
        notifyListeners();
    selectionChanged();
}

void RadioButtons::addListener (Listener* listener)
{
    if (listener != nullptr)
        listeners.addIfNotAlreadyThere (listener);
}

void RadioButtons::removeListener (Listener* listener) { listeners.removeFirstMatchingValue (listener); }

void RadioButtons::notifyListeners()
{
    callListenersBackwards (listeners, [this] (Listener& l) { l.radioButtonsChanged (this); });
}

void RadioButtons::lookAndFeelChanged()
{
    // Another look leaves the group as it is: dressed, or on its defaults.
    if (auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel()))
    {
        titleFont = look->getRadioTitleFont();
        labelFont = look->getRadioLabelFont();
        titleInset = look->getRadioTitleInset();
        titlePadding = look->getRadioTitlePadding();
        buttonInset = look->getRadioButtonInset();
        verticalMargin = look->getRadioVerticalMargin();
        rowHeight = look->getRadioRowHeight();
        cornerRadius = look->getRadioCornerRadius();
        labelGap = look->getRadioLabelGap();
        const auto off = look->getRadioOffImage(), on = look->getRadioOnImage();
        for (auto* button : buttons)
            button->setImages (true, false, true, off, 1.0f, {}, {}, 1.0f, {}, on, 1.0f, {});
    }
    layout();
}

void RadioButtons::layout()
{
    const int h = (int) titleFont.getHeight();
    const float titleWidth = titleFont.getStringWidthFloat (title);
    titleArea = { titleInset - titlePadding, 0, juce::roundToInt (titleWidth) + 2 * titlePadding, h };
    listTop = h + verticalMargin;

    int maxW = 0, maxH = 0;
    for (auto* button : buttons)
    {
        maxW = juce::jmax (maxW, button->getWidth());
        maxH = juce::jmax (maxH, button->getHeight());
    }
    for (int row = 0; row < buttons.size(); ++row)
        buttons[row]->setTopLeftPosition (buttonInset + 1,
                                          rowHeight * row + (rowHeight - maxH) / 2 + listTop);

    labelX = buttonInset + labelGap + 1 + maxW;
    float widest = 0.0f;
    for (const auto& label : labels)
        widest = juce::jmax (widest, labelFont.getStringWidthFloat (label));
    labelWidth = (int) widest;

    const int width = juce::jmax (getWidth(), labelWidth + 2 * buttonInset + 2 + labelGap + maxW,
                                  (int) titleWidth + 2 * titleInset);
    setSize (width, rowHeight * labels.size() + 2 * verticalMargin + h);
    sizeChanged();
}

void RadioButtons::resized()
{
    frameArea = getLocalBounds().withTrimmedTop ((int) (titleFont.getHeight() * 0.5f));
    repaint();
}

void RadioButtons::paint (juce::Graphics& g)
{
    // Half a pixel in, so that the one-pixel line falls on whole pixels.
    g.setColour (frameColour);
    g.drawRoundedRectangle (frameArea.toFloat().reduced (0.5f), cornerRadius, 1.0f);
    g.setColour (pageColour);
    g.fillRect (titleArea);

    g.setColour (juce::Colours::black);
    g.setFont (titleFont);
    g.drawText (title, titleInset, 0, getWidth() - 2 * titleInset, titleArea.getHeight(),
                juce::Justification::centredLeft, false);
    g.setFont (labelFont);
    for (int row = 0; row < labels.size(); ++row)
        g.drawText (labels[row], labelX, rowHeight * row + listTop, labelWidth, rowHeight,
                    juce::Justification::centredLeft, false);
}

void RadioButtons::buttonClicked (juce::Button* button)
{
    // A click on the selected row leaves it selected and tells the listeners once more.
    const int row = buttons.indexOf (static_cast<juce::ImageButton*> (button));
    if (row >= 0)
        setSelectedIndex (row, true);
}
