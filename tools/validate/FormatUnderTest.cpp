#include "FormatUnderTest.h"

#include "ExpectedPlugin.h"
#include "HostStateCodec.h"
#include "MessagePump.h"

FormatUnderTest::FormatUnderTest (PluginLoader& loaderToUse, const juce::String& name, const juce::File& path,
                                  const juce::File& root, ValidationReport& reportToUse)
    : loader (loaderToUse)
    , formatName (name)
    , artefact (path)
    , scratchRoot (root)
    , report (reportToUse)
{
}

juce::String FormatUnderTest::labelOf (const juce::String& name)
{
    return name == "VST" ? juce::String ("2.4-interface library") : name;
}

juce::String FormatUnderTest::formatNameOf (const juce::String& argument)
{
    if (argument == "2.4")
        return "VST";
    if (argument.equalsIgnoreCase ("VST3"))
        return "VST3";
    if (argument.equalsIgnoreCase ("LV2"))
        return "LV2";
    return {};
}

bool FormatUnderTest::load()
{
    // The 2.4-interface library is installed under the plug-in's name, as `make install` does; hosts
    // name it after its file.
    const auto installedName =
        formatName == "VST" ? juce::String (ExpectedPlugin::name) + ".so" : juce::String();
    install =
        std::make_unique<ScratchInstall> (artefact, scratchRoot, formatName.toLowerCase(), installedName);
    if (!report.check (install->isValid(), "installs from " + artefact.getFullPathName(),
                       "cannot copy it into " + scratchRoot.getFullPathName()))
        return false;

    juce::String error;
    const bool found = loader.describe (formatName, install->getPath(), description, error);
    return report.check (found, "the host's scan finds the plug-in", error);
}

std::unique_ptr<juce::AudioPluginInstance>
    FormatUnderTest::createUnprepared (double sampleRate, int maxBlockSize, juce::String& error)
{
    return loader.create (description, sampleRate, maxBlockSize, error);
}

void FormatUnderTest::prepare (juce::AudioPluginInstance& instance, double sampleRate, int maxBlockSize)
{
    instance.setRateAndBufferSizeDetails (sampleRate, maxBlockSize);
    instance.prepareToPlay (sampleRate, maxBlockSize);
}

void FormatUnderTest::playSilence (juce::AudioPluginInstance& instance, int blockSize)
{
    juce::AudioBuffer<float> silence (
        juce::jmax (instance.getTotalNumInputChannels(), instance.getTotalNumOutputChannels()), blockSize);
    silence.clear();
    juce::MidiBuffer none;
    instance.processBlock (silence, none);
    MessagePump::runBriefly();
}

std::unique_ptr<juce::AudioPluginInstance> FormatUnderTest::create (double sampleRate, int maxBlockSize)
{
    juce::String error;
    auto instance = createUnprepared (sampleRate, maxBlockSize, error);
    if (instance == nullptr)
        report.check (false, "makes an instance at " + juce::String (sampleRate) + " Hz", error);
    return instance;
}

std::unique_ptr<juce::AudioPluginInstance> FormatUnderTest::createPrepared (double sampleRate,
                                                                            int maxBlockSize)
{
    auto instance = create (sampleRate, maxBlockSize);
    if (instance != nullptr)
        prepare (*instance, sampleRate, maxBlockSize);
    return instance;
}

juce::MemoryBlock FormatUnderTest::getChunk (juce::AudioPluginInstance& instance) const
{
    juce::MemoryBlock hostState;
    instance.getStateInformation (hostState);
    return HostStateCodec::extractChunk (formatName, hostState);
}

bool FormatUnderTest::setChunk (juce::AudioPluginInstance& instance, const juce::MemoryBlock& chunk) const
{
    juce::MemoryBlock hostState;
    instance.getStateInformation (hostState);
    const auto replaced = HostStateCodec::replaceChunk (formatName, hostState, chunk);
    if (replaced.isEmpty())
        return false;
    instance.setStateInformation (replaced.getData(), (int) replaced.getSize());
    return true;
}

std::unique_ptr<juce::XmlElement> FormatUnderTest::getStateXml (juce::AudioPluginInstance& instance) const
{
    const auto chunk = getChunk (instance);
    return juce::AudioProcessor::getXmlFromBinary (chunk.getData(), (int) chunk.getSize());
}

bool FormatUnderTest::setStateXml (juce::AudioPluginInstance& instance, const juce::XmlElement& state) const
{
    juce::MemoryBlock chunk;
    juce::AudioProcessor::copyXmlToBinary (state, chunk);
    return setChunk (instance, chunk);
}
