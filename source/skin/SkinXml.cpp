#include "skin/SkinXml.h"

#include <cerrno>
#include <climits>
#include <cstdlib>

bool SkinXml::isTag (const juce::XmlElement& element, juce::StringRef tag)
{
    return element.getTagName().equalsIgnoreCase (tag);
}

const juce::XmlElement* SkinXml::getChild (const juce::XmlElement& element, juce::StringRef tag)
{
    for (auto* child : element.getChildIterator())
        if (isTag (*child, tag))
            return child;
    return nullptr;
}

bool SkinXml::hasAttribute (const juce::XmlElement& element, juce::StringRef name)
{
    for (int i = 0; i < element.getNumAttributes(); ++i)
        if (element.getAttributeName (i).equalsIgnoreCase (name))
            return true;
    return false;
}

juce::String SkinXml::getAttribute (const juce::XmlElement& element, juce::StringRef name,
                                    const juce::String& fallback)
{
    for (int i = 0; i < element.getNumAttributes(); ++i)
        if (element.getAttributeName (i).equalsIgnoreCase (name))
            return element.getAttributeValue (i);
    return fallback;
}

int SkinXml::getInt (const juce::XmlElement& element, juce::StringRef name, int fallback)
{
    return hasAttribute (element, name) ? parseInt (getAttribute (element, name)) : fallback;
}

bool SkinXml::getBool (const juce::XmlElement& element, juce::StringRef name, bool fallback)
{
    if (!hasAttribute (element, name))
        return fallback;
    const auto first = getAttribute (element, name).trimStart()[0];
    return first == '1' || first == 't' || first == 'T' || first == 'y' || first == 'Y';
}

int SkinXml::parseInt (const juce::String& text)
{
    errno = 0;
    const long value = std::strtol (text.toRawUTF8(), nullptr, 10);
    // strtol saturates at the range of long; an int takes the same rule at its own range.
    if (value > INT_MAX)
        return INT_MAX;
    if (value < INT_MIN)
        return INT_MIN;
    return (int) value;
}
