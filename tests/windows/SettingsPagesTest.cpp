#include "common/ScratchFolder.h"
#include "dsp/ParameterIndex.h"
#include "parameters/FloatParameter.h"
#include "support/FakeFileDialog.h"
#include "support/GoldenImage.h"
#include "support/PluginHarness.h"
#include "windows/DefaultLookAndFeel.h"
#include "windows/MidiControlComponent.h"
#include "windows/OptionsWindow.h"
#include "windows/PresetsSettingsComponent.h"
#include "windows/QualitySettingsComponent.h"

#include <gtest/gtest.h>

namespace
{
void pump() { juce::MessageManager::getInstance()->runDispatchLoopUntil (20); }

void click (juce::Button& button)
{
    button.triggerClick();
    pump();
}

/** The options as the family's editor has them: the window docked below a face of 207, in the dialogs'
    look, with the presets page first and the MIDI page behind it. */
struct Panel final : juce::Component, PseudoModalComponent::Desktop
{
    explicit Panel (BasePluginOldStyle& plugin)
        : presets (plugin)
        , midi (plugin.getMidiControl(), plugin.getMapExtension(), plugin.getMapWildcards())
    {
        setLookAndFeel (&look);
        setSize (633, 479);
        window.setDocked (true);
        window.setBounds (0, 207, 633, 256);
        window.addPage ("Midi Control", &midi, -1);
        window.addPage ("Presets", &presets, 0);
        addAndMakeVisible (window);
        sendLookAndFeelChange();
    }
    ~Panel() override
    {
        removeAllChildren();
        setLookAndFeel (nullptr);
    }
    void show (int tab)
    {
        window.getTabs().setCurrentTabIndex (tab);
        pump();
    }
    /** The panel as it shows below the face. */
    juce::Image render() { return createComponentSnapshot (window.getBounds()); }
    void paint (juce::Graphics& g) override { g.fillAll (juce::Colour (0xff30343a)); }

    DefaultLookAndFeel look;
    PresetsSettingsComponent presets;
    MidiControlComponent midi;
    OptionsWindow window;
};

/** A family member that answers the options' questions otherwise than the crusher. */
struct Leaf final : FerrowynEffect
{
    Leaf (bool changing, bool quality)
        : FerrowynEffect (ParameterIndex::count)
        , changingOption (changing)
        , qualitySettings (quality)
    {
        parameters.addParameter (new FloatParameter (qualityId, "Quality", 0.0f, 1.0f, 0.0f));
    }
    juce::String getPluginName() const override { return "Leaf"; }
    juce::String getPluginCode() const override { return "LF"; }
    int getNumberOfParameters() const override { return ParameterIndex::count; }
    Core* createCore() override { return new FerrowynEffectCore (nullptr); }
    bool hasChangingOption() const override { return changingOption; }
    bool hasQualitySettings() const override { return qualitySettings; }

    static constexpr int qualityId = 200;
    const bool changingOption, qualitySettings;
};
} // namespace

