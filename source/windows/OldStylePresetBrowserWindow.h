#pragma once

#include "parameters/Parameter.h"
#include "windows/ComponentRow.h"
#include "windows/FileDialog.h"
#include "windows/WindowComponent.h"

class BasePluginOldStyle;
class OldStylePresetsBrowser;
class TextButtonEx;

/** The preset browser's window: the two columns, six buttons at their left that add and remove groups,
    copy, paste and step through the presets, and a row below that loads and saves presets and banks. It
    follows the current preset through the two preset parameters, also while hidden. As a panel docked
    below the editor's face it has square corners, no title bar and no border, and a shadow along its
    top. */
class OldStylePresetBrowserWindow : public WindowComponent, public Parameter::Listener
{
public:
    /** The window as the editor makes it, and the height of the panel that it becomes when docked. */
    static constexpr int windowWidth = 639, windowHeight = 350, panelHeight = 256;

    explicit OldStylePresetBrowserWindow (BasePluginOldStyle& plugin);
    ~OldStylePresetBrowserWindow() override;

    /** Styles the window as a panel below the face, or back as a window of its own. The owner places it. */
    void setDocked (bool shouldBeDocked);
    bool isDocked() const noexcept { return docked; }

    /** The group buttons act on the one selected group: off when there is none; "Rem Group" only for an
        empty one. */
    void updateButtons();

    OldStylePresetsBrowser& getBrowser() const noexcept { return *browser; }
    juce::ImageButton& getAddGroupButton() const noexcept { return *addGroupButton; }
    juce::ImageButton& getRemoveGroupButton() const noexcept { return *removeGroupButton; }
    juce::ImageButton& getCopyButton() const noexcept { return *copyButton; }
    juce::ImageButton& getPasteButton() const noexcept { return *pasteButton; }
    juce::ImageButton& getPreviousButton() const noexcept { return *previousButton; }
    juce::ImageButton& getNextButton() const noexcept { return *nextButton; }
    TextButtonEx& getLoadPresetButton() const noexcept { return *loadPresetButton; }
    TextButtonEx& getSavePresetButton() const noexcept { return *savePresetButton; }
    TextButtonEx& getLoadBankButton() const noexcept { return *loadBankButton; }
    TextButtonEx& getSaveBankButton() const noexcept { return *saveBankButton; }
    const juce::Label& getPresetLabel() const noexcept { return presetLabel; }
    const juce::Label& getBankLabel() const noexcept { return bankLabel; }

    bool isDimmingBackground() override { return true; }
    void parameterChanged (Parameter* parameter) override;
    void buttonClicked (juce::Button* button) override;
    void lookAndFeelChanged() override;
    void resized() override;
    void childBoundsChanged (juce::Component* child) override;

private:
    /** Asks for a file through the dialog seam, starting at the recent folder; `onChosen` hears the
        answer later, if there is one. */
    void askForFile (FileDialog::Mode mode, const juce::String& dialogTitle, const juce::String& patterns,
                     std::function<void (const juce::File&)> onChosen);
    void fitLabel (juce::Label& label);

    BasePluginOldStyle& plugin;
    std::unique_ptr<OldStylePresetsBrowser> browser;
    ComponentRow sideButtons, fileRow;
    std::unique_ptr<juce::ImageButton> addGroupButton, removeGroupButton, copyButton, pasteButton,
        previousButton, nextButton;
    juce::Label presetLabel, bankLabel;
    std::unique_ptr<TextButtonEx> loadPresetButton, savePresetButton, loadBankButton, saveBankButton;
    std::unique_ptr<FileDialog> fileDialog;
    bool docked = false;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (OldStylePresetBrowserWindow)
};
