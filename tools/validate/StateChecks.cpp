#include "StateChecks.h"

#include "AudioComparison.h"
#include "BlockRunner.h"
#include "ExpectedPlugin.h"
#include "MessagePump.h"
#include "ParameterSet.h"
#include "ReferenceRender.h"
#include "StateDocument.h"
#include "TestSignal.h"

namespace
{
constexpr double checkRate = 48000.0; // a rate with conversion, so the converters' state is part of it
constexpr int maxBlockSize = 1024;
constexpr juce::int64 seedBase = 11000;

// What the session state changes, and where.
constexpr int sessionPreset = 7;
constexpr int sessionGroup = 1;
constexpr int sessionController = 21;
const char* const sessionPresetName = "Validator's Preset";
const char* const sessionGroupName = "Validator's Group";
const float sessionStoredFx = 0.125f;

juce::MemoryBlock chunkOf (const juce::XmlElement& state)
{
    juce::MemoryBlock chunk;
    juce::AudioProcessor::copyXmlToBinary (state, chunk);
    return chunk;
}

juce::String presetParameter (const juce::XmlElement* preset, const juce::String& name)
{
    if (preset != nullptr)
        for (auto* param : preset->getChildWithTagNameIterator ("param"))
            if (param->getStringAttribute ("name") == name)
                return param->getStringAttribute ("value");
    return {};
}
} // namespace

StateChecks::StateChecks (FormatUnderTest& formatToCheck)
    : format (formatToCheck)
    , report (formatToCheck.getReport())
{
}

void StateChecks::run()
{
    checkRoundTrip();
    checkDamagedChunks();
}

void StateChecks::makeSessionState (juce::XmlElement& state, juce::int64 seed)
{
    const auto values = ParameterSet::random (seed);
    for (int i = 0; i < ExpectedPlugin::numParameters; ++i)
        StateDocument::setParameter (state, ExpectedPlugin::parameters[(size_t) i].name, values[i]);
    StateDocument::setCurrentPreset (state, sessionPreset);
    if (auto* preset = StateDocument::getPreset (state, sessionPreset))
    {
        preset->setAttribute ("name", sessionPresetName);
        for (auto* param : preset->getChildWithTagNameIterator ("param"))
            if (param->getStringAttribute ("name") == ExpectedPlugin::parameters[ParameterIndex::fx].name)
                param->setAttribute ("value", juce::String (sessionStoredFx));
    }
    if (auto* group = StateDocument::getGroup (state, sessionGroup))
        group->setAttribute ("name", sessionGroupName);
    StateDocument::setMap (state, sessionController,
                           ExpectedPlugin::parameters[ParameterIndex::leftCutoff].name);
}

juce::String StateChecks::findMissing (const juce::XmlElement& restored, juce::int64 seed)
{
    juce::StringArray missing;
    const auto values = ParameterSet::random (seed);
    for (int i = 0; i < ExpectedPlugin::numParameters; ++i)
    {
        const auto name = ExpectedPlugin::parameters[(size_t) i].name;
        if (StateDocument::getParameter (restored, name) != values[i])
            missing.add (juce::String ("parameter ") + name);
    }
    if (StateDocument::getCurrentPreset (restored) != sessionPreset)
        missing.add ("current preset");
    auto* preset = StateDocument::getPreset (restored, sessionPreset);
    if (preset == nullptr || preset->getStringAttribute ("name") != sessionPresetName)
        missing.add ("preset name");
    if (presetParameter (preset, ExpectedPlugin::parameters[ParameterIndex::fx].name).getFloatValue()
        != sessionStoredFx)
        missing.add ("stored preset value");
    auto* group = StateDocument::getGroup (restored, sessionGroup);
    if (group == nullptr || group->getStringAttribute ("name") != sessionGroupName)
        missing.add ("group name");
    if (StateDocument::getMappedParameter (restored, sessionController)
        != ExpectedPlugin::parameters[ParameterIndex::leftCutoff].name)
        missing.add ("controller map");
    return missing.joinIntoString (", ");
}

