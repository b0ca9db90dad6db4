#include "FormatChecks.h"

#include "AudioChecks.h"
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

void FormatChecks::run()
{
    if (!format.load())
        return;
    IdentityChecks (format).run();
    // The checks of sound, MIDI, state and threads set and read the 18 parameters.
    if (ParameterChecks (format).run())
    {
        AudioChecks (format).run();
        MidiChecks (format).run();
        StateChecks (format).run();
        ThreadChecks (format).run();
    }
    else
    {
        format.getReport().skip ("audio, MIDI, state and thread checks",
                                 "the host does not see the 18 parameters");
    }
    LifecycleChecks (format).run();
}
