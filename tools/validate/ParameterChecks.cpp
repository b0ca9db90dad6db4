#include "ParameterChecks.h"

#include "BlockRunner.h"
#include "ExpectedPlugin.h"
#include "HostParameters.h"
#include "MessagePump.h"
#include "ParameterWatcher.h"
#include "StateDocument.h"

#include <cmath>
#include <limits>
#include <set>

namespace
{
constexpr double checkRate = 44100.0;
constexpr int checkBlock = 256; // a common host block size

// Opcode of the 2.4 interface with which a host hands the plug-in a typed text for a parameter.
constexpr juce::int32 string2ParameterOpcode = 27;

struct TextCase
{
    int index;
    float value;
    const char* text;
    bool linked; // the state of "Link Channels" the text belongs to
};

// Typed texts and the values they must give.
const TextCase entryCases[] = {
    { ParameterIndex::preamp, 0.5f, "+24.0dB", false },
    { ParameterIndex::leftBits, 0.5f, "9 bits", false },
    { ParameterIndex::leftBits, 1.0f, "Quant. Off", false },
    { ParameterIndex::leftLinkFreq, 1.0f, "On", false },
    { ParameterIndex::leftFilterType, 0.5f, "HP", false },
    { ParameterIndex::leftReso, 0.5f, "50%", false },
    { ParameterIndex::rightFilterType, 0.75f, "BR", false },
    { ParameterIndex::linkChannels, 0.0f, "Off", false },
    { ParameterIndex::fx, 0.25f, "75/25% (Dry/Wet)", false },
    { ParameterIndex::outputVolume, 0.5f, "0.0dB", false },
    { ParameterIndex::leftFilterOrder, 1.0f, "Pre", false },
};

// Typed texts of continuous parameters, which must come back as typed.
const TextCase roundTripCases[] = {
    { ParameterIndex::leftFrequency, 0.0f, "11025Hz", false },
    { ParameterIndex::leftCutoff, 0.0f, "1000Hz", false },
    { ParameterIndex::preamp, 0.0f, "+12.5dB", false },
};

juce::String name (int index) { return ExpectedPlugin::parameters[(size_t) index].name; }

juce::String quoted (const juce::String& text) { return "\"" + text + "\""; }

/** Lets a hosted instance take in what the host set. */
void deliver (juce::AudioPluginInstance& instance) { FormatUnderTest::playSilence (instance, checkBlock); }
} // namespace

ParameterChecks::ParameterChecks (FormatUnderTest& formatToCheck)
    : format (formatToCheck)
    , report (formatToCheck.getReport())
{
}

bool ParameterChecks::run()
{
    auto instance = format.createPrepared (checkRate, checkBlock);
    if (instance == nullptr)
        return false;

    const HostParameters parameters (*instance);
    if (!report.check (parameters.isComplete(), "parameters: the host sees the 18 parameters",
                       "it has none named " + parameters.getMissing().joinIntoString (", ")))
        return false;

    juce::StringArray hostOrder;
    const int shown = 20; // ours and a few of a format's own
    for (auto* parameter : instance->getParameters())
        if (hostOrder.size() < shown)
            hostOrder.add (quoted (parameter->getName (1024)));
    report.check (parameters.isInPluginOrder(), "parameters: listed in the plug-in's order",
                  "the host lists " + hostOrder.joinIntoString (", "));

    // Formats may add parameters of their own: VST3 a bypass switch, and the controllers of its MIDI
    // mapping, through which VST3 hosts send controller messages.
    juce::StringArray others;
    for (auto* parameter : instance->getParameters())
    {
        const auto otherName = parameter->getName (1024);
        const bool formatsOwn = parameter == instance->getBypassParameter()
                                || (format.getFormatName() == "VST3" && otherName.startsWith ("MIDI CC "));
        if (parameters.pluginIndexOf (parameter->getParameterIndex()) < 0 && !formatsOwn)
            others.add (quoted (otherName));
    }
    report.check (others.isEmpty(), "parameters: no others but the format's own",
                  others.joinIntoString (", "));

    checkDefaultsAndStart (*instance, parameters);
    checkTexts (*instance, parameters);
    checkSteps (*instance, parameters);
    checkTextEntry (*instance, parameters);
    instance.reset();
    checkAutomationEcho();
    return true;
}

