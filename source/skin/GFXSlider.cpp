#include "skin/GFXSlider.h"

namespace
{
constexpr float outlineGrey = 0.7f;
constexpr float smallestHorizontalScale = 0.7f;
constexpr int textLines = 2;
} // namespace

GFXSlider::GFXSlider (const juce::String& name, double interval)
    : juce::Slider (name)
{
    setSliderStyle (RotaryVerticalDrag);
    setRange (0.0, 1.0, interval);
    setTextBoxStyle (NoTextBox, false, 0, 0);
    setValue (0.0, juce::dontSendNotification);
}

void GFXSlider::loadFromXml (const juce::XmlElement& element, ParameterManager& parameters, EventsMap& events,
                             BasePluginEditor* editor)
{
    BaseGFXController::loadFromXml (element, parameters, events, editor);
    setBounds (left, top, frameWidth, frameHeight);
    repaint();
}

// The parameter holds the slider's place in its range: the value itself for the 0 to 1 of knobs and
// switches, the middle for a pitch bender's 0.
void GFXSlider::updateFromParameter (Parameter* changed)
{
    setValue (getMinimum() + changed->getNormalizedValue() * (getMaximum() - getMinimum()),
              juce::dontSendNotification);
}

void GFXSlider::valueChanged()
{
    if (parameter == nullptr)
        return;
    parameter->setNormalizedValue ((float) ((getValue() - getMinimum()) / (getMaximum() - getMinimum())),
                                   true);
    sendValueChanged();
}

void GFXSlider::paint (juce::Graphics& g)
{
    if (strip.isValid())
        drawFrame (g, getFrame());
}

void GFXSlider::paintDiagnosticFace (juce::Graphics& g, const juce::String& valueText, float fontHeight)
{
    g.setColour (juce::Colour::greyLevel (outlineGrey));
    g.drawRect (getLocalBounds());
    juce::Slider::paint (g);
    g.setColour (juce::Colours::black);
    if (fontHeight > 0.0f)
        g.setFont (fontHeight);
    const auto area = getLocalBounds();
    const auto value = parameter != nullptr ? parameter->getStringValue() : valueText;
    const auto name = parameter != nullptr ? parameter->getName() : juce::String();
    g.drawFittedText (value, area.withHeight (area.getHeight() / 2), juce::Justification::centred, textLines,
                      smallestHorizontalScale);
    g.drawFittedText (name, area.withTrimmedTop (area.getHeight() / 2), juce::Justification::centred,
                      textLines, smallestHorizontalScale);
}
