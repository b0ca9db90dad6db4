#include "StandaloneChecks.h"

#include "FaceOnScreen.h"
#include "ImageComparison.h"
#include "ScreenGrab.h"
#include "XdoTool.h"

#include "common/ResourceLoader.h"

#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace
{
// The buttons a user clicks, at their middles, from their places in the skin.
juce::Point<int> middleOf (const char* control)
{
    return FaceOnScreen::getControlBounds (control).getCentre();
}
constexpr int panelHeight = FaceOnScreen::panelHeight;
// In the docked browser: the middle of the preset column's second row, rows being 20 pixels from the
// column's top at 226. In the options panel: the "Midi Control" tab, and a line of the map table's header
// below its titles, grey 110 from 100 to 500 across but for the darker grey 91 of the "CC" columns.
const juce::Point<int> secondPresetRow (400, 226 + 20 + 20 / 2);
const juce::Point<int> midiControlTab (120, 233);
constexpr int tableHeaderY = 292, tableHeaderLeft = 100, tableHeaderRight = 500, tableHeaderGrey = 110,
              ccColumnGrey = 91;
// Left of the about window, which is centred and 550 wide: the dimmed cover over the face.
const juce::Point<int> besideAbout (15, 100);
constexpr int faceWidth = FaceOnScreen::width, faceHeight = FaceOnScreen::height;
// Above the face the app's window has JUCE's title bar and its notice about the muted input.
constexpr int titleAndNotice = 60;

// Waits are bounds, not timings: each polls in short steps and gives up after its bound.
constexpr int windowWaitRounds = 3000; // thirty seconds for the window to appear
constexpr int quitWaitRounds = 1000;   // ten seconds to quit
constexpr int pollMilliseconds = 10;
constexpr int settleMilliseconds = 150; // a field unchanged this long has settled

// A hold of the Next button: a second and a quarter. The button fires once a second after the press,
// then every tenth of a second while held, and once more at the release.
constexpr int holdMilliseconds = 1250, repeatDelay = 1000, repeatInterval = 100;
int eventsForHold (double milliseconds)
{
    const int repeats =
        milliseconds < repeatDelay ? 0 : 1 + (int) std::floor ((milliseconds - repeatDelay) / repeatInterval);
    return repeats + 1;
}

bool poll (const std::function<bool()>& done, int rounds)
{
    for (int i = 0; i < rounds; ++i)
    {
        if (done())
            return true;
        juce::Thread::sleep (pollMilliseconds);
    }
    return done();
}

juce::StringArray factoryPresetNames()
{
    juce::StringArray names;
    if (auto bank = juce::parseXML (loadResourceText ("default.vtprsb")))
        for (auto* group : bank->getChildIterator())
            for (auto* preset : group->getChildIterator())
                names.add (preset->getStringAttribute ("name"));
    return names;
}

bool writePng (const juce::Image& image, const juce::File& file)
{
    file.deleteFile();
    juce::FileOutputStream out (file);
    return out.openedOk() && juce::PNGImageFormat().writeImageToStream (image, out);
}
} // namespace

StandaloneChecks::StandaloneChecks (const juce::File& appToRun, const juce::File& outputFolderToUse,
                                    const juce::File& scratchRoot, ValidationReport& reportToUse)
    : app (appToRun)
    , outputFolder (outputFolderToUse)
    , installFolder (scratchRoot.getChildFile ("standalone"))
    , report (reportToUse)
{
    report.setScope ("Standalone");
}

void StandaloneChecks::run()
{
    if (!start())
        return;
    if (findEditor())
    {
        checkPresetSteps();
        checkTyping();
        checkAboutWindow();
        checkPanels();
    }
    quit();
    checkWhatWasKept();
}