void ParameterChecks::checkDefaultsAndStart (juce::AudioPluginInstance& instance,
                                             const HostParameters& parameters)
{
    juce::StringArray wrongDefaults, notAutomatable;
    for (int i = 0; i < ExpectedPlugin::numParameters; ++i)
    {
        const auto& expected = ExpectedPlugin::parameters[(size_t) i];
        auto* parameter = parameters[i];
        if (parameter->getDefaultValue() != expected.startValue)
            wrongDefaults.add (name (i) + " = " + juce::String (parameter->getDefaultValue()));
        if (!parameter->isAutomatable())
            notAutomatable.add (name (i));
    }
    if (isInterface24())
        report.skip ("parameters: default values told to the host", "the 2.4 interface has no call for them");
    else
        report.check (wrongDefaults.isEmpty(), "parameters: default values told to the host",
                      wrongDefaults.joinIntoString (", "));
    report.check (notAutomatable.isEmpty(), "parameters: all automatable",
                  notAutomatable.joinIntoString (", "));

    // A new instance starts with the first preset of its bank applied, and the host shows its values once
    // it has played a block (LV2 sends values with the audio).
    deliver (instance);
    juce::StringArray wrongValues;
    const auto state = format.getStateXml (instance);
    auto* first = state != nullptr ? StateDocument::getPreset (*state, 0) : nullptr;
    if (first != nullptr)
        for (auto* param : first->getChildWithTagNameIterator ("param"))
        {
            const int index = ExpectedPlugin::indexOf (param->getStringAttribute ("name"));
            const float value = (float) param->getDoubleAttribute ("value");
            if (index >= 0 && parameters[index]->getValue() != value)
                wrongValues.add (name (index) + " = " + juce::String (parameters[index]->getValue(), 7)
                                 + ", not " + juce::String (value, 7));
        }
    report.check (first != nullptr && wrongValues.isEmpty(),
                  "parameters: a new instance starts with the bank's first preset, and the host shows it",
                  first == nullptr ? juce::String ("no preset in the state")
                                   : wrongValues.joinIntoString (", "));
}

juce::String ParameterChecks::textAt (juce::AudioProcessorParameter& parameter, float value)
{
    if (isInterface24())
    {
        // The 2.4 interface shows the current value only: set it, then ask.
        parameter.setValue (value);
        return parameter.getCurrentValueAsText();
    }
    return parameter.getText (value, 1024);
}

float ParameterChecks::valueForText (juce::AudioPluginInstance& instance,
                                     juce::AudioProcessorParameter& parameter, const juce::String& text)
{
    if (isInterface24())
    {
        // JUCE's host has no call for it; a host of the 2.4 interface hands the text to the plug-in,
        // which sets the parameter, and reads the value back.
        const auto handled = juce::VSTPluginFormat::dispatcher (&instance, string2ParameterOpcode,
                                                                parameter.getParameterIndex(), 0,
                                                                (void*) text.toRawUTF8(), 0.0f);
        if (handled == 0)
            return std::numeric_limits<float>::quiet_NaN();
        return parameter.getValue();
    }
    return parameter.getValueForText (text);
}

