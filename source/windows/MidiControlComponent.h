#pragma once

#include "midi/MidiControl.h"
#include "windows/AlertWindow.h"
#include "windows/CheckBox.h"
#include "windows/ComponentRow.h"
#include "windows/DefaultResourceCheckBox.h"
#include "windows/FileDialog.h"

/** The "Midi Control" page: the learn switch, the map as a table of controllers and parameter names,
    buttons to delete one assignment, clear them all (after a question), load and save a map, and the
    default map of the next start. It is a view: every change goes through the MidiControl, and the table
    is rebuilt when the MidiControl reports one. */
class MidiControlComponent : public juce::Component,
                             public juce::Button::Listener,
                             public CheckBox::Listener,
                             public DefaultResourceCheckBox::Listener,
                             public MidiControl::Listener,
                             public Zelkora::AlertWindow::Caller
{
public:
    /** The map as a table of rows without vertical scrolling, filled column by column in rising
        controller order; past the columns that fit, it scrolls sideways. */
    class ListComponent : public juce::Component, public juce::ScrollBar::Listener
    {
    public:
        struct Entry
        {
            int controller;
            juce::String name;
        };

        ListComponent (MidiControlComponent& owner, MidiControl& midiControl);
        ~ListComponent() override;

        /** Reads the map anew and clears the selection. */
        void refresh();
        /** Selects a cell, with or without an entry, and brings its column into view; in learn mode the
            entry's pair becomes learn's. */
        void selectCell (int index);
        /** Selects the entry of the controller, or nothing if it has none; learn is not offered the entry,
            being where it came from. */
        void selectController (int controller);
        int getSelectedIndex() const noexcept { return selectedIndex; }
        int getNumEntries() const noexcept { return entries.size(); }
        const Entry& getEntry (int index) const { return entries.getReference (index); }
        void setMinColumns (int columns);
        int getFrameTop() const noexcept { return frameArea.getY(); }

        int getNumRows() const noexcept { return numRows; }
        int getNumColumns() const noexcept { return numColumns; }
        juce::ScrollBar& getScrollBar() noexcept { return *scrollBar; }
        int getScrollOffset() const noexcept { return scrollOffset; }
        /** The middle of a cell, in this component's coordinates as they show now. */
        juce::Point<int> getCellCentre (int index) const;

        void lookAndFeelChanged() override;
        void resized() override;
        void paint (juce::Graphics& g) override;
        void mouseDown (const juce::MouseEvent& event) override;
        void scrollBarMoved (juce::ScrollBar* bar, double newRangeStart) override;

    private:
        void selectCell (int index, bool offerToLearn);
        void calculateColumns();
        void followScrollBar();

        MidiControlComponent& owner;
        MidiControl& midiControl;
        std::unique_ptr<juce::ScrollBar> scrollBar;
        int minColumns = 1;
        juce::Array<Entry> entries;
        int selectedIndex = -1;
        juce::Rectangle<int> frameArea;
        int scrollOffset = 0, innerLeft = 0, innerTop = 0, innerWidth = 0, innerHeight = 0;
        const int headerHeight = 19, rowHeight = 20;
        int numRows = 0, numColumns = 1;
        int columnWidth = 0, controllerWidth = 0, nameWidth = 0;
        juce::Font headerFont, rowFont;

        JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (ListComponent)
    };

    /** `extension` with its dot, the one saved maps take; `wildcards` what the load dialog offers. */
    MidiControlComponent (MidiControl& midiControl, const juce::String& extension,
                          const juce::String& wildcards);
    ~MidiControlComponent() override;

    /** The patterns of the load dialog and of the default map's path, at once. */
    void setWildcards (const juce::String& text);
    void setExtension (const juce::String& text) { extension = text; }

    ListComponent& getList() noexcept { return *list; }
    CheckBox& getLearnBox() noexcept { return learnBox; }
    /** The editor listens to it for its note. */
    DefaultResourceCheckBox& getDefaultMapBox() noexcept { return defaultMapBox; }
    juce::ImageButton& getDeleteButton() noexcept { return *deleteButton; }
    juce::ImageButton& getClearButton() noexcept { return *clearButton; }
    juce::ImageButton& getLoadButton() noexcept { return *loadButton; }
    juce::ImageButton& getSaveButton() noexcept { return *saveButton; }
    Zelkora::AlertWindow* getClearAlert() const noexcept { return clearAlert.get(); }

    void lookAndFeelChanged() override;
    void resized() override;
    void childBoundsChanged (juce::Component* child) override;
    void buttonClicked (juce::Button* button) override;
    void checkBoxChanged (CheckBox* source) override;
    void defaultResourceChanged (DefaultResourceCheckBox* source) override;
    void midiMapChanged (MidiControl* control) override;
    void midiLearnChanged (MidiControl* control) override;
    void alertWindowFinished (Zelkora::AlertWindow* window, int result) override;

private:
    void updateDeleteButton();
    void askClearAll();
    void askForMapToLoad();
    void askForFileToSave();

    juce::String extension, wildcards;
    MidiControl& midiControl;
    CheckBox learnBox;
    DefaultResourceCheckBox defaultMapBox;
    std::unique_ptr<ListComponent> list;
    ComponentRow buttonColumn;
    std::unique_ptr<juce::ImageButton> deleteButton, clearButton, loadButton, saveButton;
    std::unique_ptr<Zelkora::AlertWindow> clearAlert;
    std::unique_ptr<FileDialog> dialog;
    bool layingOut = false;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (MidiControlComponent)
};
