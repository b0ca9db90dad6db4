#include "ScratchInstall.h"

#include "ExpectedPlugin.h"

ScratchInstall::ScratchInstall (const juce::File& artefact, const juce::File& root, const juce::String& label,
                                const juce::String& installedName)
    : folder (root.getChildFile (label))
{
    folder.deleteRecursively();
    if (!folder.createDirectory())
        return;

    copy = folder.getChildFile (installedName.isNotEmpty() ? installedName : artefact.getFileName());
    const bool copied = artefact.isDirectory() ? artefact.copyDirectoryTo (copy) : artefact.copyFileTo (copy);
    if (!copied)
    {
        copy = juce::File();
        return;
    }

    // The binary is the file itself, or the one shared library inside a bundle.
    if (copy.existsAsFile())
        binaryFolder = copy.getParentDirectory();
    else if (const auto found = copy.findChildFiles (juce::File::findFiles, true, "*.so"); !found.isEmpty())
        binaryFolder = found.getFirst().getParentDirectory();
}

ScratchInstall::~ScratchInstall() { folder.deleteRecursively(); }

bool ScratchInstall::writeSettings (const juce::String& changingType) const
{
    juce::XmlElement settings ("UserSettings");
    settings.setAttribute ("application", ExpectedPlugin::name);
    auto* presetSettings = settings.createNewChildElement ("PresetSettings");
    presetSettings->setAttribute ("storing", "onDemand");
    presetSettings->setAttribute ("changing", changingType);
    return settings.writeTo (binaryFolder.getChildFile (juce::String (ExpectedPlugin::name) + ".ini"));
}

void ScratchInstall::removeSettings() const
{
    binaryFolder.getChildFile (juce::String (ExpectedPlugin::name) + ".ini").deleteFile();
}
