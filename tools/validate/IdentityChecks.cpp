#include "IdentityChecks.h"

#include "ExpectedPlugin.h"
#include "HostStateCodec.h"
#include "Vst3ClassInfo.h"

namespace
{
juce::String quoted (const juce::String& text) { return "\"" + text + "\""; }

juce::String idText (int id)
{
    juce::String text;
    for (int shift = 24; shift >= 0; shift -= 8)
        text << (char) ((id >> shift) & 0xff);
    return "'" + text + "' (" + juce::String::toHexString (id) + ")";
}

/** The release an LV2 bundle's data declares: the revision of its doap:release. */
juce::String readLv2Revision (const juce::File& bundle)
{
    const juce::String key ("doap:revision");
    for (const auto& entry : juce::RangedDirectoryIterator (bundle, false, "*.ttl", juce::File::findFiles))
    {
        const auto text = entry.getFile().loadFileAsString();
        const auto at = text.indexOf (key);
        if (at < 0)
            continue;
        const auto open = text.indexOfChar (at, '"');
        const auto close = open < 0 ? -1 : text.indexOfChar (open + 1, '"');
        if (close > open)
            return text.substring (open + 1, close);
    }
    return {};
}
} // namespace

IdentityChecks::IdentityChecks (FormatUnderTest& formatToCheck)
    : format (formatToCheck)
    , report (formatToCheck.getReport())
{
}

void IdentityChecks::run()
{
    const auto& description = format.getDescription();
    report.check (description.name == ExpectedPlugin::name, "identity: name " + quoted (ExpectedPlugin::name),
                  "the host sees " + quoted (description.name));
    if (format.getFormatName() == "VST")
        report.check (description.descriptiveName == ExpectedPlugin::name,
                      "identity: the plug-in tells its name " + quoted (ExpectedPlugin::name),
                      "it tells " + quoted (description.descriptiveName));
    report.check (description.manufacturerName == ExpectedPlugin::maker,
                  "identity: maker " + quoted (ExpectedPlugin::maker),
                  "the host sees " + quoted (description.manufacturerName));
    checkVersion();
    report.check (description.numInputChannels == ExpectedPlugin::numInputs
                      && description.numOutputChannels == ExpectedPlugin::numOutputs,
                  "identity: the scan finds 2 inputs and 2 outputs",
                  juce::String (description.numInputChannels) + " in, "
                      + juce::String (description.numOutputChannels) + " out");
    report.check (!description.isInstrument, "identity: an effect, not an instrument");

    auto instance = format.createPrepared (ExpectedPlugin::latencies[0].rate, 512);
    if (instance == nullptr)
        return;

    report.check (instance->getName() == ExpectedPlugin::name, "identity: the instance's name",
                  quoted (instance->getName()));
    report.check (instance->getTotalNumInputChannels() == ExpectedPlugin::numInputs
                      && instance->getTotalNumOutputChannels() == ExpectedPlugin::numOutputs
                      && instance->getMainBusNumInputChannels() == ExpectedPlugin::numInputs
                      && instance->getMainBusNumOutputChannels() == ExpectedPlugin::numOutputs,
                  "identity: the instance runs 2 in, 2 out on its main buses",
                  juce::String (instance->getTotalNumInputChannels()) + " in, "
                      + juce::String (instance->getTotalNumOutputChannels()) + " out");
    report.check (instance->acceptsMidi(), "identity: takes MIDI in");
    report.check (!instance->producesMidi(), "identity: sends no MIDI out");
    report.check (instance->hasEditor(), "identity: has an editor");
    checkUniqueId (*instance);
}

void IdentityChecks::checkVersion()
{
    const auto& description = format.getDescription();
    if (format.getFormatName() == "LV2")
    {
        // JUCE's LV2 host leaves the version out of the description; the bundle's data declares it.
        const auto revision = readLv2Revision (format.getInstall()->getPath());
        report.check (revision == ExpectedPlugin::version,
                      "identity: version " + quoted (ExpectedPlugin::version)
                          + " in the bundle's release data",
                      "the bundle says " + quoted (revision));
        return;
    }
    if (format.getFormatName() == "VST")
    {
        // JUCE's host shows the 2.4 version number with four parts, the last one 0: the number carries
        // the three parts of the version in its three upper bytes.
        const auto shown = juce::String (ExpectedPlugin::version) + ".0";
        report.check (description.version == shown,
                      "identity: version " + quoted (ExpectedPlugin::version) + " (shown as " + shown + ")",
                      "the host sees " + quoted (description.version));
        return;
    }
    report.check (description.version == ExpectedPlugin::version,
                  "identity: version " + quoted (ExpectedPlugin::version),
                  "the host sees " + quoted (description.version));
}

void IdentityChecks::checkUniqueId (juce::AudioPluginInstance& instance)
{
    const auto expected = ExpectedPlugin::getUniqueId();
    const auto& description = format.getDescription();

    if (format.getFormatName() == "VST")
    {
        report.check (description.uniqueId == expected && description.deprecatedUid == expected,
                      "identity: unique id " + idText (expected),
                      "the host sees " + idText (description.uniqueId));

        const int vendorVersionOpcode = 49; // the 2.4 interface's request for the plug-in's version number
        const auto number =
            juce::VSTPluginFormat::dispatcher (&instance, vendorVersionOpcode, 0, 0, nullptr, 0.0f);
        report.check (number == 0x10301, "identity: version number 0x10301",
                      "it says " + juce::String::toHexString ((juce::int64) number));

        // The host's saved state names the plug-in it belongs to by the same id.
        juce::MemoryBlock hostState;
        instance.getStateInformation (hostState);
        const int fxIdOffset = 16; // the fifth header word of the bank chunk block
        const int saved = hostState.getSize() > (size_t) fxIdOffset + 4
                              ? (int) juce::ByteOrder::bigEndianInt (hostState.begin() + fxIdOffset)
                              : 0;
        report.check (saved == expected, "identity: the host's saved state carries the unique id",
                      "it carries " + idText (saved));
        return;
    }

    if (format.getFormatName() == "VST3")
    {
        const Vst3ClassInfo info (format.getInstall()->getPath());
        if (!report.check (info.isValid(), "identity: the module's factory lists the effect class",
                           info.getError()))
            return;
        report.check (info.getName() == ExpectedPlugin::name,
                      "identity: the effect class is named " + quoted (ExpectedPlugin::name),
                      quoted (info.getName()));

        // The class ID's last four bytes are the plug-in's code, as JUCE's VST3 wrapper makes it.
        const auto& cid = info.getClassId();
        const int classCode =
            cid.getSize() == 16 ? (int) juce::ByteOrder::bigEndianInt (cid.begin() + 12) : 0;
        report.check (classCode == expected,
                      "identity: the class ID carries the unique id " + idText (expected),
                      "class ID " + juce::String::toHexString (cid.getData(), (int) cid.getSize(), 0));
        return;
    }

    report.skip ("identity: unique id " + idText (expected),
                 "LV2 knows a plug-in by its URI and has no four-character id");
    report.check (description.fileOrIdentifier == ExpectedPlugin::lv2Uri,
                  "identity: URI " + juce::String (ExpectedPlugin::lv2Uri), description.fileOrIdentifier);
}
