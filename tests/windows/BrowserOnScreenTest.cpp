#include "ScreenGrab.h"
#include "skin/TextFieldLift.h"
#include "support/PluginHarness.h"
#include "windows/DefaultLookAndFeel.h"
#include "windows/List.h"
#include "windows/OldStylePresetBrowserWindow.h"
#include "windows/PresetListColumn.h"

#include <gtest/gtest.h>

// Last: its macros would meet JUCE's names.
#include <X11/Xlib.h>

namespace
{
// A user's pace: the second click of a double click comes this soon, keys this often.
constexpr int clickGap = 80, keyGap = 20;
// Time for the screen and the window to answer what the pointer and keys did.
constexpr int settleMilliseconds = 300;
const juce::Point<int> windowPlace (100, 100);

// A bare virtual screen has no window manager, so some properties that JUCE sets on a new window name atoms
// that don't exist there. A host, like JUCE's own apps, lets such errors pass; Xlib's own handler would end
// the program.
int letErrorPass (Display*, XErrorEvent*) { return 0; }

void pump (int milliseconds) { juce::MessageManager::getInstance()->runDispatchLoopUntil (milliseconds); }

/** Runs xdotool with `args`, the message loop going on meanwhile so the window sees what it does. */
bool xdotool (const juce::StringArray& args)
{
    juce::StringArray command ("xdotool");
    command.addArray (args);
    juce::ChildProcess process;
    if (!process.start (command, 0))
        return false;
    while (process.isRunning())
        pump (keyGap);
    pump (settleMilliseconds);
    return process.getExitCode() == 0;
}

bool haveScreen()
{
    if (juce::SystemStats::getEnvironmentVariable ("DISPLAY", {}).isEmpty())
        return false;
    juce::ChildProcess probe;
    return probe.start ("xdotool version", 0) && probe.waitForProcessToFinish (settleMilliseconds * 10)
           && probe.getExitCode() == 0;
}

void saveScreenshot (juce::Component& window, const juce::String& name)
{
    const auto shot = ScreenGrab::capture (window.getScreenBounds().expanded (20));
    const auto file =
        juce::File::getCurrentWorkingDirectory().getChildFile ("screenshots").getChildFile (name);
    file.getParentDirectory().createDirectory();
    file.deleteFile();
    juce::FileOutputStream out (file);
    if (shot.isValid() && out.openedOk())
        juce::PNGImageFormat().writeImageToStream (shot, out);
}
} // namespace

TEST (BrowserOnScreen, ADoubleClickedPresetTakesTheTypedNameOnReturnAndNotOnEscape)
{
    if (!haveScreen())
        GTEST_SKIP() << "needs a screen (DISPLAY) and xdotool; ctest runs it on a virtual one";

    const auto previousHandler = XSetErrorHandler (letErrorPass);
    TextFieldLift::setEnabled (false);
    PluginHarness plugin;
    DefaultLookAndFeel look;
    OldStylePresetBrowserWindow window (*plugin);
    window.setLookAndFeel (&look);
    plugin->getParameterManager().triggerDeferredUpdates();
    pump (settleMilliseconds);
    window.addToDesktop (0);
    window.setTopLeftPosition (windowPlace);
    window.setVisible (true);
    window.toFront (true);
    pump (settleMilliseconds);

    auto& presets = *window.getBrowser().getPresetColumn();
    const auto rowCentre = [&presets] (int row)
    { return presets.getList().getComponentForRowNumber (row)->getScreenBounds().getCentre(); };
    const auto doubleClick = [&] (int row)
    {
        const auto at = rowCentre (row);
        return xdotool ({ "mousemove", "--sync", juce::String (at.x), juce::String (at.y), "click",
                          "--repeat", "2", "--delay", juce::String (clickGap), "1" });
    };

    ASSERT_TRUE (doubleClick (2));
    EXPECT_EQ (plugin->getCurrentPreset(), 2) << "the first click selected the preset";
    ASSERT_TRUE (xdotool ({ "type", "--delay", juce::String (keyGap), "Typed On Screen" }));
    saveScreenshot (window, "browser-renaming.png");
    ASSERT_TRUE (xdotool ({ "key", "Return" }));
    EXPECT_EQ (plugin->getPresetName (2), "Typed On Screen");
    saveScreenshot (window, "browser-renamed.png");

    const auto before = plugin->getPresetName (3);
    ASSERT_TRUE (doubleClick (3));
    ASSERT_TRUE (xdotool ({ "type", "--delay", juce::String (keyGap), "Thrown Away" }));
    ASSERT_TRUE (xdotool ({ "key", "Escape" }));
    EXPECT_EQ (plugin->getPresetName (3), before);
    saveScreenshot (window, "browser-after-escape.png");

    window.removeFromDesktop();
    window.setLookAndFeel (nullptr);
    XSetErrorHandler (previousHandler);
}
