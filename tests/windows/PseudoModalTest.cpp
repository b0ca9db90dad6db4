#include "frame/SoftwareDesignation.h"
#include "skin/GFXKnob.h"
#include "support/EditorHarness.h"
#include "support/GoldenImage.h"
#include "windows/AboutWindow.h"
#include "windows/AlertWindow.h"
#include "windows/WindowComponent.h"

#include <gtest/gtest.h>

namespace
{
/** A desktop to hang covers on, with a window that counts its shows and hides. */
struct Desk final : juce::Component, PseudoModalComponent::Desktop
{
    Desk()
    {
        setSize (400, 300);
        setVisible (true);
    }
};

struct CountingWindow final : WindowComponent
{
    void shownStateChanged() override { ++changes; }
    int changes = 0;
};

struct Step
{
    const char* name;
    std::function<void (Desk&, CountingWindow&, juce::Component& elsewhere)> act;
    bool onCover, shown;
    int changes;
};

void PrintTo (const Step& s, std::ostream* out) { *out << s.name; }

const Step steps[] = {
    { "ShowingAttachesToTheDesktopAndCentres",
      [] (Desk& d, CountingWindow& w, juce::Component&)
      {
          d.addAndMakeVisible (w);
          w.showCentred();
          EXPECT_EQ (w.getBounds().getCentre(), d.getLocalBounds().getCentre());
      },
      true, true, 1 },
    { "ASecondShowChangesNothingNotEvenThePlace",
      [] (Desk& d, CountingWindow& w, juce::Component&)
      {
          d.addAndMakeVisible (w);
          w.showCentred();
          w.showAt (PseudoModalComponent::atPoint, { 5, 5 }, nullptr);
          EXPECT_EQ (w.getBounds().getCentre(), d.getLocalBounds().getCentre());
      },
      true, true, 1 },
    { "HidingKeepsTheWindowOnItsCover",
      [] (Desk& d, CountingWindow& w, juce::Component&)
      {
          d.addAndMakeVisible (w);
          w.showAt (PseudoModalComponent::atPoint, { 10, 20 }, nullptr);
          EXPECT_EQ (w.getPosition(), juce::Point<int> (10, 20));
          w.hide();
          w.hide();
      },
      true, false, 2 },
    { "WithoutADesktopAWindowIsAPlainChild",
      [] (Desk&, CountingWindow& w, juce::Component& elsewhere)
      {
          elsewhere.addChildComponent (w);
          w.showCentred();
          EXPECT_TRUE (w.isVisible());
          w.hide();
      },
      false, false, 0 },
    { "TakenBackAsAPlainChildItLeavesTheCover",
      [] (Desk& d, CountingWindow& w, juce::Component&)
      {
          d.addAndMakeVisible (w);
          w.showCentred();
          d.addChildComponent (w);
          EXPECT_EQ (d.getIndexOfChildComponent (&w.getCover()), -1);
      },
      false, true, 1 },
};

class PseudoModal : public ::testing::TestWithParam<Step>
{
};
} // namespace

TEST_P (PseudoModal, MovesBetweenDetachedAttachedAndShown)
{
    Desk desk;
    juce::Component elsewhere;
    CountingWindow window;
    window.setSize (100, 60);
    GetParam().act (desk, window, elsewhere);
    EXPECT_EQ (window.getParentComponent() == &window.getCover()
                   && window.getCover().getParentComponent() == &desk,
               GetParam().onCover);
    EXPECT_EQ (window.isShown(), GetParam().shown);
    EXPECT_EQ (window.changes, GetParam().changes);
}

INSTANTIATE_TEST_SUITE_P (Steps, PseudoModal, ::testing::ValuesIn (steps),
                          [] (const ::testing::TestParamInfo<Step>& paramInfo)
                          { return std::string (paramInfo.param.name); });

TEST (PseudoModalCover, TakesEveryClickOutsideTheWindowAndFollowsTheDesktop)
{
    Desk desk;
    juce::Component below;
    below.setBounds (desk.getLocalBounds());
    desk.addAndMakeVisible (below);
    WindowComponent window;
    window.setSize (100, 60);
    desk.addAndMakeVisible (window);
    window.showCentred();
    EXPECT_EQ (desk.getComponentAt (5, 5), &window.getCover()) << "the cover, not the control below";
    EXPECT_EQ (window.getCover().getComponentAt (window.getBounds().getCentre()), &window);

    desk.setSize (600, 500);
    EXPECT_EQ (window.getCover().getBounds(), desk.getLocalBounds());
    EXPECT_EQ (window.getBounds().getCentre(), desk.getLocalBounds().getCentre());
}

TEST (WindowGeometry, TheContentSizeRoundTripsOverEveryBorderTitleAndShadow)
{
    for (const bool border : { false, true })
        for (const bool titleBar : { false, true })
            for (int side = WindowComponent::noShadow; side <= WindowComponent::rightShadow; ++side)
            {
                WindowComponent window;
                window.setBorderVisible (border);
                window.setTitleBarVisible (titleBar);
                window.setShadowSide (side);
                window.setContentSize (300, 200);
                EXPECT_EQ (window.getContentArea().getWidth(), 300) << border << titleBar << side;
                EXPECT_EQ (window.getContentArea().getHeight(), 200) << border << titleBar << side;

                window.setSize (3, 3); // far too small: the content has no room, and no negative size
                EXPECT_GE (window.getContentArea().getWidth(), 0);
                EXPECT_GE (window.getContentArea().getHeight(), 0);
                window.setContentSize (1, 1);
                EXPECT_EQ (window.getBounds().getWidth(), 250) << "a window is never smaller";
                EXPECT_EQ (window.getBounds().getHeight(), 120);
            }
}

