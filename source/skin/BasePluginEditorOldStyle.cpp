#include "skin/BasePluginEditorOldStyle.h"

#include "presets/BasePluginOldStyle.h"

BasePluginEditorOldStyle::BasePluginEditorOldStyle (BasePluginOldStyle& owner, const juce::String& skinKey)
    : BasePluginEditor (owner, skinKey)
    , oldStylePlugin (owner)
{
    presetNameDisplay = dynamic_cast<GFXDisplay*> (findComponentByName (*this, "PresetNameDisplay"));
    if (presetNameDisplay != nullptr)
        presetNameDisplay->addDisplayListener (this);
}

BasePluginEditorOldStyle::~BasePluginEditorOldStyle()
{
    if (presetNameDisplay != nullptr)
        presetNameDisplay->removeDisplayListener (this);
}

void BasePluginEditorOldStyle::displayTextChanged (GFXDisplay* display)
{
    if (display == presetNameDisplay && display != nullptr)
        oldStylePlugin.setPresetName (oldStylePlugin.getCurrentPreset(), display->getText());
}
