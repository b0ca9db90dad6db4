#include "Renderer.h"

#include "NearestNames.h"
#include "RenderError.h"
#include "common/XmlText.h"

#include <cmath>
#include <cstdlib>

namespace
{
constexpr int longestText = 1024; // more than any name or text of the parameters

juce::String quoted (const juce::File& file) { return "'" + file.getFullPathName() + "'"; }

void checkReadable (const juce::File& file, const juce::String& what)
{
    if (file.isDirectory())
        throw RenderError (RenderError::inputFile, what + " " + quoted (file) + " is a directory");
    if (!file.existsAsFile())
        throw RenderError (RenderError::inputFile, "cannot find " + what + " " + quoted (file));
    if (!file.hasReadAccess())
        throw RenderError (RenderError::inputFile, "cannot read " + what + " " + quoted (file));
}

std::unique_ptr<juce::XmlElement> parseDocument (const juce::File& file, const juce::String& what)
{
    checkReadable (file, what);
    auto xml = XmlText::parse (file);
    if (xml == nullptr)
        throw RenderError (RenderError::corruptData,
                           what + " " + quoted (file) + " is not a valid XML document");
    return xml;
}

/** The text without blanks, in lower case: how typed values are compared with the parameter's texts. */
juce::String comparable (const juce::String& text) { return text.removeCharacters (" \t\r\n").toLowerCase(); }

/** A text that is one number and nothing else. */
bool plainNumber (const juce::String& text, double& number)
{
    const auto s = text.trim();
    if (s.isEmpty())
        return false;
    const auto utf8 = s.toStdString();
    char* end = nullptr;
    number = std::strtod (utf8.c_str(), &end);
    return end != utf8.c_str() && *end == 0;
}
} // namespace

double Renderer::Result::getRealtimeFactor() const
{
    if (processingSeconds <= 0.0 || sampleRate <= 0.0)
        return 0.0;
    return output.getNumSamples() / sampleRate / processingSeconds;
}

Renderer::Renderer()
    : settingsFolder ("vantrice-render")
{
    // A folder no other run uses, so that the processor's settings file neither comes from the user's
    // nor goes to it.
    if (!settingsFolder.isValid())
        throw RenderError (RenderError::outputFile,
                           "cannot create a temporary folder under "
                               + quoted (juce::File::getSpecialLocation (juce::File::tempDirectory)));

    processor = std::make_unique<Vantrice>();
    processor->start (settingsFolder.getChildFile ("Vantrice.so"));
    processor->setNonRealtime (true);
}

Renderer::~Renderer()
{
    // The processor writes its settings file on destruction, so the folder goes after it.
    processor.reset();
}

void Renderer::restoreState (const juce::MemoryBlock& chunk, const juce::String& sourceName)
{
    auto xml = XmlText::fromBinary (chunk.getData(), (int) chunk.getSize());
    if (xml == nullptr)
        throw RenderError (RenderError::corruptData, sourceName + " is not a host state chunk of Vantrice");
    if (!processor->isStateXml (*xml))
        throw RenderError (RenderError::corruptData, sourceName + " holds <" + xml->getTagName() + "> of '"
                                                         + xml->getStringAttribute ("application")
                                                         + "', not a Vantrice state");
    processor->setStateInformation (chunk.getData(), (int) chunk.getSize());
}

void Renderer::restoreStateFile (const juce::File& file)
{
    checkReadable (file, "state file");
    juce::MemoryBlock chunk;
    if (!file.loadFileAsData (chunk))
        throw RenderError (RenderError::inputFile, "cannot read state file " + quoted (file));
    restoreState (chunk, "state file " + quoted (file));
}

void Renderer::loadMidiMapFile (const juce::File& file)
{
    auto xml = parseDocument (file, "MIDI map");
    auto& map = processor->getMidiControl();
    if (!map.isMapXml (*xml) || !map.isValidMap (*xml))
        throw RenderError (RenderError::corruptData,
                           "MIDI map " + quoted (file) + " is not a Vantrice MIDI map");
    map.loadFromXml (*xml);
}