TEST (AboutWindowText, NamesTheYearsAndTheFormat)
{
    EXPECT_EQ (AboutWindow::yearSpan ("2008", 2026), "2008-26");
    EXPECT_EQ (AboutWindow::yearSpan ("2026", 2026), "2026") << "in the designation's own year, one year";
    EXPECT_EQ (AboutWindow::technologyLine ("VST3"), "VST Plug-In Technology by Steinberg.");
    EXPECT_FALSE (AboutWindow::technologyLine ("LV2").contains ("VST"));
    EXPECT_FALSE (AboutWindow::technologyLine ("2.4-interface").contains ("VST"));
}

namespace
{
struct Answers final : Zelkora::AlertWindow::Caller
{
    void alertWindowFinished (Zelkora::AlertWindow*, int result) override { results.add (result); }
    juce::Array<int> results;
};
} // namespace

namespace
{
/** The plug-in's own designation, but for its file, which lies deep in a folder of a fixed name. */
struct DeeplyInstalled final : SoftwareDesignation
{
    explicit DeeplyInstalled (const SoftwareDesignation& d)
        : plugin (d)
    {
    }
    juce::String getSoftwareName() const override { return plugin.getSoftwareName(); }
    juce::String getSoftwareDescription() const override { return plugin.getSoftwareDescription(); }
    juce::String getSoftwareVersion() const override { return plugin.getSoftwareVersion(); }
    juce::String getSoftwareHomePage() const override { return plugin.getSoftwareHomePage(); }
    juce::String getSoftwareYear() const override { return plugin.getSoftwareYear(); }
    juce::String getSoftwarePath() const override
    {
        return "/home/someone/music/plug-ins/collections/effects/distortion/bit-reduction/latest/"
               "from-the-vendor/Vantrice.vst3/Contents/x86_64-linux/Vantrice.so";
    }
    juce::String getSoftwareReleaseDate() const override { return plugin.getSoftwareReleaseDate(); }
    juce::String getSoftwareReserved() const override { return plugin.getSoftwareReserved(); }
    juce::String getSoftwareBuild() const override { return plugin.getSoftwareBuild(); }
    juce::String getSoftwareFormat() const override { return "VST3"; }
    juce::String getSoftwareArchitecture() const override { return plugin.getSoftwareArchitecture(); }
    juce::String getSoftwareReservedNumber() const override { return plugin.getSoftwareReservedNumber(); }
    const SoftwareDesignation& plugin;
};
} // namespace

TEST (EditorWindows, AboutAndAlertStandOverADimmedFace)
{
    EditorHarness h;
    AboutWindow::setPresentYear (2026);
    auto* about = h.editor->getAboutWindow();
    ASSERT_NE (about, nullptr);
    about->setSize (550, 190); // the size the editor gives it while no panel shows
    h.editor->controllerEvent (nullptr, h.plugin->getEvents().getEventUid ("About"));
    h.pump();
    EXPECT_TRUE (about->isShown());
    EXPECT_EQ (about->getVendorLine(), "2008-26 Zelkora Sound Works");

    // A click on the cover does nothing; a click on the window closes it.
    auto& knob = h.control<GFXKnob> ("PreampKnob");
    EXPECT_EQ (h.editor->getComponentAt (knob.getBounds().getCentre()), &about->getCover());
    about->mouseDown (juce::MouseEvent (juce::Desktop::getInstance().getMainMouseSource(), {}, {}, 0.0f, 0.0f,
                                        0.0f, 0.0f, 0.0f, about, about, juce::Time(), {}, juce::Time(), 1,
                                        false));
    EXPECT_FALSE (about->isShown());

    // The window at the size the editor gives it without panels, for a VST3 file deep in its folders:
    // the path takes two lines and is cut at the end of the second.
    const DeeplyInstalled deep (*h.plugin);
    AboutWindow deepAbout (deep);
    deepAbout.setSize (550, 190);
    h.editor->addChildComponent (deepAbout);
    deepAbout.sendLookAndFeelChange();
    deepAbout.showCentred();
    h.pump();
    EXPECT_EQ (GoldenImage::check (h.snapshot(), "windows/about-over-face"), "");
    deepAbout.hide();
    AboutWindow::setPresentYear (0);

    Answers answers;
    auto alert =
        Zelkora::AlertWindow::createYesNo ("Clear All", "Do you want to remove every assignment?", &answers);
    alert->setLookAndFeel (&h.editor->getLookAndFeel());
    h.editor->addChildComponent (*alert);
    alert->showCentred();
    h.pump();
    EXPECT_EQ (GoldenImage::check (h.snapshot(), "windows/alert-over-face"), "");
    // The dimmed face: black at a third over it.
    EXPECT_EQ (alert->getCover().isVisible(), true);
    alert->getButton (1)->triggerClick();
    h.pump();
    EXPECT_EQ (answers.results, juce::Array<int> (0));
    EXPECT_FALSE (alert->isShown());
    alert->setLookAndFeel (nullptr);
}

TEST (EditorWindows, ATooWideAlertStaysOneLine)
{
    Answers answers;
    const auto message = juce::String::repeatedString ("a very long message ", 40);
    auto alert = Zelkora::AlertWindow::createYesCancel ("Long", message, &answers);
    DefaultLookAndFeel look;
    alert->setLookAndFeel (&look);
    EXPECT_GT (alert->getWidth(), 633) << "wider than any editor";
    EXPECT_GE ((float) alert->getMessageLabel().getWidth(),
               look.getNormalFont().getStringWidthFloat (message))
        << "room for the message on one line";
    alert->setLookAndFeel (nullptr);
}
