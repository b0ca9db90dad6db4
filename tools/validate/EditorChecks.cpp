#include "EditorChecks.h"

#include "ExpectedPlugin.h"
#include "FaceOnScreen.h"
#include "HostParameters.h"
#include "ImageComparison.h"
#include "MessagePump.h"
#include "ScreenGrab.h"
#include "XdoTool.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace
{
// The face and its status bar, and the height with a panel below the face.
constexpr int faceWidth = FaceOnScreen::width, faceHeight = FaceOnScreen::height,
              withPanel = faceHeight + FaceOnScreen::panelHeight, panelTop = FaceOnScreen::panelTop;
// How long the tone plays before the first look, and how far apart the two looks are.
constexpr int settleRounds = 45, apartRounds = 20;
// Where the host's window stands on the virtual screen.
const juce::Point<int> windowPosition (40, 40);

/** A host's window: a plain top-level component holding the editor. */
class HostWindow final : public juce::Component
{
public:
    explicit HostWindow (juce::AudioProcessorEditor& editorToShow)
        : editor (editorToShow)
    {
        setOpaque (true);
        addAndMakeVisible (editor);
        setBounds (windowPosition.x, windowPosition.y, editor.getWidth(), editor.getHeight());
        addToDesktop (0);
        setVisible (true);
    }

    ~HostWindow() override { removeChildComponent (&editor); }

    void paint (juce::Graphics& g) override { g.fillAll (juce::Colours::black); }
    void childBoundsChanged (juce::Component*) override { setSize (editor.getWidth(), editor.getHeight()); }

private:
    juce::AudioProcessorEditor& editor;
};

/** The screen inside the window once the plug-in has drawn it as `expected`, or as it stands when the
    wait runs out. A hosted plug-in draws from its own event loop, some time after its window appears. */
juce::Image shotWhenDrawn (juce::Component& window, const juce::Image& expected)
{
    juce::Image shot;
    MessagePump::runUntil (
        [&]
        {
            shot = ScreenGrab::capture (window.getScreenBounds());
            return ImageComparison::describeDifference (expected, shot).isEmpty();
        },
        MessagePump::defaultRounds);
    return shot;
}
/** A host's audio thread: plays a tone through the instance in real time, its level stepping every tenth
    of a second, so that the meters have something to show. */
class SteppingTone final : public juce::Thread
{
public:
    explicit SteppingTone (juce::AudioProcessor& processorToFeed)
        : juce::Thread ("stepping tone")
        , processor (processorToFeed)
    {
        startThread();
    }

    ~SteppingTone() override { stopThread (stopWaitMilliseconds); }

    void run() override
    {
        // The level climbs the meter's scale a lamp's step (30 dB over 11 lamps) every tenth of a second,
        // from just under the lowest lamp, and starts over after the top one: two looks 200 ms apart see
        // different lamps, and the process lamps, never dark, look the same.
        juce::AudioBuffer<float> block (2, blockSize);
        juce::MidiBuffer midi;
        const double rate = ExpectedPlugin::latencies[0].rate;
        const auto start = juce::Time::getMillisecondCounterHiRes();
        juce::int64 played = 0;
        while (!threadShouldExit())
        {
            const double now = juce::Time::getMillisecondCounterHiRes() - start;
            const int step = (int) (now / stepMilliseconds) % lampSteps;
            const auto level = juce::Decibels::decibelsToGain (lowestDb + lampDb * (float) step);
            for (int i = 0; i < blockSize; ++i)
            {
                const auto sample = level
                                    * (float) std::sin (2.0 * juce::MathConstants<double>::pi * toneHz
                                                        * (double) (played + i) / rate);
                block.setSample (0, i, sample);
                block.setSample (1, i, sample);
            }
            processor.processBlock (block, midi);
            played += blockSize;
            // Keep to real time: the next block is due when the ones played so far have sounded.
            const double due = (double) played / rate * 1000.0;
            const double ahead = due - (juce::Time::getMillisecondCounterHiRes() - start);
            if (ahead > 0.0)
                wait ((int) ahead);
        }
    }

private:
    static constexpr int blockSize = 512, stopWaitMilliseconds = 2000, lampSteps = 12;
    static constexpr double toneHz = 1000.0, stepMilliseconds = 100.0;
    static constexpr float lowestDb = -25.0f, lampDb = 30.0f / 11.0f;
    juce::AudioProcessor& processor;
};

/** Where two pictures differ, as a bounding box per the given areas: how many differing pixels lie in
    them, and how many outside. */
void countDifferences (const juce::Image& a, const juce::Image& b,
                       const juce::Array<juce::Rectangle<int>>& areas, int& inside, int& outside)
{
    inside = outside = 0;
    for (int y = 0; y < juce::jmin (a.getHeight(), b.getHeight()); ++y)
        for (int x = 0; x < juce::jmin (a.getWidth(), b.getWidth()); ++x)
            if (a.getPixelAt (x, y) != b.getPixelAt (x, y))
            {
                bool inArea = false;
                for (const auto& area : areas)
                    inArea = inArea || area.contains (x, y);
                (inArea ? inside : outside) += 1;
            }
}
} // namespace