bool StandaloneChecks::start()
{
    outputFolder.createDirectory();
    installFolder.createDirectory();
    // The app keeps the plug-in's settings beside its binary, and its own in the home folder: both are
    // the run's own.
    const auto installed = installFolder.getChildFile ("Vantrice");
    if (!report.check (app.copyFileTo (installed) && installed.setExecutePermission (true),
                       "the app can be installed for the run", app.getFullPathName()))
        return false;

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init (&actions);
    const auto log = outputFolder.getChildFile ("app.log").getFullPathName();
    posix_spawn_file_actions_addopen (&actions, STDOUT_FILENO, log.toRawUTF8(), O_WRONLY | O_CREAT | O_TRUNC,
                                      0644);
    posix_spawn_file_actions_adddup2 (&actions, STDOUT_FILENO, STDERR_FILENO);
    const auto path = installed.getFullPathName().toStdString();
    char* argv[] = { const_cast<char*> (path.c_str()), nullptr };
    const bool started = posix_spawn (&pid, path.c_str(), &actions, nullptr, argv, environ) == 0;
    posix_spawn_file_actions_destroy (&actions);
    return report.check (started, "the app starts");
}

bool StandaloneChecks::findEditor()
{
    juce::String window;
    poll (
        [&]
        {
            window = XdoTool::run ({ "search", "--onlyvisible", "--name", "^Vantrice$" }).trim();
            return window.isNotEmpty();
        },
        windowWaitRounds);
    windowId = window.upToFirstOccurrenceOf ("\n", false, false);
    if (!report.check (window.isNotEmpty(), "the app opens a window named \"Vantrice\"",
                       "none; the app's output is in "
                           + outputFolder.getChildFile ("app.log").getFullPathName()))
        return false;

    // The face is found where it is drawn, wherever the app and the window manager put it.
    juce::Image screen;
    poll (
        [&]
        {
            screen = ScreenGrab::captureScreen();
            editorOrigin = FaceOnScreen::findFace (screen);
            return FaceOnScreen::isGoldenFace (screen, editorOrigin);
        },
        windowWaitRounds);
    writePng (screen, outputFolder.getChildFile ("standalone-start.png"));
    return report.check (editorOrigin.x >= 0, "its window holds the golden face, pixel for pixel",
                         "not found; the screen is in "
                             + outputFolder.getChildFile ("standalone-start.png").getFullPathName());
}

void StandaloneChecks::clickAt (juce::Point<int> inEditor) { XdoTool::clickAt (editorOrigin + inEditor); }

juce::Image StandaloneChecks::grabEditor (int height) const
{
    return ScreenGrab::capture (
        { editorOrigin.x, editorOrigin.y, faceWidth, height > 0 ? height : faceHeight });
}

void StandaloneChecks::checkPresetSteps()
{
    const auto names = factoryPresetNames();
    auto shows = [this] (const juce::String& name)
    {
        return poll ([&]
                     { return FaceOnScreen::showsName (ScreenGrab::captureScreen(), editorOrigin, name); },
                     windowWaitRounds / 10);
    };

    clickAt (middleOf ("NextPresetButton"));
    expectedPreset = 1;
    report.check (shows (names[1]), "a click on Next shows the next preset, " + names[1].quoted());

    // The hold's length as the app saw it lies between the time from the press's return to the
    // release's start and the time from the press's start to the release's return.
    const auto at = editorOrigin + middleOf ("NextPresetButton");
    XdoTool::run ({ "mousemove", juce::String (at.x), juce::String (at.y) });
    const auto pressStart = juce::Time::getMillisecondCounterHiRes();
    XdoTool::run ({ "mousedown", "1" });
    const auto pressed = juce::Time::getMillisecondCounterHiRes();
    juce::Thread::sleep (holdMilliseconds);
    const auto releaseStart = juce::Time::getMillisecondCounterHiRes();
    XdoTool::run ({ "mouseup", "1" });
    const auto released = juce::Time::getMillisecondCounterHiRes();
    holdEventsLow = eventsForHold (releaseStart - pressed);
    holdEventsHigh = eventsForHold (released - pressStart);

    // The field settles on the last preset the hold reached; a late repeat timer catches up with one
    // event more at most (JUCE shortens the next repeat after a late one).
    juce::Image previous, field;
    poll (
        [&]
        {
            field = grabEditor().getClippedImage (FaceOnScreen::getNameField());
            const bool still =
                previous.isValid() && ImageComparison::describeDifference (previous, field).isEmpty();
            previous = field;
            juce::Thread::sleep (settleMilliseconds);
            return still;
        },
        windowWaitRounds / 10);
    int shown = -1;
    for (int events = holdEventsLow; events <= holdEventsHigh + 1 && shown < 0; ++events)
        if (FaceOnScreen::showsName (ScreenGrab::captureScreen(), editorOrigin, names[1 + events]))
            shown = 1 + events;
    expectedPreset = shown;
    report.check (shown >= 0,
                  "holding Next for " + juce::String (holdMilliseconds)
                      + " ms steps on: " + juce::String (holdEventsLow) + " to "
                      + juce::String (holdEventsHigh) + " presets for the hold the app saw",
                  "the name field shows none of them");
    writePng (grabEditor(), outputFolder.getChildFile ("standalone-after-next.png"));
}