void Renderer::loadBankFile (const juce::File& file)
{
    auto xml = parseDocument (file, "bank file");
    if (!processor->isBank (*xml))
        throw RenderError (RenderError::corruptData,
                           "bank file " + quoted (file) + " is not a Vantrice bank");
    if (!processor->loadBankFile (file))
        throw RenderError (RenderError::corruptData, "cannot load bank file " + quoted (file));
}

void Renderer::selectPreset (const juce::String& name)
{
    juce::StringArray names;
    for (int i = 0; i < processor->getNumPresets(); ++i)
    {
        const auto presetName = processor->getPresetName (i);
        if (presetName.equalsIgnoreCase (name.trim()))
        {
            processor->programChange (i);
            return;
        }
        names.addIfNotAlreadyThere (presetName);
    }
    throw RenderError (RenderError::badSetting,
                       "unknown preset '" + name + "'" + NearestNames::didYouMean (name, names));
}

void Renderer::loadPresetFile (const juce::File& file)
{
    auto xml = parseDocument (file, "preset file");
    if (!processor->isPreset (*xml))
        throw RenderError (RenderError::corruptData,
                           "preset file " + quoted (file) + " is not a Vantrice preset");
    if (!processor->loadPresetFile (file, processor->getCurrentPreset()))
        throw RenderError (RenderError::corruptData, "cannot load preset file " + quoted (file));
}

juce::AudioProcessorParameter* Renderer::findParameter (const juce::String& name) const
{
    juce::StringArray names;
    for (auto* p : processor->getParameters())
    {
        const auto parameterName = p->getName (longestText);
        if (parameterName.equalsIgnoreCase (name.trim()))
            return p;
        names.add (parameterName);
    }
    throw RenderError (RenderError::badSetting,
                       "unknown parameter '" + name + "'" + NearestNames::didYouMean (name, names));
}

void Renderer::setParameter (const juce::String& name, const juce::String& valueText)
{
    auto* parameter = findParameter (name);
    const auto parameterName = parameter->getName (longestText);

    double number = 0.0;
    float value = 0.0f;
    if (plainNumber (valueText, number))
    {
        if (!std::isfinite (number) || number < 0.0 || number > 1.0)
            throw RenderError (RenderError::badSetting, "value " + valueText.trim() + " for '" + parameterName
                                                            + "' is out of range: give 0..1 or a text in its "
                                                              "units, such as '"
                                                            + parameter->getCurrentValueAsText() + "'");
        value = (float) number;
    }
    else
    {
        // A right-channel control shows "linked" while the left one drives both: text for it would be
        // stored but not heard.
        if (parameter->getCurrentValueAsText() == "linked")
            throw RenderError (RenderError::badSetting,
                               "'" + parameterName + "' has no value '" + valueText.trim()
                                   + "' while \"Link Channels\" is On; set \"Link Channels=Off\" first");

        value = parameter->getValueForText (valueText);
        const auto readBack = parameter->getText (value, longestText);
        if (comparable (readBack) != comparable (valueText))
            throw RenderError (RenderError::badSetting,
                               "'" + parameterName + "' has no value '" + valueText.trim()
                                   + "': give 0..1 or a text such as '" + readBack + "'");
    }
    parameter->setValueNotifyingHost (value);
}

juce::MemoryBlock Renderer::getState()
{
    juce::MemoryBlock chunk;
    processor->getStateInformation (chunk);
    return chunk;
}

juce::String Renderer::getPresetDescription() const
{
    const int index = processor->getCurrentPreset();
    auto name = processor->getPresetName (index);
    if (auto* preset = processor->getPreset (index))
    {
        auto& parameters = processor->getParameterManager();
        for (int i = 0; i < Vantrice::numParameters; ++i)
            if (preset->getValue (i) != parameters.getNormalizedValue (i))
                return name + " (edited)";
    }
    return name;
}