void EditorChecks::checkBrowserPanel (juce::AudioProcessorEditor& editor, juce::Component& window)
{
    // A click on the browse button opens the browser below the face: the plug-in asks the host for a
    // taller window, and the host's editor follows. A second click closes it again.
    const auto button =
        window.getScreenPosition() + FaceOnScreen::getControlBounds ("BrowsePresetButton").getCentre();
    XdoTool::clickAt (button);
    const bool grew = MessagePump::runUntil ([&] { return editor.getHeight() == withPanel; });
    report.check (grew,
                  "editor: the browse button opens the browser, and the host's editor grows to "
                      + juce::String (faceWidth) + " by " + juce::String (withPanel),
                  juce::String (editor.getWidth()) + " by " + juce::String (editor.getHeight()));
    if (!grew)
        return;
    if (format.getFormatName() == "LV2")
    {
        report.skip ("editor: on the screen the browser is the golden one",
                     "JUCE's LV2 host grows its own editor but not the window it embeds the plug-in's in; "
                     "jalv shows the browser (scripts/host-gui-check)");
    }
    else
    {
        // The face above still shows the tone's last levels: the panel and the bar below it are compared.
        const juce::Rectangle<int> panel (0, panelTop, faceWidth, withPanel - panelTop);
        const auto golden = ImageComparison::loadGolden ("editor/face-with-browser").getClippedImage (panel);
        juce::Image shot;
        MessagePump::runUntil (
            [&]
            {
                shot = ScreenGrab::capture (window.getScreenBounds()).getClippedImage (panel);
                return ImageComparison::describeDifference (golden, shot).isEmpty();
            },
            MessagePump::defaultRounds);
        keep (ScreenGrab::capture (window.getScreenBounds()), "browser");
        report.check (ImageComparison::describeDifference (golden, shot).isEmpty(),
                      "editor: on the screen the browser below the face is the golden one, pixel for pixel",
                      ImageComparison::describeDifference (golden, shot));
    }

    XdoTool::clickAt (button);
    report.check (MessagePump::runUntil ([&] { return editor.getHeight() == faceHeight; }),
                  "editor: a second click closes the browser, and the host's editor is "
                      + juce::String (faceHeight) + " high again",
                  juce::String (editor.getHeight()));
    // JUCE's LV2 host answers the embedded window's size changes with messages that hold its embedding
    // by a plain pointer: they must all have run before the host's editor goes.
    MessagePump::runUntil ([] { return false; }, settleRounds);
}

EditorChecks::EditorChecks (FormatUnderTest& formatToCheck)
    : format (formatToCheck)
    , report (formatToCheck.getReport())
{
}