void StandaloneChecks::checkTyping()
{
    typedName = "Typed Name";
    clickAt (FaceOnScreen::getNameField().getCentre());
    XdoTool::run ({ "key", "--delay", "20", "--repeat", "30", "BackSpace" });
    XdoTool::run ({ "type", "--delay", "30", typedName });
    XdoTool::run ({ "key", "Return" });
    const bool typed =
        poll ([&] { return FaceOnScreen::showsName (ScreenGrab::captureScreen(), editorOrigin, typedName); },
              windowWaitRounds / 10);
    writePng (grabEditor(), outputFolder.getChildFile ("standalone-typed.png"));
    report.check (typed, "a clicked name field takes typing: it shows " + typedName.quoted());

    // The name went to the preset: away to the next one and back, the field shows it again.
    clickAt (middleOf ("NextPresetButton"));
    const bool away =
        poll ([&] { return !FaceOnScreen::showsName (ScreenGrab::captureScreen(), editorOrigin, typedName); },
              windowWaitRounds / 10);
    clickAt (middleOf ("PrevPresetButton"));
    const bool back =
        poll ([&] { return FaceOnScreen::showsName (ScreenGrab::captureScreen(), editorOrigin, typedName); },
              windowWaitRounds / 10);
    report.check (away && back,
                  "the typed name renamed the preset: it is there again after Next and Previous");
}

void StandaloneChecks::checkAboutWindow()
{
    // The about window is black: where it shows, most of the face is.
    auto showsAbout = [this]
    {
        const auto shot = grabEditor();
        int black = 0;
        for (int y = 0; y < shot.getHeight(); ++y)
            for (int x = 0; x < shot.getWidth(); ++x)
                black += shot.getPixelAt (x, y).getBrightness() == 0.0f ? 1 : 0;
        return black * 2 > shot.getWidth() * shot.getHeight();
    };
    const auto before = grabEditor();
    const auto at = editorOrigin + middleOf ("OptionsButton");
    XdoTool::run ({ "mousemove", juce::String (at.x), juce::String (at.y), "keydown", "ctrl", "click", "1",
                    "keyup", "ctrl" });
    const bool opened = poll (showsAbout, windowWaitRounds / 10);
    writePng (grabEditor(), outputFolder.getChildFile ("standalone-about.png"));
    report.check (opened, "Ctrl and a click on the options button open the about window");
    if (!opened)
        return;

    // The cover around the window takes clicks and does nothing with them.
    clickAt (besideAbout);
    juce::Thread::sleep (settleMilliseconds);
    report.check (showsAbout(), "a click on the dimmed face beside the about window leaves it open");

    clickAt (FaceOnScreen::getNameField().getCentre());
    const bool closed =
        poll ([&] { return ImageComparison::describeDifference (before, grabEditor()).isEmpty(); },
              windowWaitRounds / 10);
    report.check (closed, "a click on the about window closes it, and the face is as it was",
                  ImageComparison::describeDifference (before, grabEditor()));
}

