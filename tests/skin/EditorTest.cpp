#include "dsp/ParameterIndex.h"
#include "skin/GFXButton.h"
#include "skin/GFXDisplay.h"
#include "skin/GFXKnob.h"
#include "skin/GFXSwitch.h"
#include "skin/GFXToggleButton.h"
#include "support/EditorHarness.h"
#include "support/GoldenImage.h"
#include "support/MouseEvents.h"
#include "windows/StatusBar.h"

#include <gtest/gtest.h>

namespace
{
/** What reaches the host, as JUCE's wrappers hear it. */
struct HostEar final : juce::AudioProcessorListener
{
    void audioProcessorParameterChanged (juce::AudioProcessor*, int index, float) override
    {
        changes.add (index);
    }
    void audioProcessorChanged (juce::AudioProcessor*, const ChangeDetails&) override {}
    void audioProcessorParameterChangeGestureBegin (juce::AudioProcessor*, int index) override
    {
        begins.add (index);
    }
    void audioProcessorParameterChangeGestureEnd (juce::AudioProcessor*, int index) override
    {
        ends.add (index);
    }
    juce::Array<int> changes, begins, ends;
};

class Editor : public ::testing::Test
{
protected:
    juce::String statusText() const { return h.editor->getStatusBar()->getText(); }
    Parameter& parameter (int index) const { return *h.plugin->getParameterManager().getParameter (index); }

    EditorHarness h;
};
} // namespace

TEST_F (Editor, OpensAtTheSizeOfTheFaceAndTheStatusBar)
{
    EXPECT_EQ (h.editor->getBounds(), juce::Rectangle<int> (633, 223));
    EXPECT_EQ (h.wrapper->getBounds(), juce::Rectangle<int> (633, 223));
    EXPECT_TRUE (h.editor->isSkinLoaded());
    EXPECT_EQ (h.editor->getControllers().size(), 27);
    EXPECT_EQ (h.control<GFXDisplay> ("PresetNameDisplay").getText(), "MPC 60")
        << "values came with the open";
}

TEST_F (Editor, FaceMatchesItsGoldenPictures)
{
    EXPECT_EQ (GoldenImage::check (h.snapshot(), "editor/face-defaults"), "");

    auto& midi = h.plugin->getMidiControl();
    midi.setLearnActive (true);
    h.pump();
    EXPECT_EQ (GoldenImage::check (h.snapshot(), "editor/face-learning"), "");
    midi.setLearnActive (false);

    for (int i = 0; i < ParameterIndex::count; ++i)
        h.plugin->getParameterManager().setNormalizedValue (i, 1.0f);
    h.pump();
    EXPECT_EQ (GoldenImage::check (h.snapshot(), "editor/face-maximum"), "");

    // On a dense screen the double pictures are drawn: twice the pixels, the same face.
    const auto doubled = h.snapshot (2.0f);
    EXPECT_EQ (doubled.getBounds(), juce::Rectangle<int> (633 * 2, 223 * 2));
    EXPECT_EQ (GoldenImage::check (doubled, "editor/face-maximum-2x"), "");
}

TEST (EditorWithoutSkin, ShowsTheGenericFace)
{
    PluginHarness plugin;
    BasePluginEditor editor (*plugin, "no-such-skin.xml");
    editor.createDefaultControls();
    editor.sendLookAndFeelChange();
    plugin->getParameterManager().triggerDeferredUpdates();
    EditorHarness::pump();
    EXPECT_FALSE (editor.isSkinLoaded());
    EXPECT_EQ (editor.getBounds(), juce::Rectangle<int> (1024, 816));
    EXPECT_EQ (
        GoldenImage::check (editor.createComponentSnapshot (editor.getLocalBounds()), "editor/generic-face"),
        "");
}

TEST_F (Editor, AKnobDragOfHalfTheTravelMovesHalfTheRangeAsOneGesture)
{
    auto& knob = h.control<GFXKnob> ("LeftCutoffKnob");
    parameter (ParameterIndex::leftCutoff).setNormalizedValue (0.0f, true);
    h.pump();
    ASSERT_EQ (knob.getValue(), 0.0);

    HostEar host;
    h.plugin->addListener (&host);
    // 250 pixels of travel are the whole range; upward raises the value.
    MouseEvents::drag (knob, { 18.0f, 30.0f }, { 18.0f, 30.0f - 125.0f });
    h.pump();
    EXPECT_NEAR (parameter (ParameterIndex::leftCutoff).getNormalizedValue(), 0.5f, 0.01f);
    EXPECT_EQ (host.begins, juce::Array<int> (ParameterIndex::leftCutoff));
    EXPECT_EQ (host.ends, juce::Array<int> (ParameterIndex::leftCutoff));
    EXPECT_EQ (knob.getFrame(), 30);

    // A wheel notch of X11 (50/256 of a unit) moves 0.15 of the range per unit, and is a gesture too.
    const float before = parameter (ParameterIndex::leftCutoff).getNormalizedValue();
    MouseEvents::wheel (knob, 50.0f / 256.0f);
    EXPECT_NEAR (parameter (ParameterIndex::leftCutoff).getNormalizedValue() - before, 0.15f * 50.0f / 256.0f,
                 1e-4f);
    EXPECT_EQ (host.begins.size(), 2);
    EXPECT_EQ (host.ends.size(), 2);
    h.plugin->removeListener (&host);
}

