#include "skin/BasePluginEditorOldStyle.h"

#include "presets/BasePluginOldStyle.h"
#include "windows/MidiControlComponent.h"
#include "windows/OldStylePresetBrowserWindow.h"
#include "windows/OptionsWindow.h"
#include "windows/PresetsSettingsComponent.h"

BasePluginEditorOldStyle::BasePluginEditorOldStyle (BasePluginOldStyle& owner, const juce::String& skinKey)
    : BasePluginEditor (owner, skinKey)
    , oldStylePlugin (owner)
{
    presetNameDisplay = dynamic_cast<GFXDisplay*> (findComponentByName (*this, "PresetNameDisplay"));
    if (presetNameDisplay != nullptr)
        presetNameDisplay->addDisplayListener (this);

    // Maps of the older extension open too.
    midiControlComponent->setExtension (owner.getMapExtension());
    midiControlComponent->setWildcards (owner.getMapWildcards());

    presetBrowserWindow = std::make_unique<OldStylePresetBrowserWindow> (owner);
    presetBrowserWindow->setSize (OldStylePresetBrowserWindow::windowWidth,
                                  OldStylePresetBrowserWindow::windowHeight);
    addChildComponent (*presetBrowserWindow);

    presetsSettings = std::make_unique<PresetsSettingsComponent> (owner);
    presetsSettings->getDefaults().addListener (this);
    optionsWindow->addPage ("Presets", presetsSettings.get(), 0);
}

BasePluginEditorOldStyle::~BasePluginEditorOldStyle()
{
    if (presetNameDisplay != nullptr)
        presetNameDisplay->removeDisplayListener (this);
    presetsSettings->getDefaults().removeListener (this);
    optionsWindow->getTabs().removeTab (optionsWindow->getTabs().getTabNames().indexOf ("Presets"));
    presetsSettings.reset();
    presetBrowserWindow.reset();
}

void BasePluginEditorOldStyle::handleEditorEvent (GUIController* controller, int uid)
{
    if (uid == browseEvent)
    {
        presetBrowserWindow->showCentred();
        return;
    }
    BasePluginEditor::handleEditorEvent (controller, uid);
}

void BasePluginEditorOldStyle::radioButtonsChanged (RadioButtons* source)
{
    if (presetsSettings != nullptr && source == &presetsSettings->getDefaults())
        showDefaultSettingsNote ("Default Presets");
}

void BasePluginEditorOldStyle::displayTextChanged (GFXDisplay* display)
{
    if (display == presetNameDisplay && display != nullptr)
        oldStylePlugin.setPresetName (oldStylePlugin.getCurrentPreset(), display->getText());
}
