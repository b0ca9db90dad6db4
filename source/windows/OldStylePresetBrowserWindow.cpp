#include "windows/OldStylePresetBrowserWindow.h"

#include "common/EmbeddedFonts.h"
#include "presets/BasePluginOldStyle.h"
#include "windows/DefaultLookAndFeel.h"
#include "windows/GroupListColumn.h"
#include "windows/List.h"
#include "windows/OldStylePresetsBrowser.h"
#include "windows/TextButtonEx.h"

namespace
{
// The side buttons stand this far left of the browser.
constexpr int sideGap = 5;
// The labels of the file row: plain text, right-aligned in a field 20 high that leaves the label's border
// twice on each side of the text.
constexpr float labelTextHeight = 13.0f;
constexpr int labelHeight = 20, labelBorders = 4;
// The side buttons' icons come from the normal set.
constexpr int iconSize = 0;
// "Up" and "Down" repeat while held: after a second, then ten times a second.
constexpr int repeatDelay = 1000, repeatInterval = 100;

juce::File existingFolder (const juce::String& path)
{
    if (path.isEmpty() || !juce::File::isAbsolutePath (path))
        return {};
    const juce::File folder (path);
    return folder.isDirectory() ? folder : juce::File();
}
} // namespace

OldStylePresetBrowserWindow::OldStylePresetBrowserWindow (BasePluginOldStyle& pluginToShow)
    : plugin (pluginToShow)
    , browser (std::make_unique<OldStylePresetsBrowser> (this, pluginToShow))
{
    setTitle ("Preset Browser");
    sideButtons.setVertical (true);
    fileRow.setAlignment (ComponentRow::centre);

    const auto makeIconButton =
        [this] (std::unique_ptr<juce::ImageButton>& field, const char* name, const char* tooltip)
    {
        field = std::make_unique<juce::ImageButton> (name);
        field->setTooltip (tooltip);
        field->addListener (this);
        sideButtons.addAndMakeVisible (*field);
    };
    makeIconButton (addGroupButton, "Add Group", "Add group");
    makeIconButton (removeGroupButton, "Rem Group", "Remove empty group");
    makeIconButton (copyButton, "Copy", "Copy current preset");
    makeIconButton (pasteButton, "Paste", "Paste copied preset");
    makeIconButton (previousButton, "Up", "Select previous preset");
    makeIconButton (nextButton, "Down", "Select next preset");
    previousButton->setRepeatSpeed (repeatDelay, repeatInterval, -1);
    nextButton->setRepeatSpeed (repeatDelay, repeatInterval, -1);

    const auto makeLabel = [this] (juce::Label& label, const char* text)
    {
        label.setText (text, juce::dontSendNotification);
        label.setFont (EmbeddedFonts::make (labelTextHeight));
        label.setJustificationType (juce::Justification::centredRight);
        fitLabel (label);
        fileRow.addAndMakeVisible (label);
    };
    const auto makeTextButton =
        [this] (std::unique_ptr<TextButtonEx>& field, const char* text, const char* tooltip)
    {
        field = std::make_unique<TextButtonEx> (text);
        // A text button tells its click's label as its tooltip; the click raises no event of the face.
        field->setAction ("onClick", -1, tooltip);
        field->setTooltip (tooltip);
        field->juce::Button::addListener (this);
        fileRow.addAndMakeVisible (*field);
    };
    makeLabel (presetLabel, "Preset");
    makeTextButton (loadPresetButton, "Load", "Load preset");
    makeTextButton (savePresetButton, "Save", "Save current preset");
    makeLabel (bankLabel, "Bank");
    makeTextButton (loadBankButton, "Load", "Load preset bank");
    makeTextButton (saveBankButton, "Save", "Save current preset bank");

    addAndMakeVisible (*browser);
    addAndMakeVisible (sideButtons);
    addAndMakeVisible (fileRow);

    auto& parameters = plugin.getParameterManager();
    parameters.addDeferredListener (BasePluginOldStyle::currentPresetNumberId, this);
    parameters.addDeferredListener (BasePluginOldStyle::currentPresetNameId, this);

    setSize (windowWidth, windowHeight);
    lookAndFeelChanged();
    // The group buttons start off rather than as built: enabled with no group selected, they would act
    // on nothing. The first news of the current preset selects a group and sets them.
    updateButtons();
}

OldStylePresetBrowserWindow::~OldStylePresetBrowserWindow()
{
    auto& parameters = plugin.getParameterManager();
    parameters.removeDeferredListener (BasePluginOldStyle::currentPresetNumberId, this);
    parameters.removeDeferredListener (BasePluginOldStyle::currentPresetNameId, this);
    for (auto* button : std::initializer_list<juce::Button*>{
             addGroupButton.get(), removeGroupButton.get(), copyButton.get(), pasteButton.get(),
             previousButton.get(), nextButton.get(), loadPresetButton.get(), savePresetButton.get(),
             loadBankButton.get(), saveBankButton.get() })
        button->removeListener (this);
}

void OldStylePresetBrowserWindow::setDocked (bool shouldBeDocked)
{
    docked = shouldBeDocked;
    setCornerStyle (docked ? 0 : 1);
    setTitleBarVisible (!docked);
    setBorderVisible (!docked);
    setShadowSide (docked ? topShadow : noShadow);
    resized();
}

