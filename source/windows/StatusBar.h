#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** The line of messages at the foot of the editor. A message stays until it times out, is cleared, or is
    replaced by one of at least its priority; a message of lower priority is dropped, not queued. */
class StatusBar final : public juce::Component, private juce::Timer
{
public:
    StatusBar();

    /** Shows `text` unless it is on show already or a message of higher priority stands. A timeout of 0
        keeps the message until it is replaced or cleared. */
    void showMessage (const juce::String& text, int priority, int timeoutMilliseconds);
    void clearMessage();

    const juce::String& getText() const noexcept { return text; }
    int getPriority() const noexcept { return priority; }

    void lookAndFeelChanged() override;
    void paint (juce::Graphics& g) override;
    /** A message's time is up. */
    void timerCallback() override { clearMessage(); }

private:
    juce::Font font;
    juce::String text;
    int priority = 0;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (StatusBar)
};
