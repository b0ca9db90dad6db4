#include "skin/FerrowynEffectEditor.h"

#include "frame/FerrowynEffect.h"
#include "skin/GFXAnimation.h"
#include "windows/StatusBar.h"

namespace
{
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
    resized();
}

void FerrowynEffectEditor::handleEditorEvent (GUIController* controller, int uid)
{
    // The options and the browser open as panels below the face once this editor has them; until then
    // their events ask nothing of it.
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

void FerrowynEffectEditor::resized() { BasePluginEditorOldStyle::resized(); }