int StandaloneChecks::windowHeight()
{
    const auto geometry = XdoTool::run ({ "getwindowgeometry", "--shell", windowId });
    for (auto line : juce::StringArray::fromLines (geometry))
        if (line.startsWith ("HEIGHT="))
            return line.fromFirstOccurrenceOf ("=", false, false).getIntValue();
    return -1;
}

bool StandaloneChecks::clickAndWaitForHeight (juce::Point<int> button, int height)
{
    clickAt (button);
    return poll ([&] { return windowHeight() == height; }, windowWaitRounds / 10);
}

void StandaloneChecks::checkPanels()
{
    const int faceOnly = windowHeight();
    const auto saveWhole = [this] (const char* name)
    {
        writePng (
            ScreenGrab::capture ({ editorOrigin.x, editorOrigin.y, faceWidth, faceHeight + panelHeight }),
            outputFolder.getChildFile (name));
    };

    const bool browserOpened =
        clickAndWaitForHeight (middleOf ("BrowsePresetButton"), faceOnly + panelHeight);
    report.check (browserOpened,
                  "a click on the browse button opens the browser: the window grows by "
                      + juce::String (panelHeight) + " pixels",
                  "it is " + juce::String (windowHeight()) + " high, was " + juce::String (faceOnly));
    if (!browserOpened)
        return;
    saveWhole ("standalone-browser.png");

    // A click in the browser's preset column makes that preset the current one; a double click on it,
    // a typed name and Return rename it, and the face shows the new name.
    const auto names = factoryPresetNames();
    clickAt (secondPresetRow);
    const bool selected =
        poll ([&] { return FaceOnScreen::showsName (ScreenGrab::captureScreen(), editorOrigin, names[1]); },
              windowWaitRounds / 10);
    report.check (selected,
                  "a click on a preset in the browser selects it: the face shows " + names[1].quoted());
    expectedPreset = 1;

    browsedName = "Browsed Name";
    const auto at = editorOrigin + secondPresetRow;
    XdoTool::run ({ "mousemove", juce::String (at.x), juce::String (at.y), "click", "--repeat", "2",
                    "--delay", "80", "1" });
    juce::Thread::sleep (settleMilliseconds);
    XdoTool::run ({ "key", "ctrl+a" });
    XdoTool::run ({ "type", "--delay", "30", browsedName });
    XdoTool::run ({ "key", "Return" });
    const bool renamed = poll (
        [&] { return FaceOnScreen::showsName (ScreenGrab::captureScreen(), editorOrigin, browsedName); },
        windowWaitRounds / 10);
    saveWhole ("standalone-browser-renamed.png");
    report.check (renamed, "a double-clicked preset takes a typed name on Return: the face shows "
                               + browsedName.quoted());

    report.check (clickAndWaitForHeight (middleOf ("BrowsePresetButton"), faceOnly),
                  "a second click on the browse button closes the browser, and the window is as before");

    // The options: the "Midi Control" tab shows the table of controllers and parameters.
    const bool optionsOpened = clickAndWaitForHeight (middleOf ("OptionsButton"), faceOnly + panelHeight);
    report.check (optionsOpened, "a click on the options button opens the options: the window grows by "
                                     + juce::String (panelHeight) + " pixels");
    if (!optionsOpened)
        return;
    saveWhole ("standalone-options.png");
    auto showsTable = [this]
    {
        const auto shot = grabEditor (faceHeight + panelHeight);
        for (int x = tableHeaderLeft; x <= tableHeaderRight; ++x)
        {
            const int red = shot.getPixelAt (x, tableHeaderY).getRed();
            if (red != tableHeaderGrey && red != ccColumnGrey)
                return false;
        }
        return true;
    };
    clickAt (midiControlTab);
    const bool table = poll (showsTable, windowWaitRounds / 10);
    saveWhole ("standalone-midi-control.png");
    report.check (table, "the \"Midi Control\" tab shows the table of controllers and parameters");
    report.check (clickAndWaitForHeight (middleOf ("OptionsButton"), faceOnly),
                  "a second click on the options button closes them, and the window is as before");
}

