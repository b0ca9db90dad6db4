#include "dsp/Vantrice.h"

#include "dsp/ParameterCurves.h"
#include "dsp/ParameterIndex.h"
#include "skin/VantriceEditor.h"

#include <cmath>
#include <cstdio>

namespace
{
// The cutoff shown is a straight line through 14 Hz and 12000 Hz over the filter's coefficient.
constexpr double cutoffDisplayScale = 14457.831323999999;
constexpr double coreRate = 44100.0;
constexpr double preampRangeDb = 48.0;

const char* const filterTypeNames[] = { "LP", "BP", "HP", "BR", "Off" };

juce::String bitsText (double value)
{
    const int bits = ParameterCurves::bitsOf (value);
    if (bits >= 17)
        return "Quant. Off";
    return juce::String (bits) + (bits == 1 ? " bit" : " bits");
}

juce::String typeText (double value)
{
    return filterTypeNames[juce::jlimit (0, 4, ParameterCurves::typeOf (value))];
}

juce::String hertzText (double hz) { return juce::String (Vantrice::roundedValue (hz)) + "Hz"; }

/** Parses the leading number of a text, and whether there was one. */
bool leadingNumber (const juce::String& text, double& number)
{
    const auto t = text.trim();
    const auto digits = t.initialSectionContainingOnly ("+-0123456789.eE");
    if (digits.isEmpty() || !digits.containsAnyOf ("0123456789"))
        return false;
    number = digits.getDoubleValue();
    return true;
}

/** The smallest normalised value in single precision whose text is at least `target`, for a rising
    curve; its neighbour below is tried as well so that the nearest text wins where none is exact. */
float invertRising (double target, double (*valueOf) (double))
{
    float lo = 0.0f, hi = 1.0f;
    if (valueOf (hi) <= target)
        return hi;
    if (valueOf (lo) >= target)
        return lo;
    for (int i = 0; i < 64 && std::nextafter (lo, hi) < hi; ++i)
    {
        const float mid = lo + (hi - lo) * 0.5f;
        (valueOf (mid) < target ? lo : hi) = mid;
    }
    return std::abs (valueOf (lo) - target) < std::abs (valueOf (hi) - target) ? lo : hi;
}

double hertzOfRate (double v) { return Vantrice::roundedValue (ParameterCurves::rateCurve (v) * coreRate); }
double hertzOfCutoff (double v)
{
    return Vantrice::roundedValue (ParameterCurves::cutoffCurve (v) * cutoffDisplayScale);
}
} // namespace

Vantrice::Vantrice()
    : FerrowynOldCompatible (numParameters)
{
}

Vantrice::~Vantrice()
{
    // Some wrappers run the plug-in's messages on a thread of their own and destroy it from the host's:
    // no notification may start, nor one be running, once the layers below this one are going.
    holdMessagesUntilDestroyed();
    cancelPendingUpdate();
    // The last instance to close decides what the next one starts from.
    saveUserSettings();
}

juce::String Vantrice::getPluginName() const { return "Vantrice"; }
juce::String Vantrice::getPluginCode() const { return "VT"; }
int Vantrice::getNumberOfParameters() const { return numParameters; }
FerrowynEffect::Core* Vantrice::createCore() { return new VantriceCore (this); }
BasePluginEditor* Vantrice::createEditorComponent() { return new VantriceEditor (*this); }
bool Vantrice::hasQualitySettings() const { return false; }
int Vantrice::getNumberOfClocks() const { return 0; }

juce::String Vantrice::getSoftwareName() const { return getPluginName(); }
juce::String Vantrice::getSoftwareDescription() const { return "High Quality Bit Crusher"; }
juce::String Vantrice::getSoftwareVersion() const { return VANTRICE_VERSION; }
juce::String Vantrice::getSoftwareHomePage() const { return "https://zelkora.example/vantrice"; }
juce::String Vantrice::getSoftwareYear() const { return "2008"; }
juce::String Vantrice::getSoftwareReleaseDate() const { return "2012-02-27"; }
juce::String Vantrice::getSoftwareBuild() const { return "274.1324"; }
juce::String Vantrice::getSoftwareFormat() const
{
    // The format the processor runs in is the one its wrapper set up; the 2.4-interface library is named
    // after its interface, and with no wrapper (the renderer, the tests) it runs offline.
    if (wrapperType == wrapperType_VST)
        return "2.4-interface";
    if (wrapperType == wrapperType_Undefined)
        return "Offline";
    return getWrapperTypeDescription (wrapperType);
}
juce::String Vantrice::getSoftwareArchitecture() const { return "64bit"; }

int Vantrice::roundedValue (double x) noexcept
{
    const double shifted = x < 0.0 ? x - 0.5 : x + 0.5;
    // Held inside the integer range, so that a value of no display can't overflow the conversion.
    if (!(shifted > -2147483648.0 && shifted < 2147483648.0))
        return shifted > 0.0 ? std::numeric_limits<int>::max() : std::numeric_limits<int>::min();
    return (int) shifted;
}

