#include "skin/GFXDisplayFloat.h"

GFXDisplayFloat::GFXDisplayFloat (const juce::String& name)
    : GFXDisplay (name)
{
}

void GFXDisplayFloat::updateFromParameter (Parameter* changed)
{
    auto value = juce::String::formatted ("%.9g", (double) changed->getValue());
    const int columns = getNumColumns();
    if (columns > 0 && value.length() >= columns && value[columns - 1] == '.')
        value = value.substring (0, columns - 1) + " " + value.substring (columns - 1);
    setText (value);
}
