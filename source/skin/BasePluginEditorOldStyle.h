#pragma once

#include "skin/BasePluginEditor.h"
#include "skin/GFXDisplay.h"
#include "windows/RadioButtons.h"

class BasePluginOldStyle;
class OldStylePresetBrowserWindow;
class PresetsSettingsComponent;

/** The editor of a plug-in with a bank of presets: the preset name display renames the current preset,
    the browse button shows the preset browser, and the options gain the "Presets" page. */
class BasePluginEditorOldStyle : public BasePluginEditor,
                                 public GFXDisplayListener,
                                 public RadioButtons::Listener
{
public:
    explicit BasePluginEditorOldStyle (BasePluginOldStyle& plugin, const juce::String& skinKey = "skin.xml");
    ~BasePluginEditorOldStyle() override;

    void displayTextChanged (GFXDisplay* display) override;
    /** The bank of the next start waits for it: the status bar says so. */
    void radioButtonsChanged (RadioButtons* source) override;

    GFXDisplay* getPresetNameDisplay() const noexcept { return presetNameDisplay; }
    PresetsSettingsComponent* getPresetsSettings() const noexcept { return presetsSettings.get(); }
    OldStylePresetBrowserWindow* getPresetBrowserWindow() const noexcept { return presetBrowserWindow.get(); }

protected:
    void handleEditorEvent (GUIController* controller, int uid) override;

    BasePluginOldStyle& oldStylePlugin;
    std::unique_ptr<OldStylePresetBrowserWindow> presetBrowserWindow;
    std::unique_ptr<PresetsSettingsComponent> presetsSettings;
    GFXDisplay* presetNameDisplay = nullptr;

private:
    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (BasePluginEditorOldStyle)
};