juce::String Vantrice::decibelText (double db)
{
    char text[64];
    std::snprintf (text, sizeof (text), "%s%.1fdB", db > 0.0 ? "+" : "", db);
    return text;
}

juce::String Vantrice::textFor (int index, const TextState& s)
{
    auto orLinked = [&s] (const juce::String& text) { return s.linked ? juce::String ("linked") : text; };

    switch (index)
    {
        case ParameterIndex::preamp:
            return decibelText (s.raw * preampRangeDb);
        case ParameterIndex::leftBits:
            return bitsText (s.raw);
        case ParameterIndex::leftFrequency:
            return hertzText (s.rate * coreRate);
        case ParameterIndex::leftLinkFreq:
            return s.antiAlias ? "On" : "Off";
        case ParameterIndex::leftFilterType:
            return typeText (s.raw);
        case ParameterIndex::leftCutoff:
            return hertzText (s.cutoff * cutoffDisplayScale);
        case ParameterIndex::leftReso:
            return juce::String (roundedValue (s.raw * 100.0)) + "%";
        case ParameterIndex::rightBits:
            return orLinked (bitsText (s.raw));
        case ParameterIndex::rightFrequency:
            return orLinked (hertzText (s.rate * coreRate));
        case ParameterIndex::rightLinkFreq:
            return orLinked (s.raw < 0.5 ? "Off" : "On");
        case ParameterIndex::rightFilterType:
            return orLinked (typeText (s.raw));
        case ParameterIndex::rightCutoff:
            return orLinked (hertzText (s.cutoff * cutoffDisplayScale));
        case ParameterIndex::rightReso:
            return orLinked (juce::String (roundedValue (s.raw * 100.0)) + "%");
        case ParameterIndex::linkChannels:
            return s.coreLinked ? "On" : "Off";
        case ParameterIndex::fx:
        {
            const int w = (int) std::floor (s.raw * 100.0 + 0.5);
            return juce::String (100 - w) + "/" + juce::String (w) + "% (Dry/Wet)";
        }
        case ParameterIndex::outputVolume:
        {
            if (s.volumeTarget == 0.0)
                return "-Inf.";
            const double db = 20.0 * std::log10 (s.volumeTarget);
            return db <= -320.0 ? juce::String ("-Inf.") : decibelText (db);
        }
        case ParameterIndex::leftFilterOrder:
            return s.filterPre ? "Pre" : "Post";
        case ParameterIndex::rightFilterOrder:
            return orLinked (s.filterPre ? "Pre" : "Post");
        default:
            return {};
    }
}

bool Vantrice::isLinkedByParameter() const
{
    auto* link = parameters.getParameter (ParameterIndex::linkChannels);
    return link != nullptr && link->getBoolValue();
}

juce::String Vantrice::getParameterTextFor (int index)
{
    auto* parameter = parameters.getParameter (index);
    auto* c = getVantriceCore();
    if (c == nullptr || index < 0 || index >= numParameters || parameter == nullptr
        || parameters.getParameter (ParameterIndex::linkChannels) == nullptr)
        return BasePlugin::getParameterTextFor (index);

    TextState s;
    s.linked = isLinkedByParameter();
    {
        // The core's settings change under this lock; reading them takes at most one run's wait.
        const juce::ScopedLock sl (familyLock);
        const bool right = index >= ParameterIndex::rightBits && index <= ParameterIndex::rightReso;
        const auto& channel = right ? c->getRight() : c->getLeft();
        s.raw = index == ParameterIndex::leftBits || index == ParameterIndex::rightBits
                        || index == ParameterIndex::leftFilterType || index == ParameterIndex::rightFilterType
                    ? (double) parameter->getNormalizedValue()
                    : c->getRawValue (index);
        s.rate = channel.rate;
        s.antiAlias = c->getLeft().antiAlias;
        s.cutoff = channel.cutoffTarget;
        s.coreLinked = c->isLinked();
        s.volumeTarget = c->getVolumeTarget();
        s.filterPre =
            index == ParameterIndex::rightFilterOrder ? c->getRight().filterPre : c->getLeft().filterPre;
    }
    return textFor (index, s);
}

Vantrice::TextState Vantrice::textStateForValue (float normalisedValue, bool linked)
{
    const double v = juce::jlimit (0.0f, 1.0f, normalisedValue);
    TextState s;
    s.raw = v;
    s.rate = ParameterCurves::rateCurve (v);
    s.antiAlias = v > 0.5;
    s.cutoff = ParameterCurves::cutoffCurve (v);
    s.coreLinked = v > 0.5;
    s.volumeTarget = 4.0 * v * v;
    s.filterPre = normalisedValue > 0.5f;
    s.linked = linked;
    return s;
}

juce::String Vantrice::getParameterTextForValue (int hostIndex, float normalisedValue)
{
    if (hostIndex < 0 || hostIndex >= numParameters)
        return BasePlugin::getParameterTextForValue (hostIndex, normalisedValue);

    // What the value means on its own: "linked" belongs to the display of the current value only.
    return textFor (hostIndex, textStateForValue (normalisedValue, false));
}