void ParameterChecks::checkTexts (juce::AudioPluginInstance& instance, const HostParameters& parameters)
{
    auto* link = parameters[ParameterIndex::linkChannels];
    juce::StringArray wrong;
    int checked = 0;
    for (const auto& textCase : ExpectedPlugin::texts)
    {
        const bool continuous = ExpectedPlugin::parameters[(size_t) textCase.index].numSteps == 0;
        // An LV2 host has the plug-in's texts for stepped parameters only, and can't know the link.
        if (isLv2() && (continuous || textCase.linked))
            continue;
        // A VST3 host asks for the text of a value, never for the display of the current one.
        if (isVst3() && textCase.linked)
            continue;

        link->setValue (textCase.linked ? 1.0f : 0.0f);
        deliver (instance);
        const auto text = textAt (*parameters[textCase.index], textCase.value);
        ++checked;
        if (text != textCase.text)
            wrong.add (name (textCase.index) + " at " + juce::String (textCase.value)
                       + (textCase.linked ? " linked" : "") + " shows " + quoted (text) + ", not "
                       + quoted (textCase.text));
    }
    report.check (wrong.isEmpty(), "parameters: display texts at " + juce::String (checked) + " values",
                  wrong.joinIntoString ("; "));
    if (isLv2())
        report.skip ("parameters: display texts of continuous parameters, and \"linked\"",
                     "LV2 carries texts for stepped parameters only, from the bundle's data; hosts show "
                     "continuous ones as numbers");
    if (isVst3())
        report.skip ("parameters: \"linked\" on the right channel's controls",
                     "a VST3 host asks for the text of a value, not for the display of the current "
                     "value; it shows the right channel's own values while the channels are linked");
    link->setValue (ExpectedPlugin::parameters[ParameterIndex::linkChannels].defaultValue);
    deliver (instance);
}

void ParameterChecks::checkSteps (juce::AudioPluginInstance& instance, const HostParameters& parameters)
{
    auto* link = parameters[ParameterIndex::linkChannels];
    link->setValue (0.0f);
    deliver (instance);

    // Sweeping a stepped parameter over its range shows as many texts as it has steps.
    const int sweepPoints = 161; // ten points per step of the finest stepped parameter, and both ends
    juce::StringArray wrongTexts, wrongSteps;
    for (int i = 0; i < ExpectedPlugin::numParameters; ++i)
    {
        const int steps = ExpectedPlugin::parameters[(size_t) i].numSteps;
        auto* parameter = parameters[i];
        if (steps == 0)
        {
            if (!isInterface24() && parameter->isDiscrete())
                wrongSteps.add (name (i) + " is stepped");
            continue;
        }

        std::set<juce::String> texts;
        const float before = parameter->getValue();
        for (int k = 0; k < sweepPoints; ++k)
            texts.insert (textAt (*parameter, (float) k / (float) (sweepPoints - 1)));
        parameter->setValue (before); // the 2.4 interface's texts have moved it
        if ((int) texts.size() != steps)
            wrongTexts.add (name (i) + " shows " + juce::String ((int) texts.size()) + " texts");

        if (!isInterface24() && (!parameter->isDiscrete() || parameter->getNumSteps() != steps))
            wrongSteps.add (name (i) + " has " + juce::String (parameter->getNumSteps()) + " steps"
                            + (parameter->isDiscrete() ? "" : ", not discrete"));
    }
    report.check (wrongTexts.isEmpty(), "parameters: stepped parameters show one text per step (17, 5, 2)",
                  wrongTexts.joinIntoString ("; "));
    if (isInterface24())
        report.skip ("parameters: step counts told to the host",
                     "the 2.4 interface has no call for them; the texts above show the steps");
    else
        report.check (wrongSteps.isEmpty(),
                      "parameters: the host is told the steps (17, 5, 2) and nothing else "
                      "is stepped",
                      wrongSteps.joinIntoString ("; "));

    link->setValue (ExpectedPlugin::parameters[ParameterIndex::linkChannels].defaultValue);
    deliver (instance);
}