juce::String Renderer::getPresetList() const
{
    juce::String text;
    text << "Bank: " << processor->getBankName() << "\n";

    auto line = [this] (int index) {
        return "  " + juce::String (index).paddedLeft (' ', 3) + "  " + processor->getPresetName (index)
               + "\n";
    };

    for (int g = 0; g < processor->getNumGroups(); ++g)
    {
        text << "\n" << processor->getGroupName (g) << "\n";
        for (int position = 0; position < processor->getGroupSize (g); ++position)
            text << line (processor->getPresetIndex (g, position));
    }

    juce::String ungrouped;
    for (int i = 0; i < processor->getNumPresets(); ++i)
        if (processor->getGroupOfPreset (i) < 0)
            ungrouped << line (i);
    if (ungrouped.isNotEmpty())
        text << "\n(no group)\n" << ungrouped;
    return text;
}

void Renderer::checkSampleRate (double sampleRate)
{
    if (VantriceCore::isSupportedRate (sampleRate))
        return;
    const auto rateText = sampleRate == std::floor (sampleRate) && std::abs (sampleRate) < 1.0e15
                              ? juce::String ((juce::int64) sampleRate)
                              : juce::String (sampleRate, 3);
    throw RenderError (RenderError::inputFile,
                       "a sample rate of " + rateText + " Hz is not supported by the plug-in");
}

Renderer::Result Renderer::render (const juce::AudioBuffer<float>& input, double sampleRate, int blockSize,
                                   const MidiTimeline& midi, bool compensate,
                                   const ProgressCallback& progress)
{
    checkSampleRate (sampleRate);
    const int numChannels = input.getNumChannels();
    if (numChannels < 1 || numChannels > 2)
        throw RenderError (RenderError::inputFile, "the input has " + juce::String (numChannels)
                                                       + " channels; only mono and stereo are supported");
    if (blockSize < 1)
        throw RenderError (RenderError::usage, "the block size must be at least 1");

    auto& p = *processor;
    p.setPlayConfigDetails (numChannels, numChannels, sampleRate, blockSize);
    p.prepareToPlay (sampleRate, blockSize);

    Result result;
    result.sampleRate = sampleRate;
    result.latencySamples = p.getLatencySamples();
    result.compensated = compensate;

    const int numSamples = input.getNumSamples();
    const int skipped = compensate ? result.latencySamples : 0;
    const int total = numSamples + skipped;
    result.output.setSize (numChannels, numSamples);

    juce::AudioBuffer<float> block (numChannels, blockSize);
    juce::MidiBuffer blockMidi;
    blockMidi.ensureSize (4096); // room for a busy block's events without allocating in the loop

    const double started = juce::Time::getMillisecondCounterHiRes();
    for (int start = 0; start < total; start += blockSize)
    {
        const int length = juce::jmin (blockSize, total - start);
        juce::AudioBuffer<float> view (block.getArrayOfWritePointers(), numChannels, length);

        // The input, then the silence that pushes its end through the latency.
        const int fromInput = juce::jlimit (0, length, numSamples - start);
        for (int c = 0; c < numChannels; ++c)
        {
            if (fromInput > 0)
                view.copyFrom (c, 0, input, c, start, fromInput);
            if (fromInput < length)
                view.clear (c, fromInput, length - fromInput);
        }

        midi.fillBlock (start, length, blockMidi);
        p.processBlock (view, blockMidi);

        // Sample start + i of the processed stream is sample start + i - skipped of the output.
        const int first = juce::jmax (0, skipped - start);
        if (first < length)
            for (int c = 0; c < numChannels; ++c)
                result.output.copyFrom (c, start + first - skipped, view, c, first, length - first);

        if (progress)
            progress ((double) (start + length) / total);
    }
    result.processingSeconds = (juce::Time::getMillisecondCounterHiRes() - started) / 1000.0;

    p.releaseResources();
    return result;
}
