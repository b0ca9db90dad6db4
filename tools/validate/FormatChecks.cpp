#include "FormatChecks.h"

#include "AudioChecks.h"
#include "EditorChecks.h"
#include "IdentityChecks.h"
#include "LifecycleChecks.h"
#include "MidiChecks.h"
#include "ParameterChecks.h"
#include "StateChecks.h"
#include "ThreadChecks.h"

FormatChecks::FormatChecks (PluginLoader& loader, const juce::String& formatName, const juce::File& artefact,
                            const juce::File& scratchRoot, ValidationReport& report)
    : format (loader, formatName, artefact, scratchRoot, report)
{
    report.setScope (FormatUnderTest::labelOf (formatName));
}

const juce::StringArray& FormatChecks::groupNames()
{
    static const juce::StringArray names{ "identity", "parameters", "audio",     "midi",
                                          "state",    "threads",    "lifecycle", "editor" };
    return names;
}

void FormatChecks::run (const juce::StringArray& groups)
{
    const auto wanted = [&groups] (const char* name) { return groups.isEmpty() || groups.contains (name); };

    if (!format.load())
        return;
    if (wanted ("identity"))
        IdentityChecks (format).run();
    // The checks of sound, MIDI, state and threads set and read the 18 parameters.
    if (!wanted ("parameters") || ParameterChecks (format).run())
    {
        if (wanted ("audio"))
            AudioChecks (format).run();
        if (wanted ("midi"))
            MidiChecks (format).run();
        if (wanted ("state"))
            StateChecks (format).run();
        if (wanted ("threads"))
            ThreadChecks (format).run();
    }
    else
    {
        format.getReport().skip ("audio, MIDI, state and thread checks",
                                 "the host does not see the 18 parameters");
    }
    if (wanted ("lifecycle"))
        LifecycleChecks (format).run();
    if (wanted ("editor"))
        EditorChecks (format).run();
}
