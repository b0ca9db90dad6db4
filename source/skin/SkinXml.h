#pragma once

#include <juce_core/juce_core.h>

/** How a skin document is read. Element and attribute names match without regard to case, while JUCE's
    own lookups compare attribute names exactly and stop a debug build when a tag differs only in case:
    the skin is read through these helpers only. Values compare exactly unless a control says otherwise,
    and numbers read as strtol reads them in base 10, so text that isn't a number gives 0. */
class SkinXml final
{
public:
    /** Whether the element's tag is `tag`, ignoring case. */
    static bool isTag (const juce::XmlElement& element, juce::StringRef tag);

    /** The first child element whose tag is `tag`, ignoring case; null if there is none. */
    static const juce::XmlElement* getChild (const juce::XmlElement& element, juce::StringRef tag);

    static bool hasAttribute (const juce::XmlElement& element, juce::StringRef name);

    /** The value of the first attribute named `name`, ignoring case; `fallback` if there is none. */
    static juce::String getAttribute (const juce::XmlElement& element, juce::StringRef name,
                                      const juce::String& fallback = {});

    /** The attribute read as strtol reads base 10 (leading blanks, a sign, digits, anything after them
        ignored), held to the range of int; `fallback` if the attribute is absent. */
    static int getInt (const juce::XmlElement& element, juce::StringRef name, int fallback);

    /** True when the value starts (after blanks) with 1, t or y in either case; `fallback` if absent. */
    static bool getBool (const juce::XmlElement& element, juce::StringRef name, bool fallback);

    /** Text read as strtol reads it in base 10. */
    static int parseInt (const juce::String& text);
};
