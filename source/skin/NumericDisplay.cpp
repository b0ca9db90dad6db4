#include "skin/NumericDisplay.h"

#include "common/ResourceLoader.h"
#include "skin/SkinXml.h"

#include <cmath>

namespace
{
// A drag on the leftmost digit takes 25 pixels a step, each digit to the right 5 fewer, and never fewer
// than 5: further right the count would reach 0 and divide by it, or turn the drag round.
constexpr int pixelsForFirstDigit = 25, pixelsLessPerDigit = 5, fewestPixels = 5;

juce::Image loadStrip (const juce::XmlElement* holder)
{
    juce::Image image;
    if (holder != nullptr)
        loadResourceImage (SkinXml::getAttribute (*holder, "resource"), image);
    return image;
}

bool isPowerOfTen (double order)
{
    if (!(order > 0.0))
        return false;
    const double exponent = std::log10 (order);
    return exponent == std::floor (exponent);
}
} // namespace

NumericDisplay::NumericDisplay (const juce::String& name)
    : juce::Component (name)
{
}

NumericDisplay::~NumericDisplay() = default;

void NumericDisplay::loadFromXml (const juce::XmlElement& element, ParameterManager& parameters,
                                  EventsMap& events, BasePluginEditor* editor)
{
    GUIController::loadFromXml (element, parameters, events, editor);
    if (!SkinXml::isTag (element, "NumericDisplay"))
        return;

    digitsNum = juce::jmax (0, SkinXml::getInt (element, "digitsNum", 0));
    firstDigitOrder = SkinXml::getAttribute (element, "firstDigitOrder").getDoubleValue();
    if (!isPowerOfTen (firstDigitOrder))
        firstDigitOrder = std::pow (10.0, digitsNum - 1);
    const double orderExponent = std::log10 (firstDigitOrder);
    scale = std::pow (10.0, digitsNum - orderExponent - 1.0);
    firstDivisor = std::pow (10.0, digitsNum - 1);
    decimals = juce::jmax (0, (int) std::lround (digitsNum - orderExponent));
    minValue = SkinXml::getAttribute (element, "minValue", "0").getDoubleValue();
    maxValue = SkinXml::getAttribute (element, "maxValue", "0").getDoubleValue();
    continuous = SkinXml::getAttribute (element, "control") == "continous"; // the skins' own spelling

    const bool hasSign = minValue < 0.0;
    if (auto* size = SkinXml::getChild (element, "size"))
    {
        // Nothing to divide among when there are no places.
        const int places = juce::jmax (1, digitsNum + (hasSign ? 1 : 0));
        digitWidth = SkinXml::getInt (*size, "width", 0) / places;
        digitHeight = SkinXml::getInt (*size, "height", 0);
    }

    removeAllChildren();
    sign.reset();
    digits.clear();
    int x = 0, height = 0;
    if (hasSign)
    {
        const auto* signElement = SkinXml::getChild (element, "sign");
        sign = std::make_unique<NumericDisplaySign> (
            loadStrip (signElement != nullptr ? SkinXml::getChild (*signElement, "gfx") : nullptr),
            digitWidth, digitHeight);
        addAndMakeVisible (*sign);
        x = sign->getWidth();
        height = sign->getHeight();
    }

    juce::Array<juce::Image> strips;
    juce::Image shared;
    if (auto* list = SkinXml::getChild (element, "digits"))
    {
        for (auto* gfx : list->getChildIterator())
            if (SkinXml::isTag (*gfx, "gfx"))
                strips.add (loadStrip (gfx));
        if (strips.isEmpty() && SkinXml::hasAttribute (*list, "resource"))
            shared = loadStrip (list);
    }
    const int integerDigits = (int) std::lround (orderExponent) + 1;
    for (int i = 0; i < digitsNum; ++i)
    {
        const auto strip = i < strips.size() ? strips[i] : shared;
        auto* digit =
            digits.add (new NumericDisplayDigit (strip, digitWidth, digitHeight, i < integerDigits));
        digit->setTopLeftPosition (x, 0);
        addAndMakeVisible (digit);
        x += digit->getWidth();
        height = juce::jmax (height, digit->getHeight());
    }

    if (auto* pos = SkinXml::getChild (element, "pos"))
        setTopLeftPosition (SkinXml::getInt (*pos, "left", 0), SkinXml::getInt (*pos, "top", 0));
    setSize (x, height);
    showValue();
}

void NumericDisplay::updateFromParameter (Parameter* changed) { setValue (changed->getValue(), false); }

void NumericDisplay::setValue (double v, bool notify)
{
    v = juce::jlimit (juce::jmin (minValue, maxValue), juce::jmax (minValue, maxValue), v);
    if (v != value)
    {
        value = v;
        if (notify && parameter != nullptr)
        {
            parameter->setValue ((float) value, true);
            sendValueChanged();
        }
    }
    showValue();
}

void NumericDisplay::showValue()
{
    double n = std::round (std::abs (value) * scale);
    double order = firstDivisor;
    bool lit = false;
    const int unitsDigit = digitsNum - decimals;
    for (int i = 0; i < digits.size(); ++i)
    {
        const double d = order > 0.0 ? std::floor (n / order) : 0.0;
        if (d != 0.0)
            lit = true;
        digits[i]->show ((int) d, !lit && i != unitsDigit);
        n -= d * order;
        order /= 10.0;
    }
    if (sign != nullptr)
        sign->setNegative (value < 0.0);
}

void NumericDisplay::mouseDown (const juce::MouseEvent& e)
{
    if (!mouseEnabled)
        return;
    beginGesture();
    dragStartValue = value;
    dragging = true;
    const int width = juce::jmax (1, getWidth());
    const int index =
        continuous ? 1 : juce::jlimit (0, juce::jmax (0, digitsNum - 1), e.x * digitsNum / width);
    dragStep = firstDigitOrder / std::pow (10.0, index);
    pixelsPerStep = juce::jmax (fewestPixels, pixelsForFirstDigit - index * pixelsLessPerDigit);
}

void NumericDisplay::mouseDrag (const juce::MouseEvent& e)
{
    if (!mouseEnabled || !dragging)
        return;
    const int steps = (e.getMouseDownY() - e.y) / pixelsPerStep; // toward 0
    setValue (dragStartValue + steps * dragStep, true);
}

void NumericDisplay::mouseUp (const juce::MouseEvent&)
{
    if (!mouseEnabled || !dragging)
        return;
    endGesture();
    dragging = false;
}

void NumericDisplay::paint (juce::Graphics& g) { g.fillAll (juce::Colours::black); }
