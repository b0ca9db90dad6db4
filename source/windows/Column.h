#pragma once

#include "windows/ColumnBrowser.h"

/** One column of a browser: a rounded body, and, if it may be resized, a grip at its right edge that the
    mouse drags. What follows what is for the subclasses to say. */
class ColumnBrowser::Column : public juce::Component
{
public:
    static constexpr int defaultWidth = 200;
    static constexpr int smallestWidth = 100;
    /** The strip at the right that holds the grip and the gap to the next column. */
    static constexpr int gripWidth = 7;

    Column();
    ~Column() override;

    /** Whether this column may stand behind `last` when it is added. */
    virtual bool canFollow (Column* last) = 0;
    /** Whether this column fits behind `previous` when the chain is checked. */
    virtual bool isLinkedTo (Column* previous) = 0;
    /** A new column to put in front of this one, or null. */
    virtual Column* createParentColumn() { return nullptr; }
    virtual bool isResizable() { return true; }
    virtual int getDefaultWidth() { return defaultWidth; }
    /** Refreshes the column from the model. */
    virtual void update() {}

    Column* getPreviousColumn() const noexcept { return previousColumn; }
    Column* getNextColumn() const noexcept { return nextColumn; }
    bool isLastColumn() const noexcept { return isLast; }
    ColumnBrowser* getBrowser() const noexcept { return browser; }

    void paint (juce::Graphics& g) override;
    void mouseDown (const juce::MouseEvent& e) override;
    void mouseDrag (const juce::MouseEvent& e) override;
    void mouseUp (const juce::MouseEvent& e) override;

protected:
    /** Whether the body leaves the grip's strip free at the right. */
    bool hasGripStrip() { return nextColumn != nullptr || isResizable(); }

private:
    friend class ColumnBrowser;

    bool isLast = false;
    bool resizing = false;
    int widthAtDragStart = 0;
    Column* previousColumn = nullptr;
    Column* nextColumn = nullptr;
    ColumnBrowser* browser = nullptr;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (Column)
};
