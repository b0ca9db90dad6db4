#include "skin/FerrowynEffectEditor.h"
#include "support/EditorHarness.h"
#include "support/GoldenImage.h"
#include "windows/AboutWindow.h"
#include "windows/GroupListColumn.h"
#include "windows/MidiControlComponent.h"
#include "windows/OldStylePresetBrowserWindow.h"
#include "windows/OldStylePresetsBrowser.h"
#include "windows/OptionsWindow.h"
#include "windows/PresetListColumn.h"
#include "windows/StatusBar.h"

#include <gtest/gtest.h>

namespace
{
constexpr int faceWidth = 633, faceAndBar = 223, withPanel = 479;

struct Panels : ::testing::Test
{
    FerrowynEffectEditor& editor() const { return *dynamic_cast<FerrowynEffectEditor*> (h.editor); }
    void event (const juce::String& name)
    {
        h.editor->controllerEvent (nullptr, h.plugin->getEvents().getEventUid (name));
        h.pump();
    }
    EditorHarness h;
};
} // namespace

TEST_F (Panels, OptionsOpenBelowTheFaceAndTheWindowFollows)
{
    auto* options = h.editor->getOptionsWindow();
    ASSERT_NE (options, nullptr);
    EXPECT_FALSE (options->isVisible());
    EXPECT_EQ (h.wrapper->getBounds(), juce::Rectangle<int> (0, 0, faceWidth, faceAndBar));
    EXPECT_EQ (options->getTabs().getTabNames(), juce::StringArray ({ "Presets", "Midi Control" }));

    h.editor->getStatusBar()->showMessage ("something", 6, 3000);
    event ("Options");
    EXPECT_TRUE (options->isVisible());
    EXPECT_EQ (options->getBounds(), juce::Rectangle<int> (0, editor().getFaceHeight(), faceWidth, 256));
    EXPECT_EQ (h.editor->getHeight(), withPanel);
    EXPECT_EQ (h.wrapper->getHeight(), withPanel) << "the host's window follows";
    EXPECT_EQ (h.editor->getStatusBar()->getY(), editor().getFaceHeight() + 256) << "the bar stays below";
    EXPECT_TRUE (h.editor->getStatusBar()->getText().isEmpty());
    EXPECT_EQ (h.editor->getAboutWindow()->getHeight(), 260);
    EXPECT_EQ (GoldenImage::check (h.snapshot(), "editor/face-with-options"), "");

    options->getTabs().setCurrentTabIndex (1);
    h.pump();
    EXPECT_EQ (GoldenImage::check (h.snapshot(), "editor/face-with-midi-control"), "");

    event ("Options");
    EXPECT_FALSE (options->isVisible());
    EXPECT_EQ (h.editor->getHeight(), faceAndBar);
    EXPECT_EQ (h.wrapper->getHeight(), faceAndBar);
    EXPECT_EQ (h.editor->getAboutWindow()->getBounds().getWidth(), 550);
    EXPECT_EQ (h.editor->getAboutWindow()->getHeight(), 190);
}

TEST_F (Panels, TheSettingsNotesComeFromTheirGroupsAndATabClearsThem)
{
    event ("Options");
    auto& defaults = h.editor->getMidiControlComponent()->getDefaultMapBox();
    defaults.getCheck().getButton().triggerClick();
    h.pump();
    EXPECT_TRUE (h.editor->getStatusBar()->getText().startsWith ("Default Map settings"));

    h.editor->getOptionsWindow()->getTabs().setCurrentTabIndex (1);
    EXPECT_TRUE (h.editor->getStatusBar()->getText().isEmpty());
}

TEST_F (Panels, TheBrowserAndTheOptionsSwapInOneStepAtTheSameHeight)
{
    auto* browser = editor().getPresetBrowserWindow();
    auto* options = h.editor->getOptionsWindow();
    ASSERT_NE (browser, nullptr);
    EXPECT_FALSE (browser->isVisible());

    event ("Browse presets");
    EXPECT_TRUE (browser->isVisible());
    EXPECT_TRUE (browser->isDocked());
    EXPECT_EQ (browser->getBounds(), juce::Rectangle<int> (0, editor().getFaceHeight(), faceWidth, 256));
    EXPECT_EQ (h.wrapper->getHeight(), withPanel);
    EXPECT_EQ (h.editor->getAboutWindow()->getHeight(), 260);
    // The browser inside the panel, its two columns side by side filling it exactly.
    auto& columns = browser->getBrowser();
    EXPECT_EQ (columns.getBounds().getWidth(), 591);
    EXPECT_EQ (columns.getBounds().getHeight(), 208);
    ASSERT_NE (columns.getGroupColumn(), nullptr);
    ASSERT_NE (columns.getPresetColumn(), nullptr);
    EXPECT_EQ (columns.getGroupColumn()->getRight(), columns.getPresetColumn()->getX());
    EXPECT_EQ (columns.getPresetColumn()->getRight(), columns.getViewedComponent()->getWidth());
    EXPECT_EQ (columns.getViewedComponent()->getWidth(), 591);
    EXPECT_EQ (GoldenImage::check (h.snapshot(), "editor/face-with-browser"), "");

    // The host's window must not shrink and grow again on the way from one panel to the other.
    struct Sizes : juce::ComponentListener
    {
        void componentMovedOrResized (juce::Component& c, bool, bool) override
        {
            heights.add (c.getHeight());
        }
        juce::Array<int> heights;
    } sizes;
    h.wrapper->addComponentListener (&sizes);
    event ("Options");
    h.wrapper->removeComponentListener (&sizes);
    EXPECT_TRUE (options->isVisible());
    EXPECT_FALSE (browser->isVisible());
    EXPECT_FALSE (sizes.heights.contains (faceAndBar));
    EXPECT_EQ (h.wrapper->getHeight(), withPanel);

    event ("Browse presets");
    EXPECT_TRUE (browser->isVisible());
    EXPECT_FALSE (options->isVisible());
    event ("Browse presets");
    EXPECT_FALSE (browser->isVisible());
    EXPECT_EQ (h.wrapper->getHeight(), faceAndBar);
    EXPECT_EQ (h.editor->getAboutWindow()->getHeight(), 190);
}
