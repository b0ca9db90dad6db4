#include "skin/FerrowynEffectEditor.h"

#include "frame/FerrowynEffect.h"
#include "skin/GFXAnimation.h"
#include "windows/AboutWindow.h"
#include "windows/OldStylePresetBrowserWindow.h"
#include "windows/OptionsWindow.h"
#include "windows/QualitySettingsComponent.h"
#include "windows/StatusBar.h"

namespace
{
// The about window without a panel, and with one: the face's width less a margin, and as tall as the
// face or the face and part of a panel allow.
constexpr int aboutWidth = 550, aboutHeight = 190, aboutHeightWithPanel = 260;

float fallen (float level) noexcept
{
    if (level <= 0.0f)
        return level;
    return level > FerrowynEffectEditor::levelFloor ? level * FerrowynEffectEditor::levelFall : 0.0f;
}
} // namespace

FerrowynEffectEditor::FerrowynEffectEditor (FerrowynEffect& owner, const juce::String& skinKey)
    : BasePluginEditorOldStyle (owner, skinKey)
    , effect (owner)
{
    faceHeight = getHeight() - (statusBar != nullptr && isStatusBarVisible() ? statusBar->getHeight() : 0);
    leftVUMeter = dynamic_cast<GFXAnimation*> (findComponentByName (*this, "LeftVUMeter"));
    rightVUMeter = dynamic_cast<GFXAnimation*> (findComponentByName (*this, "RightVUMeter"));

    // The browser and the options become panels below the face: the editor shows and hides them itself,
    // without a cover.
    presetBrowserWindow->setDocked (true);
    presetBrowserWindow->setBounds (0, faceHeight, getWidth(), panelHeight);
    optionsWindow->setDocked (true);
    optionsWindow->setShadowSide (WindowComponent::topShadow);
    optionsWindow->setBounds (0, faceHeight, getWidth(), presetBrowserWindow->getHeight());

    if (effect.hasQualitySettings())
    {
        qualitySettings = std::make_unique<QualitySettingsComponent> (effect);
        qualitySettings->getDefaultQualityButtons().addListener (this);
        optionsWindow->addPage ("Quality", qualitySettings.get(), 2);
    }
    resized();
}

FerrowynEffectEditor::~FerrowynEffectEditor()
{
    if (qualitySettings != nullptr)
    {
        qualitySettings->getDefaultQualityButtons().removeListener (this);
        optionsWindow->getTabs().removeTab (optionsWindow->getTabs().getTabNames().indexOf ("Quality"));
    }
}

void FerrowynEffectEditor::radioButtonsChanged (RadioButtons* source)
{
    if (qualitySettings != nullptr && source == &qualitySettings->getDefaultQualityButtons())
        showDefaultSettingsNote ("Default Quality");
    else
        BasePluginEditorOldStyle::radioButtonsChanged (source);
}

void FerrowynEffectEditor::showPanel (juce::Component* panel)
{
    for (auto* each : { static_cast<juce::Component*> (optionsWindow.get()),
                        static_cast<juce::Component*> (presetBrowserWindow.get()) })
        if (each != nullptr)
            each->setVisible (each == panel);
    setEditorSize (getWidth(), faceHeight + (panel != nullptr ? panel->getHeight() : 0));
    if (statusBar != nullptr)
        statusBar->clearMessage();
}

void FerrowynEffectEditor::handleEditorEvent (GUIController* controller, int uid)
{
    if ((uid == optionsEvent || uid == browseEvent) && optionsWindow != nullptr
        && presetBrowserWindow != nullptr && statusBar != nullptr)
    {
        // The two panels never show together; a second click on the button that opened one closes it.
        juce::Component* panel = optionsWindow.get();
        if (uid == browseEvent)
            panel = presetBrowserWindow.get();
        showPanel (panel->isVisible() ? nullptr : panel);
        return;
    }
    BasePluginEditorOldStyle::handleEditorEvent (controller, uid);
}

void FerrowynEffectEditor::update()
{
    BasePluginEditorOldStyle::update();
    const bool prepared = effect.isPrepared();
    if (prepared)
        if (auto* core = effect.getCore())
            core->readMeters (leftLevel, rightLevel);
    if (leftVUMeter != nullptr)
        leftVUMeter->setFrameValue (leftLevel);
    if (rightVUMeter != nullptr)
        rightVUMeter->setFrameValue (rightLevel);
    if (!prepared)
    {
        leftLevel = fallen (leftLevel);
        rightLevel = fallen (rightLevel);
    }
}

void FerrowynEffectEditor::resized()
{
    BasePluginEditorOldStyle::resized();
    if (aboutWindow != nullptr && optionsWindow != nullptr && presetBrowserWindow != nullptr)
    {
        const bool panelShows = optionsWindow->isVisible() || presetBrowserWindow->isVisible();
        aboutWindow->setSize (aboutWidth, panelShows ? aboutHeightWithPanel : aboutHeight);
    }
}