TEST_F (Editor, EveryPositionOfEverySwitchAgreesWithTheCoreAndTheText)
{
    parameter (ParameterIndex::linkChannels).setNormalizedValue (0.0f, true);
    const char* const typeNames[] = { "LP", "BP", "HP", "BR", "Off" };
    struct Switch
    {
        const char* name;
        int index;
        bool left;
    };
    const Switch switches[] = { { "LeftBitsKnob", ParameterIndex::leftBits, true },
                                { "RightBitsKnob", ParameterIndex::rightBits, false },
                                { "LeftFilterTypeKnob", ParameterIndex::leftFilterType, true },
                                { "RightFilterTypeKnob", ParameterIndex::rightFilterType, false },
                                { "LeftFilterOrderSwitch", ParameterIndex::leftFilterOrder, true },
                                { "RightFilterOrderSwitch", ParameterIndex::rightFilterOrder, false } };
    auto* core = h.plugin->getVantriceCore();
    for (const auto& s : switches)
    {
        auto& control = h.control<GFXSwitch> (s.name);
        for (int step = 0; step <= 200; ++step)
        {
            control.setValue (step * 0.005, juce::sendNotificationSync);
            const int frame = control.getFrame();
            const auto& channel = s.left ? core->getLeft() : core->getRight();
            const auto text = h.plugin->getParameterTextFor (s.index);
            SCOPED_TRACE (juce::String (s.name) + " at " + juce::String (step * 0.005));
            if (control.getNumFrames() == 17)
            {
                EXPECT_EQ (text, frame == 16 ? juce::String ("Quant. Off")
                                             : juce::String (frame + 1) + (frame == 0 ? " bit" : " bits"));
                EXPECT_EQ (channel.quantScale > 65536.0, frame == 16);
                // The left quantiser's scale is one below the power of two, the right one's the power itself.
                EXPECT_EQ (channel.quantScale, std::pow (2.0, frame + 1) - (s.left ? 1.0 : 0.0));
            }
            else if (control.getNumFrames() == 5)
            {
                EXPECT_EQ (channel.filterType, frame);
                EXPECT_EQ (text, typeNames[frame]);
            }
            else if (step == 100)
            {
                // At exactly 0.5 the lever shows up (the frame's rounding) while the core, deciding by
                // "above one half", stays after the crusher.
                EXPECT_EQ (frame, 1);
                EXPECT_FALSE (channel.filterPre);
                EXPECT_EQ (text, "Post");
            }
            else
            {
                EXPECT_EQ (channel.filterPre, frame == 1);
                EXPECT_EQ (text, frame == 1 ? "Pre" : "Post");
            }
        }
    }
}

TEST_F (Editor, ButtonsRouteTheirEventsByCtrl)
{
    auto& previous = h.control<GFXButton> ("PrevPresetButton");
    auto& next = h.control<GFXButton> ("NextPresetButton");
    auto& browse = h.control<GFXButton> ("BrowsePresetButton");
    const auto ctrl = juce::ModifierKeys (juce::ModifierKeys::ctrlModifier);

    next.clicked (juce::ModifierKeys());
    EXPECT_EQ (h.plugin->getCurrentPreset(), 1);
    previous.clicked (juce::ModifierKeys());
    EXPECT_EQ (h.plugin->getCurrentPreset(), 0);

    previous.clicked (ctrl); // copy
    next.clicked (juce::ModifierKeys());
    next.clicked (ctrl); // paste over the second preset
    EXPECT_EQ (h.plugin->getPresetName (1), "MPC 60_copy");

    parameter (ParameterIndex::preamp).setNormalizedValue (0.75f, true);
    browse.clicked (ctrl); // store
    EXPECT_EQ (h.plugin->getPreset (1)->getValue (ParameterIndex::preamp), 0.75f);
    EXPECT_EQ (h.plugin->getCurrentPreset(), 1) << "browsing opens a window, it selects nothing";

    // The tooltip tells what a click would do now.
    EXPECT_EQ (next.eventFor (ctrl), h.plugin->getEvents().getEventUid ("Paste copied preset"));

    // A button without a Ctrl event does nothing under Ctrl: no falling back on its plain event.
    GFXButton plain ("plain");
    plain.setAction ("onClick", h.plugin->getEvents().getEventUid ("Select next preset"),
                     "Select next preset");
    plain.GUIController::addListener (h.editor);
    plain.clicked (ctrl);
    EXPECT_EQ (h.plugin->getCurrentPreset(), 1);
    plain.clicked (juce::ModifierKeys());
    EXPECT_EQ (h.plugin->getCurrentPreset(), 2);
}

