#pragma once

#include "windows/PopupMenuEx.h"

/** A drop-down field whose list is a menu that opens inside the editor, under the field. */
class ComboBoxEx : public juce::Component, public PopupMenuEx::Listener
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void comboBoxChanged (ComboBoxEx*) = 0;
    };

    explicit ComboBoxEx (const juce::String& name = {});

    /** Shows the item; the listeners aren't told. */
    void setSelectedId (int id);
    int getSelectedId() const noexcept { return selectedId; }
    const juce::String& getText() const noexcept { return text; }
    bool isSelectedEnabled() const noexcept { return selectedEnabled; }
    PopupMenuEx& getMenu() noexcept { return menu; }
    void addListener (Listener* listener);

    void menuItemSelected (PopupMenuEx* source, int id, bool ticked) override;
    void mouseDown (const juce::MouseEvent&) override;
    void paint (juce::Graphics& g) override;

private:
    void update();

    juce::String text;
    int selectedId = -1;
    bool selectedEnabled = false;
    PopupMenuEx menu;
    juce::Array<Listener*> listeners;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (ComboBoxEx)
};
