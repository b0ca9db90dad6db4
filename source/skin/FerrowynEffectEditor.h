#pragma once

#include "skin/BasePluginEditorOldStyle.h"

class FerrowynEffect;
class QualitySettingsComponent;

/** The editor of the effect family: a fixed face on top and, below it, one panel at a time that makes the
    window taller (the options or the browser, where the editor has them); and the level meters, which
    follow the core while the plug-in is prepared and fall to rest by themselves when it isn't. */
class FerrowynEffectEditor : public BasePluginEditorOldStyle
{
public:
    explicit FerrowynEffectEditor (FerrowynEffect& effect, const juce::String& skinKey = "skin.xml");
    ~FerrowynEffectEditor() override;

    void update() override;
    void resized() override;
    /** The quality of the next start waits for it: the status bar says so. */
    void radioButtonsChanged (RadioButtons* source) override;

    /** The panels' height below the face. */
    static constexpr int panelHeight = 256;
    QualitySettingsComponent* getQualitySettings() const noexcept { return qualitySettings.get(); }

    int getFaceHeight() const noexcept { return faceHeight; }
    float getLeftLevel() const noexcept { return leftLevel; }
    float getRightLevel() const noexcept { return rightLevel; }

    /** Each tick without audio a level falls by this factor, and from this level on to 0: at rest in about
        0.3 seconds. */
    static constexpr float levelFall = 0.675f;
    static constexpr float levelFloor = 0.01f;

protected:
    void handleEditorEvent (GUIController* controller, int uid) override;
    /** Shows one panel below the face, or none, and makes the window as tall as that needs. */
    void showPanel (juce::Component* panel);

    FerrowynEffect& effect;
    int faceHeight = 0;
    GFXAnimation* leftVUMeter = nullptr;
    GFXAnimation* rightVUMeter = nullptr;
    float leftLevel = 0.0f, rightLevel = 0.0f;
    std::unique_ptr<QualitySettingsComponent> qualitySettings;

private:
    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (FerrowynEffectEditor)
};
