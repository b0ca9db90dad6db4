#include "windows/MidiControlComponent.h"

#include "parameters/Parameter.h"
#include "windows/DefaultLookAndFeel.h"

#include <iterator>

namespace
{
// The page: the gap below the learn box and above the default map, and between table and buttons.
constexpr int learnGap = 4, mapGap = 4, buttonGap = 5;
// The buttons take the normal icon set.
constexpr int iconSize = 0;
// The table: the frame's corner, the room that the frame and its gaps take from the rows' height, and
// the insets of the cells' texts.
constexpr float frameCorner = 5.0f;
constexpr int frameRoom = 6, frameGap = 4, cellInset = 5, numberPadding = 8;
// The scroll bar's arrows move a twelfth of a column.
constexpr int stepsPerColumn = 12;
const juce::Colour headerColour (0xff6e6e6e), bodyColour (0xffe3e3e3), numberHeaderColour (0xff5b5b5b),
    numberBodyColour (0xffbfbfbf), lineColour (0xff6e6e6e), selectionColour (0xff5b5b5b);
constexpr float selectionAlpha = 0.5f;

struct ButtonSpec
{
    const char* name;
    const char* tooltip;
    int icon;
};

const ButtonSpec buttonSpecs[] = {
    { "Delete Assign", "Delete selected assignation", DefaultLookAndFeel::deleteIcon },
    { "Clear All", "Clear all map", DefaultLookAndFeel::binIcon },
    { "Load Map", "Open map", DefaultLookAndFeel::openIcon },
    { "Save Map", "Save current map", DefaultLookAndFeel::saveIcon },
};
} // namespace

//==============================================================================
MidiControlComponent::ListComponent::ListComponent (MidiControlComponent& ownerToUse, MidiControl& control)
    : owner (ownerToUse)
    , midiControl (control)
    , scrollBar (std::make_unique<juce::ScrollBar> (false))
{
    entries.ensureStorageAllocated (MidiControl::numControllers);
    // Its arrows are the look and feel's to show, and the family's does.
    scrollBar->setAutoHide (false);
    scrollBar->addListener (this);
    addChildComponent (*scrollBar);
    lookAndFeelChanged();
}

MidiControlComponent::ListComponent::~ListComponent() { scrollBar->removeListener (this); }

void MidiControlComponent::ListComponent::refresh()
{
    entries.clearQuick();
    selectedIndex = -1;
    // The map's lock is taken for each read, never across the walk.
    for (int controller = 0; controller < MidiControl::numControllers; ++controller)
        if (auto* parameter = midiControl.getAssignedParameter (controller))
            entries.add ({ controller, parameter->getName() });
    calculateColumns();
}

void MidiControlComponent::ListComponent::setMinColumns (int columns)
{
    minColumns = juce::jmax (1, columns);
    calculateColumns();
}

void MidiControlComponent::ListComponent::lookAndFeelChanged()
{
    if (auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel()))
    {
        headerFont = look->getBoldFont();
        rowFont = look->getNormalFont();
    }
    scrollBar->setBounds (scrollBar->getX(), scrollBar->getY(), getWidth(),
                          getLookAndFeel().getDefaultScrollbarWidth());
    resized();
}

void MidiControlComponent::ListComponent::resized()
{
    const int h = getHeight(), s = scrollBar->getHeight();
    // At least one row, so that cells have a place even in a table squeezed too small.
    numRows = juce::jmax (1, (h - s - headerHeight - frameRoom) / rowHeight);
    const int t = numRows * rowHeight + headerHeight + 2;
    frameArea = getLocalBounds().withY ((h - s - t - frameGap) / 2).withHeight (t);
    scrollBar->setBounds (0, frameArea.getY() + t + frameGap, getWidth(), s);
    calculateColumns();
}