TEST_F (Editor, StatusMessagesStandByPriorityAndLearnTellsItsProgress)
{
    auto& knob = h.control<GFXKnob> ("LeftCutoffKnob");
    auto& midi = h.plugin->getMidiControl();

    knob.setValue (0.25, juce::sendNotificationSync);
    EXPECT_EQ (statusText(), "Left Cutoff: " + h.plugin->getParameterTextFor (ParameterIndex::leftCutoff));

    // A controller's report (priority 5) waits for nobody: it is dropped while a knob's (6) stands.
    midi.assign (20, &parameter (ParameterIndex::fx), false);
    midi.handleMidiMessage (juce::MidiMessage::controllerEvent (1, 20, 10));
    h.pump();
    EXPECT_TRUE (statusText().startsWith ("Left Cutoff: "));

    h.editor->controllerEvent (nullptr, h.plugin->getEvents().getEventUid ("Toggle Midi Learn"));
    h.pump();
    EXPECT_EQ (statusText(), "Waiting for a controller or parameter movement...");

    knob.setValue (0.5, juce::sendNotificationSync);
    h.pump();
    EXPECT_EQ (statusText(), "'Left Cutoff' parameter is free. Waiting for a free controller now...");

    midi.handleMidiMessage (juce::MidiMessage::controllerEvent (1, 21, 64));
    h.pump();
    EXPECT_EQ (statusText(), "CC# 21 is assigned to parameter 'Left Cutoff'.");

    h.control<GFXKnob> ("FXKnob").setValue (0.3, juce::sendNotificationSync);
    EXPECT_TRUE (statusText().startsWith ("CC# 21")) << "learn stands over a knob's report";

    midi.setLearnActive (false);
    h.pump();
    EXPECT_EQ (statusText(), "");
    h.editor->showDefaultSettingsNote ("Default Presets");
    EXPECT_EQ (statusText(), "Default Presets settings will be affected when plugin is loaded.");
}

TEST_F (Editor, KeepsEverythingAcrossOpensAndClosesAndOutlivesNoProcessor)
{
    auto& knob = h.control<GFXKnob> ("PreampKnob");
    knob.setValue (0.4, juce::sendNotificationSync);
    const auto status = statusText();
    auto* editor = h.editor;
    for (int i = 0; i < 50; ++i)
    {
        h.wrapper.reset();
        EXPECT_FALSE (editor->isVisible());
        h.wrapper.reset (h.plugin->createEditor());
        ASSERT_EQ (h.plugin->getEditorComponent(), editor) << "one editor for the plug-in's life";
        EXPECT_TRUE (editor->isVisible());
    }
    EXPECT_EQ (knob.getValue(), 0.4);
    EXPECT_EQ (statusText(), status);

    // A host that lets the processor go with the window still open.
    h.plugin.reset();
    h.wrapper.reset();
}

TEST (EditorSkinRules, SwitchStylesIgnoreCaseWhereToggleStylesDoNot)
{
    ParameterManager parameters;
    EventsMap events;
    GFXSwitch lever;
    lever.loadFromXml (*juce::parseXML (R"(<Switch STYLE="vertical"/>)"), parameters, events, nullptr);
    EXPECT_EQ (lever.getStyle(), GFXSwitch::vertical);
    EXPECT_EQ (lever.getSliderStyle(), juce::Slider::LinearVertical);
    lever.loadFromXml (*juce::parseXML (R"(<Switch style="Sideways"/>)"), parameters, events, nullptr);
    EXPECT_EQ (lever.getStyle(), GFXSwitch::vertical) << "an unknown style changes nothing";

    GFXToggleButton toggle;
    toggle.loadFromXml (
        *juce::parseXML (R"(<ToggleButton style="3d"><gfx resource="LinkParamsButton.png"/></ToggleButton>)"),
        parameters, events, nullptr);
    EXPECT_FALSE (toggle.is3D());
    EXPECT_EQ (toggle.getNumFrames(), 2);
    EXPECT_EQ (toggle.getHeight(), 168 / 2);
}
