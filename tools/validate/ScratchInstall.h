#pragma once

#include <juce_core/juce_core.h>

/** A built plug-in copied into a folder of its own, as an installation would put it. The plug-in keeps its
    user settings file beside its binary and every instance writes it when it goes, so a copy keeps the
    build's artefacts as they were, keeps runs from reading each other's settings, and lets a check start
    instances with settings of its choice. The folder goes when this object does. */
class ScratchInstall
{
public:
    /** Copies the file or bundle into a new folder under root, under the name given or its own; check
        `isValid` afterwards. */
    ScratchInstall (const juce::File& artefact, const juce::File& root, const juce::String& label,
                    const juce::String& installedName = {});
    ~ScratchInstall();

    bool isValid() const noexcept { return copy.exists() && binaryFolder.isDirectory(); }
    /** The copied file or bundle, which is what a host is given. */
    const juce::File& getPath() const noexcept { return copy; }

    /** Writes the settings file every new instance reads: the preset changing type, "normal" or "silent". */
    bool writeSettings (const juce::String& changingType) const;
    void removeSettings() const;

private:
    juce::File folder, copy, binaryFolder;

    JUCE_DECLARE_NON_COPYABLE (ScratchInstall)
};
