#pragma once

#include "windows/DefaultResourcesRadioButtons.h"

class BasePluginOldStyle;

/** The "Presets" page: how presets are stored and changed, which act at once, and which bank the next
    start loads. It reads the plug-in's values once, when it is made, and writes them at every click. */
class PresetsSettingsComponent : public juce::Component,
                                 public RadioButtons::Listener,
                                 public PathComponent::Listener
{
public:
    explicit PresetsSettingsComponent (BasePluginOldStyle& plugin);
    ~PresetsSettingsComponent() override;

    RadioButtons& getStoring() noexcept { return *storing; }
    /** Shown only where the plug-in offers a choice of changing. */
    RadioButtons& getChanging() noexcept { return *changing; }
    /** The bank of the next start; the editor listens to it for its note. */
    DefaultResourcesRadioButtons& getDefaults() noexcept { return *defaults; }

    void resized() override;
    void childBoundsChanged (juce::Component* child) override;
    void radioButtonsChanged (RadioButtons* source) override;
    void pathChanged (PathComponent* source) override;

private:
    std::unique_ptr<RadioButtons> storing, changing;
    std::unique_ptr<DefaultResourcesRadioButtons> defaults;
    BasePluginOldStyle& plugin;
    bool layingOut = false;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (PresetsSettingsComponent)
};
