#include "ValidatorApplication.h"

#include "CrossFormatChecks.h"
#include "FaceOnScreen.h"
#include "FormatChecks.h"
#include "ScreenGrab.h"
#include "StandaloneChecks.h"

#include <cstdlib>
#include <iostream>

const juce::String ValidatorApplication::getApplicationName() { return "vantrice-validate"; }
const juce::String ValidatorApplication::getApplicationVersion() { return VANTRICE_VERSION; }

void ValidatorApplication::initialise (const juce::String&)
{
    // Run here rather than from a message: the checks run the message loop themselves, which JUCE's
    // event loop doesn't take from inside one of its own callbacks.
    juce::Logger::setCurrentLogger (&logger);
    setApplicationReturnValue (runCommand (getCommandLineParameterArray()));
    juce::Logger::setCurrentLogger (nullptr);
    quit();
}

void ValidatorApplication::printUsage()
{
    std::cerr << "usage: vantrice-validate --format 2.4|VST3|LV2 PATH [--only GROUP,...]\n"
                 "       vantrice-validate --cross 2.4-PATH VST3-PATH LV2-PATH\n"
                 "       vantrice-validate --standalone APP OUTPUT-FOLDER\n"
                 "       vantrice-validate --screenshot PICTURE.png\n"
                 "       vantrice-validate --find-face PICTURE.png [NAME]\n"
                 "Loads the plug-in as a host does and checks it; one line per check, then a count.\n"
                 "2.4 is the 2.4-interface library. Groups: "
              << FormatChecks::groupNames().joinIntoString (", ") << ".\n";
}

bool ValidatorApplication::useScratchHome (const ScratchFolder& root)
{
    // Neither the user's installed plug-ins nor their settings may take part.
    const auto home = root.getChildFile ("home");
    if (!root.isValid() || !home.createDirectory())
        return false;
    setenv ("HOME", home.getFullPathName().toRawUTF8(), 1);
    setenv ("XDG_CONFIG_HOME", home.getChildFile (".config").getFullPathName().toRawUTF8(), 1);
    return true;
}

int ValidatorApplication::runScreenCommand (const juce::StringArray& args)
{
    const auto file = juce::File::getCurrentWorkingDirectory().getChildFile (args[1]);
    if (args[0] == "--screenshot")
    {
        const auto shot = ScreenGrab::captureScreen();
        file.deleteFile();
        juce::FileOutputStream out (file);
        if (shot.isNull() || !out.openedOk() || !juce::PNGImageFormat().writeImageToStream (shot, out))
        {
            std::cerr << "vantrice-validate: cannot take a screenshot into " << file.getFullPathName()
                      << std::endl;
            return 1;
        }
        return 0;
    }
    // --find-face: where the face stands, and whether its name field shows the name given.
    const auto screen = juce::ImageFileFormat::loadFrom (file);
    const auto origin = FaceOnScreen::findFace (screen);
    if (origin.x < 0)
    {
        std::cout << "no face" << std::endl;
        return 1;
    }
    std::cout << "face at " << origin.x << " " << origin.y << std::endl;
    if (args.size() == 3 && !FaceOnScreen::showsName (screen, origin, args[2]))
    {
        std::cout << "the name field does not show \"" << args[2] << "\"" << std::endl;
        return 1;
    }
    return 0;
}

int ValidatorApplication::runCommand (const juce::StringArray& args)
{
    if ((args.size() == 2 && args[0] == "--screenshot")
        || ((args.size() == 2 || args.size() == 3) && args[0] == "--find-face"))
        return runScreenCommand (args);

    // "--only" names groups of checks, for the slow builds that need some of them only.
    juce::StringArray groups;
    if (args.size() == 5 && args[3] == "--only")
    {
        groups.addTokens (args[4], ",", {});
        groups.removeEmptyStrings();
        for (const auto& group : groups)
            if (!FormatChecks::groupNames().contains (group))
            {
                std::cerr << "vantrice-validate: no group of checks is called \"" << group << "\""
                          << std::endl;
                return 2;
            }
    }
    const bool oneFormat = (args.size() == 3 || (args.size() == 5 && !groups.isEmpty()))
                           && args[0] == "--format" && FormatUnderTest::formatNameOf (args[1]).isNotEmpty();
    const bool crossFormat = args.size() == 4 && args[0] == "--cross";
    const bool standalone = args.size() == 3 && args[0] == "--standalone";
    if (!oneFormat && !crossFormat && !standalone)
    {
        printUsage();
        return 2;
    }

    // Every run has a folder of its own: ctest starts several validators at once, and each installs its
    // copies of the plug-ins there and removes them at the end.
    const ScratchFolder scratch ("vantrice-validate");
    if (!useScratchHome (scratch))
    {
        std::cerr << "vantrice-validate: cannot make a scratch folder under "
                  << juce::File::getSpecialLocation (juce::File::tempDirectory).getFullPathName()
                  << std::endl;
        return 2;
    }
    const auto& scratchRoot = scratch.getFolder();
    const auto cwd = juce::File::getCurrentWorkingDirectory();
    ValidationReport report;
    if (standalone)
    {
        StandaloneChecks (cwd.getChildFile (args[1]), cwd.getChildFile (args[2]), scratchRoot, report).run();
    }
    else
    {
        PluginLoader loader;
        if (oneFormat)
            FormatChecks (loader, FormatUnderTest::formatNameOf (args[1]), cwd.getChildFile (args[2]),
                          scratchRoot, report)
                .run (groups);
        else
            CrossFormatChecks (
                loader,
                { cwd.getChildFile (args[1]), cwd.getChildFile (args[2]), cwd.getChildFile (args[3]) },
                scratchRoot, report)
                .run();
    }
    report.printSummary();
    return report.getNumFailed() == 0 ? 0 : 1;
}