TEST (SettingsPages, WhatThePagesChooseIsWhatTheNextStartShows)
{
    FakeFileDialog dialog;
    PluginHarness h;
    // A bank that doesn't exist is stored as typed; the next start falls back to the factory bank.
    const auto bank = h.folder.getChildFile ("banks").getChildFile ("Mine.vtprsb");
    const auto map = h.folder.getChildFile ("Mine.vtccmap");
    {
        Panel panel (*h.plugin);
        click (*panel.presets.getStoring().getButton (0));
        click (*panel.presets.getChanging().getButton (1));
        click (*panel.presets.getDefaults().getButton (2));
        dialog.answer = bank;
        click (panel.presets.getDefaults().getPath().getBrowseButton());
        ASSERT_EQ (dialog.asked.size(), 1u);
        EXPECT_EQ (dialog.asked[0].patterns, "*.vtprsb; *.vtb") << "a bank, since the start loads one";
        EXPECT_EQ (h.plugin->getStoringMode(), BasePluginOldStyle::automatic) << "at once";
        EXPECT_EQ (h.plugin->getChangingType(), BasePluginOldStyle::silent) << "at once";

        panel.show (1);
        auto& box = panel.midi.getDefaultMapBox();
        click (box.getCheck().getButton());
        dialog.answer = map;
        click (box.getPathComponent().getBrowseButton());
        EXPECT_EQ (dialog.asked.back().patterns, "*.vtccmap; *.vtc");
    }
    h.plugin.reset();

    const auto settings = juce::parseXML (h.folder.getChildFile ("Vantrice.ini"));
    ASSERT_NE (settings, nullptr);
    const auto* presetSettings = settings->getChildByName ("PresetSettings");
    const auto* resources = settings->getChildByName ("ResourcesSettings");
    ASSERT_TRUE (presetSettings != nullptr && resources != nullptr);
    EXPECT_EQ (presetSettings->getStringAttribute ("storing"), "automatic");
    EXPECT_EQ (presetSettings->getStringAttribute ("changing"), "silent");
    const auto* presets = resources->getChildByName ("Presets");
    const auto* midiMap = resources->getChildByName ("MidiCCMap");
    ASSERT_TRUE (presets != nullptr && midiMap != nullptr);
    EXPECT_EQ (presets->getStringAttribute ("default"), "userDefinedPresets");
    EXPECT_EQ (presets->getStringAttribute ("file"), bank.getFullPathName());
    EXPECT_EQ (midiMap->getStringAttribute ("default"), "userDefinedMidiCCMap");
    EXPECT_EQ (midiMap->getStringAttribute ("file"), map.getFullPathName());

    Vantrice second;
    second.start (h.folder.getChildFile ("Vantrice.so"));
    Panel panel (second);
    panel.show (1);
    EXPECT_EQ (panel.presets.getStoring().getSelectedIndex(), 0);
    EXPECT_EQ (panel.presets.getChanging().getSelectedIndex(), 1);
    EXPECT_EQ (panel.presets.getDefaults().getSelectedIndex(), 2);
    EXPECT_EQ (panel.presets.getDefaults().getPath().getPath(), bank.getFullPathName());
    EXPECT_TRUE (panel.presets.getDefaults().getPath().isEnabled());
    EXPECT_TRUE (panel.midi.getDefaultMapBox().isChecked());
    EXPECT_EQ (panel.midi.getDefaultMapBox().getPath(), map.getFullPathName());
}

TEST (SettingsPages, WithoutAChoiceOfChangingStoringSpansThePage)
{
    ScratchFolder folder ("vantrice-test");
    Leaf leaf (false, false);
    leaf.start (folder.getChildFile ("Leaf.so"));
    Panel panel (leaf);
    EXPECT_FALSE (panel.presets.getChanging().isVisible());
    EXPECT_EQ (panel.presets.getStoring().getWidth(), panel.presets.getWidth());
}

TEST (SettingsPages, AnEffectWithQualitySettingsHasAThirdPageThatMovesItsParameter)
{
    ScratchFolder folder ("vantrice-test");
    Leaf leaf (true, true);
    leaf.start (folder.getChildFile ("Leaf.so"));
    Panel panel (leaf);
    QualitySettingsComponent quality (leaf);
    panel.window.addPage ("Quality", &quality, 2);
    EXPECT_EQ (panel.window.getTabs().getTabNames(),
               juce::StringArray ("Presets", "Midi Control", "Quality"));
    EXPECT_EQ (panel.window.getTabs().getCurrentTabIndex(), 0);
    panel.show (2);

    auto* parameter = leaf.getParameterManager().getParameterByName ("Quality");
    EXPECT_EQ (quality.getCurrentQuality().getSelectedIndex(), 0);
    click (*quality.getCurrentQuality().getButton (2));
    EXPECT_EQ (parameter->getNormalizedValue(), 2 * 0.33333334f);
    click (*quality.getDefaultQualityButtons().getButton (3));
    EXPECT_EQ (leaf.getDefaultQuality(), 3);
    EXPECT_TRUE (quality.getNote().isVisible()) << "this leaf's quality needs a restart";
    EXPECT_EQ (quality.getNote().getY(), quality.getCurrentQuality().getBottom() + 4);
}

TEST (SettingsPages, BothPagesLookAsTheirGoldenPictures)
{
    PluginHarness h;
    h->setPresetsMode (BasePluginOldStyle::userDefinedPresets);
    // Wider than the field: it ends in the faded marker.
    h->setPresetsFile ("/home/someone/music/plug-in settings/banks of presets/crushed drums and "
                       "old samplers/Twelve Bit Classics.vtprsb");
    auto& map = h->getMidiControl();
    auto& parameters = h->getParameterManager();
    const int assignments[][2] = {
        { 1, 0 }, { 7, 2 }, { 10, 4 }, { 64, 5 }, { 71, 8 }, { 74, 10 }, { 91, 13 }
    };
    for (const auto& [controller, index] : assignments)
        map.assign (controller, parameters.getParameter (index), true);
    Panel panel (*h.plugin);
    EXPECT_EQ (GoldenImage::check (panel.render(), "windows/options-presets"), "");

    panel.show (1);
    panel.midi.getList().selectCell (3);
    EXPECT_EQ (GoldenImage::check (panel.render(), "windows/options-midi-control"), "");
}
