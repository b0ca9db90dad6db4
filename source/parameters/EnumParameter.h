#pragma once

#include "IntParameter.h"

// An integer parameter whose steps are named items; its text is the item at the value.
class EnumParameter final : public IntParameter
{
public:
    // itemList holds the items separated by ";"; valueText is an item's name or a normalised number.
    EnumParameter (int index, const juce::String& name, const juce::String& itemList,
                   const juce::String& valueText);

    std::unique_ptr<Parameter> clone() const override;

    juce::String getStringValue() const override;
    void setStringValue (const juce::String& value, bool notify) override;

    const juce::StringArray& getItems() const noexcept { return items; }
    const juce::String& getItemList() const noexcept { return itemList; }

    // Each ";" closes one item, empty or not; the text behind the last ";" is one more item unless it is
    // empty, so a list that ends in ";" has no empty last item.
    static juce::StringArray splitItems (const juce::String& itemList);

private:
    const juce::StringArray items;
    const juce::String itemList;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (EnumParameter)
};
