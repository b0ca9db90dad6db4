#pragma once

#include "windows/ComponentRow.h"
#include "windows/TextButtonEx.h"
#include "windows/WindowComponent.h"

namespace Zelkora
{
/** A question inside the editor: a message and a row of answer buttons. It returns at once; the answer
    reaches its caller later. Its owner keeps it, and replaces it (deleting the old one) at its next
    question: a window is never deleted from inside its own answer. */
class AlertWindow : public WindowComponent
{
public:
    class Caller
    {
    public:
        virtual ~Caller() = default;
        virtual void alertWindowFinished (AlertWindow* window, int result) = 0;
    };

    AlertWindow (const juce::String& windowTitle, const juce::String& message, Caller* callerToTell);

    /** "Yes" (1) and "No" (0). */
    static std::unique_ptr<AlertWindow> createYesNo (const juce::String& windowTitle,
                                                     const juce::String& message, Caller* callerToTell);
    /** "Yes" (1) and "Cancel" (0). */
    static std::unique_ptr<AlertWindow> createYesCancel (const juce::String& windowTitle,
                                                         const juce::String& message, Caller* callerToTell);

    void addButton (const juce::String& text, int result);
    int getNumButtons() const noexcept { return buttons.size(); }
    TextButtonEx* getButton (int index) const noexcept { return buttons[index]; }
    const juce::Label& getMessageLabel() const noexcept { return messageLabel; }

    bool isDimmingBackground() override { return true; }
    void lookAndFeelChanged() override;
    void resized() override;
    void childBoundsChanged (juce::Component* child) override;
    void buttonClicked (juce::Button* button) override;

private:
    void updateSize();

    ComponentRow buttonRow;
    juce::OwnedArray<TextButtonEx> buttons;
    juce::Array<int> results;
    juce::Label messageLabel;
    Caller* caller = nullptr;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (AlertWindow)
};
} // namespace Zelkora
