#include "common/EmbeddedFonts.h"

#include "common/ResourceLoader.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace
{
juce::Typeface::Ptr load (const char* key)
{
    // The typeface keeps its own copy of the bytes.
    const auto data = loadResourceData (key);
    return data != nullptr ? juce::Typeface::createSystemTypefaceFor (data->getData(), data->getSize())
                           : nullptr;
}
} // namespace

juce::Typeface::Ptr EmbeddedFonts::getRegular()
{
    static const juce::Typeface::Ptr regular = load ("DejaVuSans.ttf");
    return regular;
}

juce::Typeface::Ptr EmbeddedFonts::getBold()
{
    static const juce::Typeface::Ptr bold = load ("DejaVuSans-Bold.ttf");
    return bold;
}

juce::Font EmbeddedFonts::make (float height, bool bold)
{
    auto typeface = bold ? getBold() : getRegular();
    if (typeface == nullptr)
        return juce::Font (height, bold ? juce::Font::bold : juce::Font::plain);
    return juce::Font (typeface).withHeight (height);
}

void EmbeddedFonts::becomeDefault()
{
    if (auto regular = getRegular())
        juce::LookAndFeel::getDefaultLookAndFeel().setDefaultSansSerifTypeface (regular);
}
