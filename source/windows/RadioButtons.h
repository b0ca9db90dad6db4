#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** A titled group of exclusive choices, one row each: a round button and its label inside a rounded
    frame whose heading sits in a gap of the frame. Fonts, metrics and pictures come from the look and
    feel when it changes; under any other look the group keeps JUCE's default font and metrics of 0. */
class RadioButtons : public juce::Component, public juce::Button::Listener
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void radioButtonsChanged (RadioButtons* source) = 0;
    };

    RadioButtons (const juce::String& title, const juce::StringArray& labels);
    ~RadioButtons() override;

    /** Selects the row, or none for an index that is no row; the listeners hear of it only if `notify`. */
    void setSelectedIndex (int index, bool notify);
    int getSelectedIndex() const noexcept { return selectedIndex; }
    int getNumRows() const noexcept { return labels.size(); }
    juce::ImageButton* getButton (int row) const noexcept { return buttons[row]; }
    const juce::String& getTitle() const noexcept { return title; }
    const juce::Font& getTitleFont() const noexcept { return titleFont; }
    int getRowHeight() const noexcept { return rowHeight; }
    int getListTop() const noexcept { return listTop; }

    void addListener (Listener* listener);
    void removeListener (Listener* listener);

    /** Runs at the end of every change of selection, told or not. */
    virtual void selectionChanged() {}
    /** Runs at the end of every layout. */
    virtual void sizeChanged() {}

    void lookAndFeelChanged() override;
    void resized() override;
    void paint (juce::Graphics& g) override;
    void buttonClicked (juce::Button* button) override;

protected:
    /** Places the buttons and takes the group's size from its rows; never narrower than it is. */
    void layout();
    void notifyListeners();

    juce::String title;
    juce::StringArray labels;
    juce::OwnedArray<juce::ImageButton> buttons;
    int selectedIndex = -1;
    juce::Font titleFont, labelFont;
    int titleInset = 0, titlePadding = 0, buttonInset = 0, verticalMargin = 0, rowHeight = 0;
    float cornerRadius = 0.0f;
    int labelGap = 0;
    juce::Rectangle<int> titleArea, frameArea;
    int listTop = 0;
    int labelX = 0, labelWidth = 0;
    juce::Array<Listener*> listeners;

private:
    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (RadioButtons)
};