void ParameterChecks::checkTextEntry (juce::AudioPluginInstance& instance, const HostParameters& parameters)
{
    auto* link = parameters[ParameterIndex::linkChannels];
    link->setValue (0.0f);
    deliver (instance);

    juce::StringArray wrong;
    int checked = 0;
    for (const auto& entry : entryCases)
    {
        if (isLv2() && ExpectedPlugin::parameters[(size_t) entry.index].numSteps == 0)
            continue;
        const float value = valueForText (instance, *parameters[entry.index], entry.text);
        ++checked;
        if (value != entry.value)
            wrong.add (quoted (entry.text) + " for " + name (entry.index) + " gives "
                       + juce::String (value, 7));
    }
    report.check (wrong.isEmpty(),
                  "parameters: typed texts give their values (" + juce::String (checked) + ")",
                  wrong.joinIntoString ("; "));

    if (isLv2())
    {
        report.skip ("parameters: typed texts of continuous parameters",
                     "LV2 has no call from text to value; hosts take numbers");
    }
    else
    {
        juce::StringArray notBack;
        for (const auto& entry : roundTripCases)
        {
            const float value = valueForText (instance, *parameters[entry.index], entry.text);
            const auto shown = textAt (*parameters[entry.index], value);
            if (shown != entry.text)
                notBack.add (quoted (entry.text) + " for " + name (entry.index) + " shows " + quoted (shown));
        }
        report.check (notBack.isEmpty(), "parameters: typed texts of continuous parameters show as typed",
                      notBack.joinIntoString ("; "));
    }

    link->setValue (ExpectedPlugin::parameters[ParameterIndex::linkChannels].defaultValue);
    deliver (instance);
}

void ParameterChecks::checkAutomationEcho()
{
    if (format.getFormatName() == "VST3")
    {
        // JUCE's VST3 host hands the processor's output parameter changes to the edit controller only,
        // so its parameter objects neither follow the plug-in's own changes nor could show an echo.
        report.skip ("parameters: changes made inside the plug-in reach the host, and automation is not "
                     "echoed back",
                     "JUCE's VST3 host passes the plug-in's output parameter changes to its edit controller, "
                     "not to the host's parameters");
        return;
    }

    auto instance = format.createPrepared (checkRate, checkBlock);
    if (instance == nullptr)
        return;

    // A controller bound to "FX" moves it inside the plug-in, which must tell the host; the host's own
    // writes to "Preamp" must not come back. Both travel the same way back, so once the controller's
    // change has arrived, an echo would have arrived with it.
    const int controller = 20; // a general-purpose controller
    auto state = format.getStateXml (*instance);
    if (!report.check (state != nullptr, "parameters: the host's state holds the plug-in's state"))
        return;
    StateDocument::setMap (*state, controller, name (ParameterIndex::fx));
    format.setStateXml (*instance, *state);
    deliver (*instance);

    ParameterWatcher watcher (*instance);
    const HostParameters parameters (*instance);
    auto* preamp = parameters[ParameterIndex::preamp];
    auto* fx = parameters[ParameterIndex::fx];
    const float automated = 0.25f;
    preamp->setValue (automated);

    const int controllerValue = 64;
    juce::AudioBuffer<float> audio (2, checkBlock);
    audio.clear();
    juce::MidiBuffer midi;
    midi.addEvent (juce::MidiMessage::controllerEvent (1, controller, controllerValue), checkBlock / 2);
    instance->processBlock (audio, midi);

    const float moved = (float) controllerValue * 0.007874016f; // one controller step is 1/127 as a float
    const bool arrived =
        MessagePump::runUntil ([&] { return watcher.getNumChanges (ParameterIndex::fx) > 0; });
    report.check (arrived && watcher.getLastValue (ParameterIndex::fx) == moved,
                  "parameters: a change made inside the plug-in (a mapped controller) reaches the host",
                  arrived ? "the host heard " + juce::String (watcher.getLastValue (ParameterIndex::fx), 7)
                          : juce::String ("the host heard nothing"));
    report.check (fx->getValue() == moved, "parameters: and the host's value follows it",
                  juce::String (fx->getValue(), 7));
    report.check (watcher.getNumChanges (ParameterIndex::preamp) == 0 && preamp->getValue() == automated,
                  "parameters: the host's automation is not echoed back",
                  juce::String (watcher.getNumChanges (ParameterIndex::preamp)) + " echoes");
}