void OldStylePresetBrowserWindow::updateButtons()
{
    if (addGroupButton == nullptr || removeGroupButton == nullptr)
        return;
    auto* groups = browser->getGroupColumn();
    const bool oneGroup = groups != nullptr && groups->getList().getNumSelectedRows() == 1;
    addGroupButton->setEnabled (oneGroup);
    removeGroupButton->setEnabled (oneGroup && plugin.getGroupSize (browser->getSelectedGroup()) == 0);
}

void OldStylePresetBrowserWindow::parameterChanged (Parameter* parameter)
{
    if (parameter->getIndex() == BasePluginOldStyle::currentPresetNumberId)
    {
        const int preset = parameter->getIntValue();
        const int group = plugin.getGroupOfPreset (preset);
        const int start = plugin.getGroupStart (group);
        browser->selectPresetInColumns (group, start == -1 ? -1 : preset - start);
    }
    else if (parameter->getIndex() == BasePluginOldStyle::currentPresetNameId)
    {
        // A new name, or new content of the current slot.
        browser->updateColumns();
    }
}

void OldStylePresetBrowserWindow::askForFile (FileDialog::Mode mode, const juce::String& dialogTitle,
                                              const juce::String& patterns,
                                              std::function<void (const juce::File&)> onChosen)
{
    FileDialog::Request request;
    request.mode = mode;
    request.title = dialogTitle;
    request.startFolder = existingFolder (plugin.getRecentDirectory());
    request.patterns = patterns;
    request.warnAboutOverwriting = mode == FileDialog::Mode::save;
    fileDialog = FileDialog::create();
    fileDialog->ask (*this, request, std::move (onChosen));
}

void OldStylePresetBrowserWindow::buttonClicked (juce::Button* button)
{
    // A dialog's answer comes later: what is current is read when it comes.
    if (button == addGroupButton.get())
    {
        plugin.insertGroup (browser->getSelectedGroup());
        browser->updateColumns();
    }
    else if (button == removeGroupButton.get())
    {
        plugin.removeEmptyGroup (browser->getSelectedGroup());
        browser->updateColumns();
    }
    else if (button == copyButton.get())
        plugin.copyCurrentPreset();
    else if (button == pasteButton.get())
        plugin.pasteCopiedPreset();
    else if (button == previousButton.get())
        plugin.selectPreviousPreset();
    else if (button == nextButton.get())
        plugin.selectNextPreset();
    else if (button == loadPresetButton.get())
        askForFile (FileDialog::Mode::open, "Load single preset", plugin.getPresetWildcards(),
                    [this] (const juce::File& file)
                    { plugin.loadPresetFile (file, plugin.getCurrentPreset()); });
    else if (button == savePresetButton.get())
        askForFile (FileDialog::Mode::save, "Save current settings as preset",
                    "*" + plugin.getPresetExtension(),
                    [this] (const juce::File& file)
                    {
                        const auto extension = plugin.getPresetExtension();
                        plugin.savePresetFile (
                            file.hasFileExtension (extension) ? file : file.withFileExtension (extension),
                            plugin.getCurrentPreset());
                    });
    else if (button == loadBankButton.get())
        askForFile (FileDialog::Mode::open, "Load preset bank", plugin.getBankWildcards(),
                    [this] (const juce::File& file) { plugin.loadBankFile (file); });
    else if (button == saveBankButton.get())
        askForFile (FileDialog::Mode::save, "Save preset bank", "*" + plugin.getBankExtension(),
                    [this] (const juce::File& file)
                    {
                        const auto extension = plugin.getBankExtension();
                        plugin.saveBankFile (
                            file.hasFileExtension (extension) ? file : file.withFileExtension (extension));
                    });
    else
        WindowComponent::buttonClicked (button);
}

void OldStylePresetBrowserWindow::fitLabel (juce::Label& label)
{
    const int textWidth = label.getFont().getStringWidth (label.getText());
    label.setSize (textWidth + labelBorders * label.getBorderSize().getLeft(), labelHeight);
}

void OldStylePresetBrowserWindow::lookAndFeelChanged()
{
    WindowComponent::lookAndFeelChanged();
    if (auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel()))
    {
        look->setButtonIcon (*addGroupButton, DefaultLookAndFeel::addIcon, iconSize);
        look->setButtonIcon (*removeGroupButton, DefaultLookAndFeel::removeIcon, iconSize);
        look->setButtonIcon (*copyButton, DefaultLookAndFeel::copyIcon, iconSize);
        look->setButtonIcon (*pasteButton, DefaultLookAndFeel::pasteIcon, iconSize);
        look->setButtonIcon (*previousButton, DefaultLookAndFeel::upIcon, iconSize);
        look->setButtonIcon (*nextButton, DefaultLookAndFeel::downIcon, iconSize);
        for (auto* label : { &presetLabel, &bankLabel })
        {
            label->setFont (look->getNormalFont());
            fitLabel (*label);
        }
    }
    resized();
}

void OldStylePresetBrowserWindow::resized()
{
    WindowComponent::resized();
    const auto area = getContentArea();
    sideButtons.setTopLeftPosition (area.getTopLeft());
    fileRow.setTopLeftPosition (area.getRight() - fileRow.getWidth(), area.getBottom() - fileRow.getHeight());
    browser->setBounds (
        area.withTrimmedLeft (sideButtons.getWidth() + sideGap).withTrimmedBottom (fileRow.getHeight()));
}

// The rows take their size from their buttons, which learn theirs from the look and feel after the window
// has laid itself out: the layout follows.
void OldStylePresetBrowserWindow::childBoundsChanged (juce::Component* child)
{
    if (child == &sideButtons || child == &fileRow)
        resized();
}
