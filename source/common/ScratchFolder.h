#pragma once

#include <juce_core/juce_core.h>

/** A new folder under the system's temporary folder that no other process can be given, removed with
    everything in it when the object goes. The name is chosen and the folder made in one step by the
    system (mkdtemp), so processes started at the same moment never share one, as they could if a free
    name were picked first and made afterwards. */
class ScratchFolder final
{
public:
    /** `prefix` starts the folder's name; the system adds six characters of its own. If no folder could be
        made, `getFolder` is a null file and `isValid` false. */
    explicit ScratchFolder (const juce::String& prefix);
    ~ScratchFolder();

    ScratchFolder (const ScratchFolder&) = delete;
    ScratchFolder& operator= (const ScratchFolder&) = delete;

    bool isValid() const noexcept { return folder != juce::File(); }
    const juce::File& getFolder() const noexcept { return folder; }
    juce::File getChildFile (const juce::String& name) const { return folder.getChildFile (name); }

private:
    juce::File folder;
};
