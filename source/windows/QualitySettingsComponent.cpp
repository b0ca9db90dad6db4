#include "windows/QualitySettingsComponent.h"

#include "frame/FerrowynEffect.h"
#include "windows/DefaultLookAndFeel.h"

namespace
{
const juce::StringArray levelNames ("Low", "Medium", "High", "Highest");
// A level as the "Quality" parameter carries it: level / 3, in single precision.
constexpr float qualityStep = 0.33333334f;
// Between the two groups side by side, half on each; the note below the first, two lines high.
constexpr int columnGap = 3, noteGap = 4, noteHeight = 30;
} // namespace

QualitySettingsComponent::QualitySettingsComponent (FerrowynEffect& effectToUse)
    : currentQuality (std::make_unique<RadioButtons> ("Current Quality", levelNames))
    , defaultQualityButtons (std::make_unique<RadioButtons> ("Default Quality", levelNames))
    , effect (effectToUse)
    , quality (effectToUse.getParameterManager().getParameterByName ("Quality"))
{
    currentQuality->addListener (this);
    addAndMakeVisible (*currentQuality);
    defaultQualityButtons->addListener (this);
    addAndMakeVisible (*defaultQualityButtons);
    if (effect.qualityNeedsRestart())
    {
        note.setText ("After changing this setting you need to restart your project (Stop/Start) to update "
                      "plug-in's latency.",
                      juce::dontSendNotification);
        note.setJustificationType (juce::Justification::topLeft);
        note.setBorderSize ({});
        addAndMakeVisible (note);
    }

    if (quality != nullptr)
        currentQuality->setSelectedIndex (FerrowynEffect::qualityLevelOf (quality->getNormalizedValue()),
                                          false);
    defaultQualityButtons->setSelectedIndex (effect.getDefaultQuality(), false);
}

QualitySettingsComponent::~QualitySettingsComponent()
{
    currentQuality->removeListener (this);
    defaultQualityButtons->removeListener (this);
}

void QualitySettingsComponent::lookAndFeelChanged()
{
    if (auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel()))
        note.setFont (look->getNormalFont());
}

void QualitySettingsComponent::resized()
{
    if (layingOut)
        return;
    const juce::ScopedValueSetter<bool> guard (layingOut, true);
    const int columnWidth = getWidth() / 2 - columnGap;
    currentQuality->setBounds (0, 0, columnWidth, currentQuality->getHeight());
    defaultQualityButtons->setBounds (getWidth() - columnWidth, 0, columnWidth,
                                      defaultQualityButtons->getHeight());
    note.setBounds (0, currentQuality->getBottom() + noteGap, columnWidth, noteHeight);
}

void QualitySettingsComponent::childBoundsChanged (juce::Component*) { resized(); }

void QualitySettingsComponent::radioButtonsChanged (RadioButtons* source)
{
    const int row = source->getSelectedIndex();
    if (row < 0)
        return;
    if (source == currentQuality.get() && quality != nullptr)
        quality->setNormalizedValue ((float) row * qualityStep, true);
    else if (source == defaultQualityButtons.get())
        effect.setDefaultQuality (row);
}
