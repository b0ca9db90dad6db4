#pragma once

#include "windows/RadioButtons.h"

class FerrowynEffect;
class Parameter;

/** The "Quality" page of effects that have quality settings: the quality now, which moves the
    parameter, and the quality of the next start. */
class QualitySettingsComponent : public juce::Component, public RadioButtons::Listener
{
public:
    explicit QualitySettingsComponent (FerrowynEffect& effect);
    ~QualitySettingsComponent() override;

    RadioButtons& getCurrentQuality() noexcept { return *currentQuality; }
    /** The editor listens to it for its note. */
    RadioButtons& getDefaultQualityButtons() noexcept { return *defaultQualityButtons; }
    const juce::Label& getNote() const noexcept { return note; }

    void lookAndFeelChanged() override;
    void resized() override;
    void childBoundsChanged (juce::Component* child) override;
    void radioButtonsChanged (RadioButtons* source) override;

private:
    std::unique_ptr<RadioButtons> currentQuality, defaultQualityButtons;
    juce::Label note;
    FerrowynEffect& effect;
    Parameter* quality = nullptr;
    bool layingOut = false;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (QualitySettingsComponent)
};