void MidiControlComponent::ListComponent::calculateColumns()
{
    const auto inner = frameArea.reduced (1);
    innerLeft = inner.getX();
    innerTop = inner.getY();
    innerHeight = inner.getHeight();
    numColumns = juce::jmax (minColumns, (entries.size() + numRows - 1) / juce::jmax (1, numRows));
    columnWidth = inner.getWidth() / minColumns + 1;
    controllerWidth = juce::jmax (juce::roundToInt (rowFont.getStringWidthFloat ("127")),
                                  juce::roundToInt (headerFont.getStringWidthFloat ("CC")))
                      + numberPadding;
    nameWidth = columnWidth - controllerWidth;
    innerWidth = juce::jmax (inner.getWidth(), columnWidth * numColumns);

    scrollBar->setRangeLimits (0.0, (double) (columnWidth * numColumns), juce::dontSendNotification);
    scrollBar->setCurrentRange (scrollBar->getCurrentRangeStart(), (double) (minColumns * columnWidth),
                                juce::dontSendNotification);
    scrollBar->setSingleStepSize ((double) (columnWidth / stepsPerColumn));
    scrollBar->setVisible (numColumns > minColumns);
    // A narrower range may have moved the thumb back.
    scrollOffset = -juce::roundToInt (scrollBar->getCurrentRangeStart());
    repaint (frameArea);
}

void MidiControlComponent::ListComponent::scrollBarMoved (juce::ScrollBar*, double) { followScrollBar(); }

void MidiControlComponent::ListComponent::followScrollBar()
{
    const int offset = -juce::roundToInt (scrollBar->getCurrentRangeStart());
    if (offset == scrollOffset)
        return;
    scrollOffset = offset;
    repaint (frameArea);
}

juce::Point<int> MidiControlComponent::ListComponent::getCellCentre (int index) const
{
    const int column = index / numRows, row = index % numRows;
    return { innerLeft + scrollOffset + column * columnWidth + columnWidth / 2,
             innerTop + headerHeight + row * rowHeight + rowHeight / 2 };
}

void MidiControlComponent::ListComponent::mouseDown (const juce::MouseEvent& event)
{
    const auto position = event.getPosition();
    if (!frameArea.contains (position))
        return;
    // Into the table's own coordinates, which the scrolling shifts.
    const int x = position.x - innerLeft - scrollOffset, y = position.y - innerTop;
    if (y < headerHeight)
        return;
    const int column = juce::jlimit (0, numColumns - 1, x / columnWidth);
    const int row = juce::jlimit (0, numRows - 1, (y - headerHeight) / rowHeight);
    selectCell (numRows * column + row);
}

void MidiControlComponent::ListComponent::selectCell (int index) { selectCell (index, true); }

void MidiControlComponent::ListComponent::selectController (int controller)
{
    for (int i = 0; i < entries.size(); ++i)
        if (entries.getReference (i).controller == controller)
        {
            selectCell (i, false);
            return;
        }
    selectCell (-1, false);
}

void MidiControlComponent::ListComponent::selectCell (int index, bool offerToLearn)
{
    if (index == selectedIndex)
        return;
    selectedIndex = index;
    if (index >= 0)
    {
        // Its column into view.
        const double p = scrollBar->getCurrentRangeStart(), t = scrollBar->getCurrentRangeSize();
        const int c = index / numRows;
        if (columnWidth * c < p)
            scrollBar->setCurrentRangeStart ((double) (columnWidth * c), juce::dontSendNotification);
        else if (columnWidth * (c + 1) > p + t)
            scrollBar->setCurrentRangeStart ((double) (columnWidth * (c + 1)) - t,
                                             juce::dontSendNotification);
        followScrollBar();
    }
    repaint (frameArea);
    owner.updateDeleteButton();
    if (offerToLearn && midiControl.isLearnActive() && juce::isPositiveAndBelow (index, entries.size()))
        midiControl.selectLearnAssignment (entries.getReference (index).controller);
}

