#include "ExpectedPlugin.h"
#include "dsp/ParameterIndex.h"
#include "skin/GFXAnimation.h"
#include "skin/GFXDisplay.h"
#include "skin/TextFieldLift.h"
#include "skin/VantriceEditor.h"
#include "support/EditorHarness.h"
#include "support/GoldenImage.h"
#include "support/RepaintCounter.h"

#include <gtest/gtest.h>

namespace
{
constexpr double rate = 44100.0;
constexpr int blockSize = 512;

class LeafEditor : public ::testing::Test
{
protected:
    LeafEditor()
    {
        editor = dynamic_cast<VantriceEditor*> (h.editor);
        auto& parameters = h.plugin->getParameterManager();
        for (int i = 0; i < ParameterIndex::count; ++i)
            parameters.setNormalizedValue (i, ExpectedPlugin::parameters[(size_t) i].defaultValue);
        h.plugin->setRateAndBufferSizeDetails (rate, blockSize);
        h.plugin->prepareToPlay (rate, blockSize);
        h.pump();
    }

    /** A second of a 1 kHz sine at the given levels, left and right, in the host's blocks. */
    void play (float leftLevel, float rightLevel)
    {
        juce::AudioBuffer<float> block (2, blockSize);
        juce::MidiBuffer midi;
        for (int start = 0; start < (int) rate; start += blockSize)
        {
            for (int i = 0; i < blockSize; ++i)
            {
                const auto s =
                    (float) std::sin (2.0 * juce::MathConstants<double>::pi * 1000.0 * (start + i) / rate);
                block.setSample (0, i, leftLevel * s);
                block.setSample (1, i, rightLevel * s);
            }
            h.plugin->processBlock (block, midi);
        }
    }

    GFXAnimation& animation (const char* name) { return h.control<GFXAnimation> (name); }

    EditorHarness h;
    VantriceEditor* editor = nullptr;
};
} // namespace

TEST_F (LeafEditor, MetersFollowTheSoundAndFallToRestWhenTheHostStops)
{
    ASSERT_NE (editor, nullptr) << "the plug-in makes its own editor";
    play (1.0f, 0.0f);
    editor->update();
    EXPECT_EQ (animation ("LeftVUMeter").getCurrentFrame(), 9);
    EXPECT_EQ (animation ("RightVUMeter").getCurrentFrame(), 0);
    EXPECT_EQ (animation ("LeftChannelProcessLed").getCurrentFrame(), 1);
    EXPECT_EQ (animation ("RightChannelProcessLed").getCurrentFrame(), 0);

    h.plugin->releaseResources();
    int firstDark = 0, firstZero = 0;
    for (int tick = 1; tick <= 16; ++tick)
    {
        editor->update();
        if (tick == 1)
        {
            EXPECT_EQ (animation ("LeftChannelProcessLed").getCurrentFrame(), 0) << "dark at the next tick";
        }
        if (firstDark == 0 && animation ("LeftVUMeter").getCurrentFrame() == 0)
            firstDark = tick;
        if (firstZero == 0 && editor->getLeftLevel() == 0.0f)
            firstZero = tick;
    }
    EXPECT_EQ (firstDark, 9);
    EXPECT_EQ (firstZero, 13);
}

TEST_F (LeafEditor, FaceWhilePlayingMatchesItsGoldenPicture)
{
    play (1.0f, 0.5f);
    editor->update();
    EXPECT_EQ (animation ("RightChannelProcessLed").getCurrentFrame(), 1);
    EXPECT_EQ (GoldenImage::check (h.snapshot(), "editor/face-playing"), "");
}

TEST_F (LeafEditor, ASilentPreparedEditorRepaintsNothingPerTick)
{
    play (0.0f, 0.0f);
    editor->update();
    auto& repaints = RepaintCounter::attach (*editor);
    for (int tick = 0; tick < 40; ++tick)
        editor->update();
    EXPECT_EQ (repaints.count, 0);

    play (1.0f, 1.0f);
    editor->update();
    EXPECT_GT (repaints.count, 0) << "the counter sees repaints at all";
}

TEST_F (LeafEditor, TheNameFieldRenamesTheCurrentPresetOnce)
{
    TextFieldLift::setEnabled (false);
    auto& display = h.control<GFXDisplay> ("PresetNameDisplay");
    auto& nameParameter =
        *h.plugin->getParameterManager().getParameter (BasePluginOldStyle::currentPresetNameId);
    h.plugin->selectPreset (3);
    h.pump();
    const auto original = h.plugin->getPresetName (3);
    ASSERT_EQ (display.getText(), original);

    auto type = [&display] (const juce::String& keys, int finalKey)
    {
        display.focusGained (juce::Component::focusChangedByMouseClick);
        for (auto c : keys)
            display.keyPressed (juce::KeyPress ((int) c, {}, c));
        display.keyPressed (juce::KeyPress (finalKey));
    };

    type ("x", juce::KeyPress::escapeKey);
    EXPECT_EQ (h.plugin->getPresetName (3), original) << "Escape keeps the old name";
    type ("", juce::KeyPress::returnKey);
    EXPECT_EQ (h.plugin->getPresetName (3), original);

    type ("!", juce::KeyPress::returnKey);
    EXPECT_EQ (h.plugin->getPresetName (3), original + "!");
    EXPECT_EQ (nameParameter.getStringValue(), original + "!");
    h.pump();
    EXPECT_EQ (display.getText(), original + "!") << "the echo came back with the same text and stopped";
    EXPECT_EQ (h.plugin->getPresetName (4), h.plugin->getPresetName (4)) << "no other slot";
}
