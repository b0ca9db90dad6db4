#include "windows/StatusBar.h"

#include "windows/DefaultLookAndFeel.h"

namespace
{
constexpr int textInset = 5;
}

StatusBar::StatusBar() { clearMessage(); }

void StatusBar::showMessage (const juce::String& newText, int newPriority, int timeoutMilliseconds)
{
    if (newText == text || priority > newPriority)
        return;
    priority = newPriority;
    text = newText;
    if (timeoutMilliseconds == 0)
        stopTimer();
    else
        startTimer (timeoutMilliseconds);
    repaint();
}

void StatusBar::clearMessage()
{
    priority = 0;
    if (text.isEmpty())
        return;
    text.clear();
    stopTimer();
    repaint();
}

void StatusBar::lookAndFeelChanged()
{
    if (auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel()))
    {
        font = look->getStatusBarFont();
        setSize (getWidth(), look->getStatusBarHeight());
    }
    repaint();
}

void StatusBar::paint (juce::Graphics& g)
{
    g.setColour (findColour (DefaultLookAndFeel::statusBarBackgroundColourId));
    g.fillRect (g.getClipBounds());
    g.setColour (findColour (DefaultLookAndFeel::statusBarTextColourId));
    g.setFont (font);
    g.drawText (text, textInset, 0, getWidth(), getHeight(), juce::Justification::centredLeft, false);
}