void MidiControlComponent::ListComponent::paint (juce::Graphics& g)
{
    g.setColour (juce::Colours::white);
    g.drawRoundedRectangle (frameArea.toFloat().reduced (0.5f), frameCorner, 1.0f);

    juce::Path clip;
    clip.addRoundedRectangle (frameArea.reduced (1).toFloat(), frameCorner);
    g.reduceClipRegion (clip);

    const int left = innerLeft + scrollOffset, bodyTop = innerTop + headerHeight;
    const int bodyHeight = innerTop + innerHeight - bodyTop;
    g.setColour (headerColour);
    g.fillRect (left, innerTop, innerWidth, headerHeight);
    g.setColour (bodyColour);
    g.fillRect (left, bodyTop, innerWidth, bodyHeight);

    // Only the columns that show.
    const auto clipBounds = g.getClipBounds();
    const int firstColumn = juce::jmax (0, (clipBounds.getX() - left) / juce::jmax (1, columnWidth));
    const int endColumn =
        juce::jmin (numColumns, (clipBounds.getRight() - left) / juce::jmax (1, columnWidth) + 1);
    for (int c = firstColumn; c < endColumn; ++c)
    {
        const int x = left + columnWidth * c;
        g.setColour (numberHeaderColour);
        g.fillRect (x, innerTop, controllerWidth, headerHeight);
        g.setColour (numberBodyColour);
        g.fillRect (x, bodyTop, controllerWidth, bodyHeight);
        g.setColour (juce::Colours::white);
        g.setFont (headerFont);
        g.drawText ("CC", x, innerTop, controllerWidth, headerHeight, juce::Justification::centred, false);
        g.drawText ("Parameter", x + controllerWidth + cellInset, innerTop, nameWidth - 2 * cellInset,
                    headerHeight, juce::Justification::centredLeft, false);
    }

    g.setColour (lineColour);
    for (int r = 1; r <= numRows; ++r)
        g.fillRect (innerLeft, rowHeight * r + headerHeight + innerTop, innerWidth, 1);

    g.setFont (rowFont);
    const int end = juce::jmin (entries.size(), endColumn * numRows);
    for (int i = firstColumn * numRows; i < end; ++i)
    {
        const auto& entry = entries.getReference (i);
        const int x = left + columnWidth * (i / numRows), y = bodyTop + rowHeight * (i % numRows);
        if (i == selectedIndex)
        {
            g.setColour (selectionColour.withAlpha (selectionAlpha));
            g.fillRect (x, y, columnWidth, rowHeight);
            g.setColour (juce::Colours::white);
        }
        else
        {
            g.setColour (juce::Colours::black);
        }
        g.drawText (juce::String (entry.controller), x + cellInset, y, controllerWidth - 2 * cellInset,
                    rowHeight, juce::Justification::centred, false);
        g.drawText (entry.name, x + controllerWidth + cellInset, y, nameWidth - 2 * cellInset, rowHeight,
                    juce::Justification::centredLeft, true);
    }
}

//==============================================================================
MidiControlComponent::MidiControlComponent (MidiControl& control, const juce::String& extensionToUse,
                                            const juce::String& wildcardsToUse)
    : extension (extensionToUse)
    , wildcards (wildcardsToUse)
    , midiControl (control)
{
    std::unique_ptr<juce::ImageButton>* fields[] = { &deleteButton, &clearButton, &loadButton, &saveButton };
    for (size_t i = 0; i < std::size (buttonSpecs); ++i)
    {
        auto& button = *fields[i];
        button = std::make_unique<juce::ImageButton> (buttonSpecs[i].name);
        button->setTooltip (buttonSpecs[i].tooltip);
        button->addListener (this);
    }

    learnBox.setText ("Midi Learn mode");
    learnBox.addListener (this);
    addAndMakeVisible (learnBox);

    defaultMapBox.addListener (this);
    defaultMapBox.getCheck().setText ("Default map");
    defaultMapBox.setWildcards (wildcards);
    defaultMapBox.setPath (midiControl.getDefaultMapFile());
    addAndMakeVisible (defaultMapBox);

    list = std::make_unique<ListComponent> (*this, midiControl);
    list->setMinColumns (3);
    addAndMakeVisible (*list);

    buttonColumn.setVertical (true);
    buttonColumn.setAlignment (ComponentRow::end);
    addAndMakeVisible (buttonColumn);
    for (auto* field : fields)
        buttonColumn.addAndMakeVisible (**field);

    midiControl.addListener (this);
    lookAndFeelChanged();
    midiLearnChanged (&midiControl);
    midiMapChanged (&midiControl);
}

MidiControlComponent::~MidiControlComponent()
{
    midiControl.removeListener (this);
    // The alert wears the look and feel it was lent; it gives it back before the lender may go.
    if (clearAlert != nullptr)
        clearAlert->setLookAndFeel (nullptr);
    for (auto* button : { deleteButton.get(), clearButton.get(), loadButton.get(), saveButton.get() })
        button->removeListener (this);
    learnBox.removeListener (this);
    defaultMapBox.removeListener (this);
}

void MidiControlComponent::setWildcards (const juce::String& text)
{
    wildcards = text;
    defaultMapBox.setWildcards (text);
}

void MidiControlComponent::lookAndFeelChanged()
{
    if (auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel()))
    {
        juce::ImageButton* buttons[] = { deleteButton.get(), clearButton.get(), loadButton.get(),
                                         saveButton.get() };
        for (size_t i = 0; i < std::size (buttonSpecs); ++i)
            look->setButtonIcon (*buttons[i], buttonSpecs[i].icon, iconSize);
        repaint();
    }
}

