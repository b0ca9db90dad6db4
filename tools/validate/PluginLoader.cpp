#include "PluginLoader.h"

PluginLoader::PluginLoader()
{
    manager.addFormat (new juce::VSTPluginFormat());
    manager.addFormat (new juce::VST3PluginFormat());
    manager.addFormat (new juce::LV2PluginFormat());
}

juce::AudioPluginFormat* PluginLoader::findFormat (const juce::String& formatName) const
{
    for (auto* format : manager.getFormats())
        if (format->getName() == formatName)
            return format;
    return nullptr;
}

juce::String PluginLoader::readLv2PluginUri (const juce::File& bundle)
{
    const auto manifest = bundle.getChildFile ("manifest.ttl").loadFileAsString();
    for (auto start = manifest.indexOfChar ('<'); start >= 0; start = manifest.indexOfChar (start + 1, '<'))
    {
        const auto end = manifest.indexOfChar (start, '>');
        if (end < 0)
            break;
        const auto rest = manifest.substring (end + 1).trimStart();
        if (rest.startsWith ("a lv2:Plugin"))
            return manifest.substring (start + 1, end);
    }
    return {};
}

bool PluginLoader::describe (const juce::String& formatName, const juce::File& artefact,
                             juce::PluginDescription& result, juce::String& error)
{
    auto* format = findFormat (formatName);
    if (format == nullptr)
    {
        error = "this host has no such format";
        return false;
    }
    if (!artefact.exists())
    {
        error = "'" + artefact.getFullPathName() + "' does not exist";
        return false;
    }

    juce::String identifier = artefact.getFullPathName();
    if (formatName == "LV2")
    {
        // LV2 hosts load bundles from folders on their search path and then know plug-ins by URI.
        format->searchPathsForPlugins (juce::FileSearchPath (artefact.getParentDirectory().getFullPathName()),
                                       false, false);
        identifier = readLv2PluginUri (artefact);
        if (identifier.isEmpty())
        {
            error = "the bundle's manifest declares no plug-in";
            return false;
        }
    }

    juce::OwnedArray<juce::PluginDescription> found;
    format->findAllTypesForFile (found, identifier);
    if (found.size() != 1)
    {
        error = "the scan found " + juce::String (found.size()) + " plug-ins in '" + identifier + "'";
        return false;
    }
    result = *found[0];
    return true;
}

std::unique_ptr<juce::AudioPluginInstance> PluginLoader::create (const juce::PluginDescription& description,
                                                                 double sampleRate, int blockSize,
                                                                 juce::String& error)
{
    return manager.createPluginInstance (description, sampleRate, blockSize, error);
}
