#pragma once

#include "skin/GUIController.h"

#include <juce_gui_basics/juce_gui_basics.h>

class GFXDisplay;

/** Told when the user has changed a display's text and the edit has ended. */
class GFXDisplayListener
{
public:
    virtual ~GFXDisplayListener() = default;
    virtual void displayTextChanged (GFXDisplay* display) = 0;
};

/** One line of text in a bitmap font, edited in place: a click gives it the keyboard (lifting it to a
    window of its own where that is on), typing edits the text with a blinking caret drawn from the font's
    reversed half, Return or a click elsewhere ends the edit, Escape ends it with the old text back. Only
    characters the font holds can be typed. */
class GFXDisplay : public GUIController,
                   public juce::Component,
                   private juce::Timer,
                   private juce::ComponentListener
{
public:
    explicit GFXDisplay (const juce::String& name = {});
    ~GFXDisplay() override;

    /** Sets the text without telling anybody. */
    void setText (const juce::String& newText);
    const juce::String& getText() const noexcept { return text; }
    const juce::String& getShownText() const noexcept { return shownText; }

    /** The font strip under a resource key; a missing one leaves the font as it was. */
    void setFont (const juce::String& key);
    void addDisplayListener (GFXDisplayListener* listener);
    void removeDisplayListener (GFXDisplayListener* listener);

    void loadFromXml (const juce::XmlElement& element, ParameterManager& parameters, EventsMap& events,
                      BasePluginEditor* editor) override;
    void updateFromParameter (Parameter* changed) override;
    void blinkChanged() override;

    bool isEditing() const noexcept { return editing; }
    int getCaretPosition() const noexcept { return caretPosition; }
    int getScrollOffset() const noexcept { return scrollOffset; }
    int getNumColumns() const noexcept;

    void paint (juce::Graphics& g) override;
    void focusGained (FocusChangeType cause) override;
    void focusLost (FocusChangeType cause) override;
    bool keyPressed (const juce::KeyPress& key) override;

protected:
    juce::String text, shownText;
    int charWidth = 8; // the strip's width once a font is loaded

private:
    void updateFontMetrics();
    void updateScroll();
    /** The font cell a character is drawn from. */
    int cellOf (juce::juce_wchar character) const noexcept;
    void endEdit();
    void timerCallback() override;
    void componentVisibilityChanged (juce::Component& component) override;
    void componentParentHierarchyChanged (juce::Component& component) override;

    juce::Image font;
    juce::String fontKey;
    int fontHeight = 0;
    int firstChar = 32, lastChar = 160, numChars = 0;
    bool caretOn = false;
    int caretPosition = 0;
    int scrollOffset = 0;
    juce::Array<GFXDisplayListener*> displayListeners;
    juce::String savedText;
    juce::Component::SafePointer<juce::Component> savedParent;
    juce::Rectangle<int> savedBounds;
    bool editable = true;
    bool editing = false;
    bool lifting = false;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (GFXDisplay)
};