void StateChecks::checkRoundTrip()
{
    auto first = format.create (checkRate, maxBlockSize);
    if (first == nullptr)
        return;
    auto session = format.getStateXml (*first);
    if (!report.check (session != nullptr, "state: the host's saved state holds the plug-in's state"))
        return;
    makeSessionState (*session, seedBase);
    format.setStateXml (*first, *session);

    // What the host saves into its project, handed to a new instance as a host reopening it would.
    juce::MemoryBlock saved;
    first->getStateInformation (saved);
    auto second = format.create (checkRate, maxBlockSize);
    if (second == nullptr)
        return;
    second->setStateInformation (saved.getData(), (int) saved.getSize());

    const auto firstState = format.getStateXml (*first);
    const auto secondState = format.getStateXml (*second);
    const auto firstMissing =
        firstState != nullptr ? findMissing (*firstState, seedBase) : juce::String ("all");
    report.check (firstMissing.isEmpty(),
                  "state: the instance took the session's parameters, preset, names, stored value and map",
                  firstMissing);
    report.check (secondState != nullptr && firstState != nullptr
                      && secondState->isEquivalentTo (firstState.get(), false),
                  "state: a fresh instance restored from the host's state saves the same state");
    const auto secondMissing =
        secondState != nullptr ? findMissing (*secondState, seedBase) : juce::String ("all");
    report.check (secondMissing.isEmpty(),
                  "state: every parameter, the preset, the names, the stored value and the map come back",
                  secondMissing);

    // What the host shows of a restored instance, once it has played a block (LV2 sends values with the
    // audio).
    if (auto shownInstance = format.createPrepared (checkRate, maxBlockSize))
    {
        shownInstance->setStateInformation (saved.getData(), (int) saved.getSize());
        FormatUnderTest::playSilence (*shownInstance, maxBlockSize);

        const auto values = ParameterSet::random (seedBase);
        const auto shown = ParameterSet::readFrom (*shownInstance);
        juce::StringArray wrong;
        for (int i = 0; i < ExpectedPlugin::numParameters; ++i)
            if (shown[i] != values[i])
                wrong.add (juce::String (ExpectedPlugin::parameters[(size_t) i].name) + " "
                           + juce::String (shown[i], 7));
        report.check (wrong.isEmpty(), "state: the host's parameters show the restored values",
                      wrong.joinIntoString (", "));
    }

    // The sound: both instances, prepared and played, and the renderer with the same chunk give the
    // same bits.
    const auto chunk = format.getChunk (*first);
    FormatUnderTest::prepare (*first, checkRate, maxBlockSize);
    FormatUnderTest::prepare (*second, checkRate, maxBlockSize);
    const int length = (int) (checkRate * 0.1);
    const auto input = TestSignal::makeMaterial (length, checkRate, seedBase);
    auto fromFirst = input, fromSecond = input;
    BlockRunner::run (*first, fromFirst, BlockRunner::randomBlocks (length, maxBlockSize, seedBase));
    BlockRunner::run (*second, fromSecond, BlockRunner::randomBlocks (length, maxBlockSize, seedBase + 1));

    juce::String whyNot;
    const bool same = AudioComparison::identical (fromSecond, fromFirst, whyNot);
    report.check (same, "state: the restored instance sounds as the saved one, bit for bit", whyNot);
    const auto expected = ReferenceRender::render (chunk, input, checkRate, {}, false, whyNot);
    const bool asRenderer =
        expected.getNumSamples() > 0 && AudioComparison::identical (fromSecond, expected, whyNot);
    // The renderer, as a host of the other formats, restores a state and then prepares the processor,
    // which starts its smoothed settings at the restored values.
    report.check (asRenderer, "state: and as the renderer with the same state, from the first sample on",
                  whyNot
                      + (format.getFormatName() == "LV2"
                             ? juce::String ("; JUCE's LV2 wrapper prepares the processor as the plug-in is "
                                             "made, before the host restores its state, so the restored "
                                             "settings glide in from the first preset's")
                             : juce::String()));
}

void StateChecks::checkDamagedChunks()
{
    auto instance = format.createPrepared (checkRate, maxBlockSize);
    if (instance == nullptr)
        return;
    auto session = format.getStateXml (*instance);
    if (session == nullptr)
        return;
    makeSessionState (*session, seedBase + 1);
    format.setStateXml (*instance, *session);
    const auto before = format.getStateXml (*instance);
    const auto valuesBefore = ParameterSet::readFrom (*instance);
    const auto good = chunkOf (*before);

    struct Damage
    {
        const char* what;
        juce::MemoryBlock chunk;
    };
    std::vector<Damage> damages;

    damages.push_back ({ "a chunk of 8 bytes", juce::MemoryBlock (good.getData(), 8) });
    auto wrongMagic = good;
    wrongMagic[0] = (char) (wrongMagic[0] ^ 0x20);
    damages.push_back ({ "a wrong magic", wrongMagic });
    auto zeroLength = good;
    juce::uint32 zero = 0;
    zeroLength.copyFrom (&zero, 4, sizeof (zero));
    damages.push_back ({ "a text length of 0", zeroLength });
    damages.push_back ({ "a chunk cut in half", juce::MemoryBlock (good.getData(), good.getSize() / 2) });
    auto garbled = good;
    for (size_t i = 8; i < garbled.getSize(); ++i)
        if (garbled[i] == '<')
            garbled[i] = '#';
    damages.push_back ({ "text that is no XML", garbled });
    juce::MemoryBlock noise (1000);
    juce::Random random (seedBase);
    random.fillBitsRandomly (noise.getData(), noise.getSize());
    damages.push_back ({ "random bytes", noise });
    auto foreign = std::make_unique<juce::XmlElement> (*before);
    foreign->setAttribute ("application", "Otherapp");
    StateDocument::setParameter (*foreign, ExpectedPlugin::parameters[0].name, 0.5f);
    damages.push_back ({ "the state of another application", chunkOf (*foreign) });
    damages.push_back ({ "a document that is no state", chunkOf (juce::XmlElement ("Unrelated")) });

    juce::StringArray changed;
    for (const auto& damage : damages)
    {
        format.setChunk (*instance, damage.chunk);
        MessagePump::runBriefly();
        const auto after = format.getStateXml (*instance);
        const auto valuesAfter = ParameterSet::readFrom (*instance);
        bool same = after != nullptr && after->isEquivalentTo (before.get(), false);
        for (int i = 0; i < ExpectedPlugin::numParameters; ++i)
            same = same && valuesAfter[i] == valuesBefore[i];
        if (!same)
            changed.add (damage.what);
    }
    report.check (changed.isEmpty(),
                  "state: damaged chunks change nothing (" + juce::String ((int) damages.size()) + " kinds)",
                  "changed by " + changed.joinIntoString (", "));

    // A host state that is itself damaged reaches the plug-in or not, as the format's host decides; it
    // must change nothing either.
    instance->setStateInformation (noise.getData(), (int) noise.getSize());
    MessagePump::runBriefly();
    const auto after = format.getStateXml (*instance);
    report.check (after != nullptr && after->isEquivalentTo (before.get(), false),
                  "state: a damaged host state changes nothing");
}
