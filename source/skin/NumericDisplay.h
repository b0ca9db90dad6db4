#pragma once

#include "skin/GUIController.h"
#include "skin/NumericDisplayDigit.h"
#include "skin/NumericDisplaySign.h"

/** A number shown in picture digits, changed by a vertical drag on a digit: the further right the digit,
    the finer the step and the fewer pixels it takes. The leftmost digit weighs `firstDigitOrder`, a power
    of ten; there is no decimal point, the units digit always shows, and leading zeros stay dark. */
class NumericDisplay : public GUIController, public juce::Component
{
public:
    explicit NumericDisplay (const juce::String& name = {});
    ~NumericDisplay() override;

    void loadFromXml (const juce::XmlElement& element, ParameterManager& parameters, EventsMap& events,
                      BasePluginEditor* editor) override;
    void updateFromParameter (Parameter* changed) override;

    /** Limits `v` to the range; with `notify` a change goes to the parameter and the listeners. */
    void setValue (double v, bool notify);
    double getValue() const noexcept { return value; }

    int getNumDigits() const noexcept { return digits.size(); }
    NumericDisplayDigit* getDigit (int index) const noexcept { return digits[index]; }
    NumericDisplaySign* getSign() const noexcept { return sign.get(); }
    /** The step a drag starting on digit `index` takes, and how many pixels it needs for one. */
    double getDragStep() const noexcept { return dragStep; }
    int getPixelsPerStep() const noexcept { return pixelsPerStep; }

    void mouseDown (const juce::MouseEvent& e) override;
    void mouseDrag (const juce::MouseEvent& e) override;
    void mouseUp (const juce::MouseEvent& e) override;
    void paint (juce::Graphics& g) override;

private:
    void showValue();

    std::unique_ptr<NumericDisplaySign> sign;
    juce::OwnedArray<NumericDisplayDigit> digits;
    int digitsNum = 0;
    double firstDigitOrder = 1.0;
    double scale = 1.0;
    double firstDivisor = 1.0;
    int decimals = 0;
    double minValue = 0.0, maxValue = 0.0;
    double value = 0.0;
    double dragStartValue = 0.0, dragStep = 1.0;
    int pixelsPerStep = 5;
    bool dragging = false;
    bool mouseEnabled = true;
    int digitWidth = 0, digitHeight = 0;
    bool continuous = false;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (NumericDisplay)
};