float Vantrice::getParameterValueForText (int hostIndex, const juce::String& text)
{
    const auto current = getHostParameter (hostIndex);
    const auto t = text.trim();
    double number = 0.0;

    auto switchValue = [&] (const char* onText, const char* offText)
    {
        if (t.equalsIgnoreCase (onText))
            return 1.0f;
        if (t.equalsIgnoreCase (offText))
            return 0.0f;
        return leadingNumber (t, number) ? juce::jlimit (0.0f, 1.0f, (float) number) : current;
    };

    switch (hostIndex)
    {
        case ParameterIndex::preamp:
            if (!leadingNumber (t, number))
                return current;
            return juce::jlimit (0.0f, 1.0f, (float) (number / preampRangeDb));
        case ParameterIndex::leftBits:
        case ParameterIndex::rightBits:
            if (t.equalsIgnoreCase ("Quant. Off") || t.equalsIgnoreCase ("Off"))
                return 1.0f;
            if (!leadingNumber (t, number))
                return current;
            return (float) (juce::jlimit (1, 16, (int) std::lround (number)) - 1) / 16.0f;
        case ParameterIndex::leftFrequency:
        case ParameterIndex::rightFrequency:
            if (!leadingNumber (t, number))
                return current;
            return invertRising (number, hertzOfRate);
        case ParameterIndex::leftLinkFreq:
        case ParameterIndex::rightLinkFreq:
        case ParameterIndex::linkChannels:
            return switchValue ("On", "Off");
        case ParameterIndex::leftFilterType:
        case ParameterIndex::rightFilterType:
            for (int i = 0; i < 5; ++i)
                if (t.equalsIgnoreCase (filterTypeNames[i]))
                    return (float) i / 4.0f;
            return current;
        case ParameterIndex::leftCutoff:
        case ParameterIndex::rightCutoff:
            if (!leadingNumber (t, number))
                return current;
            return invertRising (number, hertzOfCutoff);
        case ParameterIndex::leftReso:
        case ParameterIndex::rightReso:
            if (!leadingNumber (t, number))
                return current;
            return juce::jlimit (0.0f, 1.0f, (float) (number / 100.0));
        case ParameterIndex::fx:
        {
            // "dry/wet% (Dry/Wet)": the wet share is the second number; a lone number is the wet share.
            const auto wet = t.containsChar ('/') ? t.fromFirstOccurrenceOf ("/", false, false) : t;
            if (!leadingNumber (wet, number))
                return current;
            return juce::jlimit (0.0f, 1.0f, (float) (number / 100.0));
        }
        case ParameterIndex::outputVolume:
            if (t.startsWithIgnoreCase ("-inf"))
                return 0.0f;
            if (!leadingNumber (t, number))
                return current;
            return juce::jlimit (0.0f, 1.0f, (float) std::sqrt (std::pow (10.0, number / 20.0) / 4.0));
        case ParameterIndex::leftFilterOrder:
        case ParameterIndex::rightFilterOrder:
            return switchValue ("Pre", "Post");
        default:
            return BasePlugin::getParameterValueForText (hostIndex, text);
    }
}

int Vantrice::getHostParameterNumSteps (int hostIndex) const
{
    switch (hostIndex)
    {
        case ParameterIndex::leftBits:
        case ParameterIndex::rightBits:
            return 17; // 1 to 16 bits, then off
        case ParameterIndex::leftFilterType:
        case ParameterIndex::rightFilterType:
            return 5; // LP, BP, HP, BR, Off
        case ParameterIndex::leftLinkFreq:
        case ParameterIndex::rightLinkFreq:
        case ParameterIndex::linkChannels:
        case ParameterIndex::leftFilterOrder:
        case ParameterIndex::rightFilterOrder:
            return 2;
        default:
            return 0;
    }
}

void Vantrice::parameterChanged (Parameter* parameter)
{
    FerrowynOldCompatible::parameterChanged (parameter);

    // The texts of the right channel's parameters change with the link.
    if (parameter->getIndex() == ParameterIndex::linkChannels)
        updateHostDisplay (juce::AudioProcessorListener::ChangeDetails().withParameterInfoChanged (true));
}

bool Vantrice::readPreset (const juce::XmlElement& element, Preset& preset)
{
    // The filter orders came with revision 1 of the preset format; older presets had both "Post".
    if (isPreset (element) && element.getIntAttribute ("rev", 0) == 0)
    {
        preset.setValue (ParameterIndex::leftFilterOrder, 0.0f);
        preset.setValue (ParameterIndex::rightFilterOrder, 0.0f);
    }
    return FerrowynOldCompatible::readPreset (element, preset);
}

std::unique_ptr<juce::XmlElement> Vantrice::createPresetXml (const Preset& preset)
{
    auto xml = FerrowynOldCompatible::createPresetXml (preset);
    xml->setAttribute ("rev", 1);
    return xml;
}