void MidiControlComponent::resized()
{
    if (layingOut)
        return;
    const juce::ScopedValueSetter<bool> guard (layingOut, true);
    auto area = getLocalBounds();
    learnBox.setTopLeftPosition (0, 0);
    area.removeFromTop (learnBox.getHeight() + learnGap);
    defaultMapBox.setBounds (area.removeFromBottom (defaultMapBox.getHeight()));
    area.removeFromBottom (mapGap);
    auto strip = area.removeFromRight (buttonColumn.getWidth() + buttonGap);
    list->setBounds (area);
    strip.removeFromLeft (buttonGap);
    strip.removeFromTop (list->getFrameTop());
    buttonColumn.setTopLeftPosition (strip.getPosition());
}

void MidiControlComponent::childBoundsChanged (juce::Component* child)
{
    // The children take their sizes from the look and feel after the page has had it.
    if (child == &buttonColumn || child == &learnBox || child == &defaultMapBox)
        resized();
}

void MidiControlComponent::buttonClicked (juce::Button* button)
{
    if (button == deleteButton.get())
    {
        if (juce::isPositiveAndBelow (list->getSelectedIndex(), list->getNumEntries()))
            midiControl.clearController (list->getEntry (list->getSelectedIndex()).controller);
    }
    else if (button == clearButton.get())
        askClearAll();
    else if (button == loadButton.get())
        askForMapToLoad();
    else if (button == saveButton.get())
        askForFileToSave();
}

void MidiControlComponent::askClearAll()
{
    // The earlier question, answered by now, goes; never from inside its own answer.
    if (clearAlert != nullptr)
        clearAlert->setLookAndFeel (nullptr);
    clearAlert = Zelkora::AlertWindow::createYesNo (midiControl.getApplicationName(),
                                                    "Do you really want to clear all assignations?", this);
    // Dressed like every other dialog, in the look that the page has from the editor.
    clearAlert->setLookAndFeel (&getLookAndFeel());
    addChildComponent (*clearAlert);
    clearAlert->showCentred();
}

void MidiControlComponent::alertWindowFinished (Zelkora::AlertWindow* window, int result)
{
    if (window == clearAlert.get() && result == 1)
        midiControl.clearAll();
}

void MidiControlComponent::askForMapToLoad()
{
    FileDialog::Request request;
    request.mode = FileDialog::Mode::open;
    request.title = "Open Midi Control file";
    request.patterns = wildcards;
    dialog = FileDialog::create();
    // The map's listeners, this page among them, hear of the result.
    dialog->ask (*this, request, [this] (const juce::File& chosen) { midiControl.loadFile (chosen); });
}

void MidiControlComponent::askForFileToSave()
{
    FileDialog::Request request;
    request.mode = FileDialog::Mode::save;
    request.title = "Save Midi Control file as";
    request.patterns = "*" + extension;
    request.warnAboutOverwriting = true;
    dialog = FileDialog::create();
    dialog->ask (*this, request,
                 [this] (const juce::File& chosen)
                 { midiControl.saveFile (chosen.withFileExtension (extension)); });
}

void MidiControlComponent::checkBoxChanged (CheckBox* source)
{
    if (source == &learnBox)
        midiControl.setLearnActive (learnBox.getToggleState());
}

void MidiControlComponent::defaultResourceChanged (DefaultResourceCheckBox* source)
{
    if (source != &defaultMapBox)
        return;
    // For the next start.
    midiControl.setUseDefaultMap (defaultMapBox.isChecked());
    midiControl.setDefaultMapFile (defaultMapBox.getPath());
}

void MidiControlComponent::midiMapChanged (MidiControl*)
{
    list->refresh();
    clearButton->setEnabled (midiControl.getNumAssignments() != 0);
    updateDeleteButton();
}

void MidiControlComponent::midiLearnChanged (MidiControl*)
{
    learnBox.setToggleState (midiControl.isLearnActive());
    const int controller = midiControl.getLearnController();
    if (controller != MidiControl::noController && midiControl.getLearnParameter() != nullptr)
        list->selectController (controller);
    else
        list->selectCell (-1);
}

void MidiControlComponent::updateDeleteButton()
{
    // -1, taken as unsigned, is past every entry.
    deleteButton->setEnabled ((unsigned) list->getSelectedIndex() < (unsigned) list->getNumEntries());
}
