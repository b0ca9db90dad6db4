#include "windows/AlertWindow.h"

#include "windows/DefaultLookAndFeel.h"

namespace
{
constexpr int messageGap = 10;
}

namespace Zelkora
{
AlertWindow::AlertWindow (const juce::String& windowTitle, const juce::String& message, Caller* callerToTell)
    : caller (callerToTell)
{
    setTitle (windowTitle);
    buttonRow.setAlignment (ComponentRow::end);
    messageLabel.setText (message, juce::dontSendNotification);
    messageLabel.setJustificationType (juce::Justification::centredLeft);
    addAndMakeVisible (messageLabel);
    addAndMakeVisible (buttonRow);
    lookAndFeelChanged();
}

std::unique_ptr<AlertWindow> AlertWindow::createYesNo (const juce::String& windowTitle,
                                                       const juce::String& message, Caller* callerToTell)
{
    auto window = std::make_unique<AlertWindow> (windowTitle, message, callerToTell);
    window->addButton ("Yes", 1);
    window->addButton ("No", 0);
    return window;
}

std::unique_ptr<AlertWindow> AlertWindow::createYesCancel (const juce::String& windowTitle,
                                                           const juce::String& message, Caller* callerToTell)
{
    auto window = std::make_unique<AlertWindow> (windowTitle, message, callerToTell);
    window->addButton ("Yes", 1);
    window->addButton ("Cancel", 0);
    return window;
}

void AlertWindow::addButton (const juce::String& text, int result)
{
    auto* button = buttons.add (new TextButtonEx (text));
    button->juce::Button::addListener (this);
    buttonRow.addAndMakeVisible (button);
    results.add (result);
    updateSize();
    resized();
}

void AlertWindow::lookAndFeelChanged()
{
    // Not the window's own: an alert's close button stays undressed, without a size; its answers close it.
    if (auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel()))
    {
        messageLabel.setFont (look->getNormalFont());
        updateSize();
    }
}

void AlertWindow::updateSize()
{
    const auto font = messageLabel.getFont();
    // The message is one line, however long.
    const int width = juce::jmax ((int) std::ceil (font.getStringWidthFloat (messageLabel.getText())),
                                  buttonRow.getWidth());
    const int height = (int) std::ceil (font.getHeight()) + buttonRow.getHeight() + messageGap;
    setContentSize (width, height);
}

void AlertWindow::resized()
{
    WindowComponent::resized();
    auto area = getContentArea();
    auto strip = area.removeFromBottom (buttonRow.getHeight());
    area.removeFromBottom (messageGap);
    buttonRow.setTopLeftPosition (strip.getRight() - buttonRow.getWidth(), strip.getY());
    messageLabel.setBounds (area);
}

void AlertWindow::childBoundsChanged (juce::Component* child)
{
    // The answers take their size from the look and feel after the window has taken its own.
    if (child == &buttonRow && !buttonRow.getBounds().isEmpty())
    {
        updateSize();
        resized();
    }
}

void AlertWindow::buttonClicked (juce::Button* button)
{
    if (button == &getCloseButton())
    {
        hide();
        return;
    }
    const int index = buttons.indexOf (dynamic_cast<TextButtonEx*> (button));
    if (index < 0)
        return;
    hide();
    if (caller != nullptr)
        caller->alertWindowFinished (this, results[index]);
}
} // namespace Zelkora