juce::Point<int> StandaloneChecks::findCloseButton() const
{
    // JUCE's own title bar, above the input notice and the face, draws its close button as a red cross
    // at its right end: the middle of the red pixels there is the place to click.
    const auto bar =
        ScreenGrab::capture ({ editorOrigin.x, editorOrigin.y - titleAndNotice, faceWidth, titleAndNotice });
    juce::Point<int> sum;
    int count = 0;
    for (int y = 0; y < bar.getHeight(); ++y)
        for (int x = 0; x < bar.getWidth(); ++x)
        {
            const auto c = bar.getPixelAt (x, y);
            if (c.getRed() > 150 && c.getGreen() < 90 && c.getBlue() < 90)
            {
                sum += { x, y };
                ++count;
            }
        }
    if (count == 0)
        return { -1, -1 };
    return { editorOrigin.x + sum.x / count, editorOrigin.y - titleAndNotice + sum.y / count };
}

void StandaloneChecks::quit()
{
    // The window's close button is how a user quits, and what makes the app keep the plug-in's state.
    const auto close = editorOrigin.x >= 0 ? findCloseButton() : juce::Point<int> (-1, -1);
    report.check (close.x >= 0, "its window has a close button");
    if (close.x >= 0)
        XdoTool::run ({ "mousemove", juce::String (close.x), juce::String (close.y), "click", "1" });
    else
        kill (pid, SIGINT);
    int status = 0;
    const bool ended = poll ([&] { return waitpid (pid, &status, WNOHANG) == pid; }, quitWaitRounds);
    if (!ended)
    {
        kill (pid, SIGKILL);
        waitpid (pid, &status, 0);
    }
    report.check (ended, "the app quits when its window is closed");
    report.check (ended && WIFEXITED (status) && WEXITSTATUS (status) == 0, "and its exit status is 0",
                  "status " + juce::String (status));
}

void StandaloneChecks::checkWhatWasKept()
{
    report.check (installFolder.getChildFile ("Vantrice.ini").existsAsFile(),
                  "the plug-in was shut down: it wrote its settings beside the app");
    const auto log = outputFolder.getChildFile ("app.log").loadFileAsString().toLowerCase();
    report.check (!log.contains ("segmentation") && !log.contains ("abort") && !log.contains ("assert")
                      && !log.contains ("leak"),
                  "the app reported no crash, assertion or leak",
                  "see " + outputFolder.getChildFile ("app.log").getFullPathName());

    // The app keeps the plug-in's state in its own settings, as a host keeps it in a project.
    const auto settings = juce::File::getSpecialLocation (juce::File::userHomeDirectory)
                              .getChildFile (".config/Vantrice.settings");
    juce::MemoryBlock chunk;
    std::unique_ptr<juce::XmlElement> state;
    if (auto properties = juce::parseXML (settings))
        for (auto* value : properties->getChildIterator())
            if (value->getStringAttribute ("name") == "filterState"
                && chunk.fromBase64Encoding (value->getStringAttribute ("val")))
                state = juce::AudioProcessor::getXmlFromBinary (chunk.getData(), (int) chunk.getSize());
    auto* presets = state != nullptr ? state->getChildByName ("PresetsState") : nullptr;
    const int kept = presets != nullptr ? presets->getIntAttribute ("currentPreset", -1) : -1;
    report.check (expectedPreset > 0 && kept == expectedPreset,
                  "the app kept the state it quit with: preset " + juce::String (expectedPreset)
                      + " selected",
                  "preset " + juce::String (kept) + " in " + settings.getFullPathName());

    // The bank's presets in order, across its groups: the selected one bears the typed name.
    juce::StringArray names;
    if (auto* bank = presets != nullptr ? presets->getChildByName ("PresetBank") : nullptr)
        for (auto* group : bank->getChildIterator())
            for (auto* preset : group->getChildIterator())
                names.add (preset->getStringAttribute ("name"));
    report.check (names[kept] == browsedName && names.contains (typedName),
                  "and its bank keeps the names typed in the browser and in the face",
                  "the selected preset is " + names[kept].quoted());
}
