#include "windows/PresetsSettingsComponent.h"

#include "presets/BasePluginOldStyle.h"

namespace
{
// Between the two groups side by side, half on each; and below the top row.
constexpr int columnGap = 3, rowGap = 10;
} // namespace

PresetsSettingsComponent::PresetsSettingsComponent (BasePluginOldStyle& pluginToUse)
    : storing (
        std::make_unique<RadioButtons> ("Preset storing", juce::StringArray ("Automatic", "On demand")))
    , changing (std::make_unique<RadioButtons> ("Changing type", juce::StringArray ("Normal", "Silent")))
    , defaults (std::make_unique<DefaultResourcesRadioButtons> (
          "Default presets", juce::StringArray ("Factory presets", "Clear presets", "User defined")))
    , plugin (pluginToUse)
{
    storing->addListener (this);
    addAndMakeVisible (*storing);
    changing->addListener (this);
    addChildComponent (*changing);
    changing->setVisible (plugin.hasChangingOption());
    defaults->addListener (this);
    defaults->getPath().addListener (this);
    defaults->getPath().setWildcards (plugin.getBankWildcards());
    addAndMakeVisible (*defaults);

    storing->setSelectedIndex (plugin.getStoringMode(), false);
    changing->setSelectedIndex (plugin.getChangingType(), false);
    defaults->setSelectedIndex (plugin.getPresetsMode(), false);
    defaults->getPath().setPath (plugin.getPresetsFile(), false);
}

PresetsSettingsComponent::~PresetsSettingsComponent()
{
    storing->removeListener (this);
    changing->removeListener (this);
    defaults->removeListener (this);
    defaults->getPath().removeListener (this);
}

void PresetsSettingsComponent::resized()
{
    if (layingOut)
        return;
    const juce::ScopedValueSetter<bool> guard (layingOut, true);
    const int width = getWidth();
    const bool twoColumns = changing->isVisible();
    const int columnWidth = twoColumns ? width / 2 - columnGap : width;
    storing->setBounds (0, 0, columnWidth, storing->getHeight());
    changing->setBounds (width - columnWidth, 0, columnWidth, changing->getHeight());
    defaults->setBounds (0, storing->getBottom() + rowGap, width, defaults->getHeight());
}

void PresetsSettingsComponent::childBoundsChanged (juce::Component*) { resized(); }

void PresetsSettingsComponent::radioButtonsChanged (RadioButtons* source)
{
    const int row = source->getSelectedIndex();
    if (row < 0)
        return;
    if (source == storing.get())
        plugin.setStoringMode (row); // automatic storing also stores the current preset
    else if (source == changing.get())
        plugin.setChangingType (row);
    else if (source == defaults.get())
        plugin.setPresetsMode (row); // for the next start; the bank in memory stays
}

void PresetsSettingsComponent::pathChanged (PathComponent* source)
{
    if (source == &defaults->getPath())
        plugin.setPresetsFile (source->getPath());
}