void EditorChecks::keep (const juce::Image& shot, const juce::String& what) const
{
    const auto folder = juce::SystemStats::getEnvironmentVariable ("VANTRICE_SCREENSHOT_DIR", {});
    if (folder.isEmpty() || shot.isNull())
        return;
    const auto file = juce::File (folder).getChildFile (
        format.getLabel().toLowerCase().replaceCharacter (' ', '-') + "-" + what + ".png");
    file.getParentDirectory().createDirectory();
    file.deleteFile();
    juce::FileOutputStream out (file);
    if (out.openedOk())
        juce::PNGImageFormat().writeImageToStream (shot, out);
}

void EditorChecks::checkMetersMove (juce::AudioProcessor& instance, juce::Component& window)
{
    // The meters' places on the face, from the skin.
    const juce::Array<juce::Rectangle<int>> meters (juce::Rectangle<int> (551, 99, 34, 89),
                                                    juce::Rectangle<int> (585, 100, 37, 89));
    // The plug-in passes the tone unchanged and at its own level: all dry, the output at 0 dB.
    const HostParameters parameters (instance);
    if (parameters.isComplete())
    {
        parameters[ParameterIndex::fx]->setValueNotifyingHost (0.0f);
        parameters[ParameterIndex::outputVolume]->setValueNotifyingHost (0.5f);
    }
    juce::Image first, second;
    {
        SteppingTone tone (instance);
        MessagePump::runUntil ([] { return false; }, settleRounds);
        first = ScreenGrab::capture (window.getScreenBounds());
        MessagePump::runUntil ([] { return false; }, apartRounds);
        second = ScreenGrab::capture (window.getScreenBounds());
    }
    keep (first, "playing-first");
    keep (second, "playing-second");
    int inside = 0, outside = 0;
    countDifferences (first, second, meters, inside, outside);
    report.check (inside > 0 && outside == 0,
                  "editor: while a tone plays, two looks 200 ms apart differ in the meters and nowhere else",
                  juce::String (inside) + " pixels differ in the meters, " + juce::String (outside)
                      + " elsewhere");
}

void EditorChecks::run()
{
    if (juce::SystemStats::getEnvironmentVariable ("DISPLAY", {}).isEmpty())
    {
        report.skip ("editor: on a screen", "there is no screen (DISPLAY)");
        return;
    }
    auto instance = format.createPrepared (ExpectedPlugin::latencies[0].rate, 512);
    if (instance == nullptr)
        return;

    // JUCE's LV2 host embeds the plug-in's window through a window of its own, and learns of the
    // plug-in's window from X on its own connection: now and then the plug-in's window is made before
    // the host listens for it, and the host never shows it. A host's second opening then shows it; a
    // plug-in that fails to draw fails both.
    const int openings = format.getFormatName() == "LV2" ? 2 : 1;
    const auto golden = ImageComparison::loadGolden ("editor/face-defaults");
    bool checked = false;
    for (int opening = 1; opening <= openings && !checked; ++opening)
    {
        std::unique_ptr<juce::AudioProcessorEditor> editor (instance->createEditorIfNeeded());
        if (opening == 1 ? !report.check (editor != nullptr, "editor: the host gets one") : editor == nullptr)
            return;
        {
            HostWindow window (*editor);
            const auto shot = shotWhenDrawn (window, golden);
            const auto difference = golden.isNull() ? juce::String ("no golden face")
                                                    : ImageComparison::describeDifference (golden, shot);
            if (difference.isNotEmpty() && opening < openings)
            {
                window.setVisible (false);
            }
            else
            {
                report.check (
                    editor->getWidth() == faceWidth && editor->getHeight() == faceHeight,
                    "editor: opens at " + juce::String (faceWidth) + " by " + juce::String (faceHeight),
                    juce::String (editor->getWidth()) + " by " + juce::String (editor->getHeight()));
                keep (shot, "editor");
                report.check (difference.isEmpty(),
                              "editor: on the screen it is the golden face, pixel for pixel"
                                  + juce::String (opening > 1 ? " (at the host's second opening)" : ""),
                              difference);
                checkMetersMove (*instance, window);
                checkBrowserPanel (*editor, window);
                checked = true;
            }
        }
        editor.reset();
        MessagePump::runBriefly();
    }
}
