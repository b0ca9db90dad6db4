#include "EnumParameter.h"

#include "common/NumberText.h"

EnumParameter::EnumParameter (int parameterIndex, const juce::String& parameterName,
                              const juce::String& parameterItemList, const juce::String& valueText)
    : IntParameter (parameterIndex, parameterName, 0,
                    juce::jmax (0, splitItems (parameterItemList).size() - 1), 0)
    , items (splitItems (parameterItemList))
    , itemList (parameterItemList)
{
    // Nobody can listen yet, and a pending update would reach whoever registers before it is delivered.
    setStringValue (valueText, false);
}

std::unique_ptr<Parameter> EnumParameter::clone() const
{
    auto copy = std::make_unique<EnumParameter> (getIndex(), getName(), itemList, juce::String());
    copy->setIntValue (getIntValue(), false);
    copy->setAutomatable (isAutomatable());
    return copy;
}

juce::String EnumParameter::getStringValue() const { return items[getIntValue()]; }

void EnumParameter::setStringValue (const juce::String& newValue, bool notify)
{
    const int position = items.indexOf (newValue, false);

    if (position >= 0)
        setIntValue (position, notify);
    else
        setNormalizedValue (NumberText::toFloat (newValue.getDoubleValue()), notify);
}

juce::StringArray EnumParameter::splitItems (const juce::String& itemList)
{
    juce::StringArray result;
    int start = 0;

    for (int end = itemList.indexOfChar (';'); end >= 0; end = itemList.indexOfChar (start, ';'))
    {
        result.add (itemList.substring (start, end));
        start = end + 1;
    }

    const auto last = itemList.substring (start);

    if (last.isNotEmpty())
        result.add (last);

    return result;
}
