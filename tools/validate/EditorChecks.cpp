#include "EditorChecks.h"

#include "ExpectedPlugin.h"
#include "ImageComparison.h"
#include "MessagePump.h"
#include "ScreenGrab.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace
{
// The face and its status bar.
constexpr int faceWidth = 633, faceHeight = 223;
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
} // namespace

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

    std::unique_ptr<juce::AudioProcessorEditor> editor (instance->createEditorIfNeeded());
    if (!report.check (editor != nullptr, "editor: the host gets one"))
        return;
    report.check (editor->getWidth() == faceWidth && editor->getHeight() == faceHeight,
                  "editor: opens at " + juce::String (faceWidth) + " by " + juce::String (faceHeight),
                  juce::String (editor->getWidth()) + " by " + juce::String (editor->getHeight()));

    {
        HostWindow window (*editor);
        const auto golden = ImageComparison::loadGolden ("editor/face-defaults");
        const auto shot = shotWhenDrawn (window, golden);
        keep (shot, "editor");
        report.check (golden.isValid() && ImageComparison::describeDifference (golden, shot).isEmpty(),
                      "editor: on the screen it is the golden face, pixel for pixel",
                      golden.isNull() ? juce::String ("no golden face")
                                      : ImageComparison::describeDifference (golden, shot));
    }
    editor.reset();
    MessagePump::runBriefly();
}
