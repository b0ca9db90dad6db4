#pragma once

#include "skin/BasePluginEditor.h"
#include "skin/GFXDisplay.h"

class BasePluginOldStyle;

/** The editor of a plug-in with a bank of presets: the preset name display renames the current preset. */
class BasePluginEditorOldStyle : public BasePluginEditor, public GFXDisplayListener
{
public:
    explicit BasePluginEditorOldStyle (BasePluginOldStyle& plugin, const juce::String& skinKey = "skin.xml");
    ~BasePluginEditorOldStyle() override;

    void displayTextChanged (GFXDisplay* display) override;

    GFXDisplay* getPresetNameDisplay() const noexcept { return presetNameDisplay; }

protected:
    BasePluginOldStyle& oldStylePlugin;
    GFXDisplay* presetNameDisplay = nullptr;

private:
    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (BasePluginEditorOldStyle)
};
