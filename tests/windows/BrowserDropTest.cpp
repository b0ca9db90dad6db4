#include "windows/BrowserFixture.h"
#include "windows/DefaultLookAndFeel.h"

#include <array>

namespace
{
using ListColumn = ColumnBrowser::ListColumn;

/** A browser on its own, that can be told a drag is under way and counts its changes. */
struct DraggingBrowser final : OldStylePresetsBrowser
{
    using OldStylePresetsBrowser::OldStylePresetsBrowser;
    bool isDragRunning() const override { return dragging; }
    void columnsChanged() override { ++changes; }
    bool dragging = false;
    int changes = 0;
};

// The factory bank's groups: three of the maker's and the unused rest.
constexpr std::array<int, 4> factorySizes{ 11, 19, 12, 86 };
// Tall enough for every row of the largest named group to lie in view.
constexpr int browserHeight = 480;

struct DropCase
{
    const char* name;
    bool dragGroup;        // a group row is dragged, else presets
    int fromGroup;         // the group shown, or the group dragged
    std::vector<int> rows; // preset rows selected, the last one clicked last
    int hover;             // a group row hovered on the way, or -1
    bool ontoGroups;       // the drop lands on the group column, else on the preset column
    int row;               // the row under the drop
    int yInRow;            // how far down in that row
    int mode;              // the drop mode shown there
    std::array<int, 4> sizes;
    int groupRow, presetRow; // rows selected afterwards, -1 for none
};

void PrintTo (const DropCase& c, std::ostream* out) { *out << c.name; }

constexpr int top = 2, middle = 10, bottom = 18;

// clang-format off
const DropCase dropCases[] = {
    { "PresetsOntoAGroup", false, 0, { 2, 3 }, 1, true, 1, middle, ListColumn::dropOnItem,
      { 9, 21, 12, 86 }, 1, 20 },
    { "PresetsOntoTheirOwnGroupMoveNothing", false, 0, { 2, 3 }, -1, true, 0, middle, ListColumn::dropOnItem,
      factorySizes, 0, 3 },
    { "SeveralPresetsOverARowGoOntoTheColumn", false, 1, { 0, 1 }, 0, false, 4, middle, ListColumn::dropOnColumn,
      { 13, 17, 12, 86 }, 0, 12 },
    { "SeveralPresetsOverTheirOwnColumnMoveNothing", false, 1, { 1, 2 }, -1, false, 5, top,
      ListColumn::dropOnColumn, factorySizes, 1, 2 },
    { "OnePresetBeforeARowOfItsGroup", false, 1, { 5 }, -1, false, 2, top, ListColumn::dropBefore,
      factorySizes, 1, 2 },
    { "OnePresetAfterARowOfItsGroup", false, 1, { 2 }, -1, false, 6, bottom, ListColumn::dropAfter,
      factorySizes, 1, 6 },
    { "OnePresetBeforeARowOfALaterGroup", false, 0, { 4 }, 2, false, 1, top, ListColumn::dropBefore,
      { 10, 19, 13, 86 }, 2, 1 },
    { "OnePresetAfterARowOfAnEarlierGroup", false, 2, { 0 }, 1, false, 3, bottom, ListColumn::dropAfter,
      { 11, 20, 11, 86 }, 1, 4 },
    { "LastPresetBeforeTheNextGroupsFirstIsNoMove", false, 0, { 10 }, 1, false, 0, top, ListColumn::dropBefore,
      factorySizes, 1, -1 },
    { "FirstPresetAfterTheGroupBeforesLastIsNoMove", false, 1, { 0 }, 0, false, 10, bottom, ListColumn::dropAfter,
      factorySizes, 0, -1 },
    { "GroupMovedAfterAnother", true, 0, {}, -1, true, 2, bottom, ListColumn::dropAfter,
      { 19, 12, 11, 86 }, 2, 0 },
    { "GroupMovedBeforeAnother", true, 2, {}, -1, true, 0, top, ListColumn::dropBefore,
      { 12, 11, 19, 86 }, 0, -1 },
    { "GroupOverThePresetColumnDropsNothing", true, 1, {}, -1, false, 3, middle, ListColumn::noDrop,
      factorySizes, 1, -1 },
};
// clang-format on

struct BrowserDrops : ::testing::TestWithParam<DropCase>
{
    BrowserDrops()
    {
        browser.setLookAndFeel (&look);
        browser.setBounds (0, 0,
                           OldStylePresetsBrowser::GroupListColumn::width
                               + OldStylePresetsBrowser::PresetListColumn::width,
                           browserHeight);
        browser.selectPresetInColumns (0, 0);
    }
    ~BrowserDrops() override
    {
        browser.setLookAndFeel (nullptr);
        juce::Desktop::getInstance().beginDragAutoRepeat (0);
    }

    OldStylePresetsBrowser::GroupListColumn& groups() { return *browser.getGroupColumn(); }
    OldStylePresetsBrowser::PresetListColumn& presets() { return *browser.getPresetColumn(); }

    static juce::Point<int> pointAt (int row, int yInRow)
    {
        constexpr int listInset = 4, somewhereInside = 20;
        return { listInset + somewhereInside, listInset + row * ListColumn::List::rowHeight + yInRow };
    }

    /** The drag moves over `column` at a point of its own: it leaves the column it was over first. */
    void dragOver (ListColumn& column, juce::Point<int> point)
    {
        details.localPosition = point;
        if (over != &column)
        {
            if (over != nullptr)
                over->itemDragExit (details);
            over = &column;
            ASSERT_TRUE (column.isInterestedInDragSource (details));
            column.itemDragEnter (details);
        }
        column.itemDragMove (details);
    }

    PluginHarness plugin;
    DefaultLookAndFeel look;
    DraggingBrowser browser{ nullptr, *plugin };
    juce::DragAndDropTarget::SourceDetails details{ {}, nullptr, {} };
    ListColumn* over = nullptr;
};
} // namespace

TEST_P (BrowserDrops, MoveWhatTheMarkShowsAndKeepTheCurrentPreset)
{
    const auto& c = GetParam();
    ListColumn* source = nullptr;
    if (c.dragGroup)
    {
        groups().selectRow (c.fromGroup);
        source = &groups();
    }
    else
    {
        browser.selectPresetInColumns (c.fromGroup, c.rows.front());
        for (const int row : c.rows)
            presets().getList().selectRow (row, true, false);
        source = &presets();
    }
    const auto* current = plugin->getPreset (plugin->getCurrentPreset());

    details.description = source->getList().getDragSourceDescription (source->getList().getSelectedRows());
    details.sourceComponent = &source->getList();
    browser.dragging = true;

    if (c.hover != -1)
    {
        dragOver (groups(), pointAt (c.hover, middle));
        if (!c.dragGroup && c.hover != c.fromGroup)
        {
            EXPECT_EQ (browser.getHeldColumn(), source) << "the drag's column lives on";
            EXPECT_EQ (presets().getGroup(), c.hover) << "hovering opened the group";
        }
    }
    ListColumn& target = c.ontoGroups ? static_cast<ListColumn&> (groups()) : presets();
    dragOver (target, pointAt (c.row, c.yInRow));
    EXPECT_EQ (target.getDropMode(), c.mode);
    target.itemDropped (details);
    browser.dragging = false;
    EXPECT_EQ (target.getDropMode(), ListColumn::noDrop) << "the marks are gone";

    std::array<int, 4> sizes{};
    int total = 0;
    for (int g = 0; g < plugin->getNumGroups(); ++g)
    {
        total += plugin->getGroupSize (g);
        if (g < (int) sizes.size())
            sizes[(size_t) g] = plugin->getGroupSize (g);
    }
    EXPECT_EQ (total, BasePluginOldStyle::numPresetsInBank);
    EXPECT_EQ (sizes, c.sizes);
    EXPECT_EQ (plugin->getPreset (plugin->getCurrentPreset()), current) << "the current preset is the same";
    EXPECT_EQ (selected (groups()), c.groupRow < 0 ? juce::Array<int>() : juce::Array<int> (c.groupRow));
    EXPECT_EQ (selected (presets()), c.presetRow < 0 ? juce::Array<int>() : juce::Array<int> (c.presetRow));
    if (c.presetRow >= 0)
    {
        EXPECT_EQ (plugin->getPresetIndex (presets().getGroup(), c.presetRow), plugin->getCurrentPreset())
            << "the selected row is the current preset";
    }
}

INSTANTIATE_TEST_SUITE_P (Drops, BrowserDrops, ::testing::ValuesIn (dropCases),
                          [] (const ::testing::TestParamInfo<DropCase>& paramInfo)
                          { return std::string (paramInfo.param.name); });

TEST_F (BrowserDrops, MarksStayInsideTheColumnAndGoWhenTheDragLeaves)
{
    presets().getList().selectRow (2);
    details.description =
        presets().getList().getDragSourceDescription (presets().getList().getSelectedRows());
    details.sourceComponent = &presets().getList();
    dragOver (presets(), pointAt (5, top));
    EXPECT_EQ (presets().getDropRow(), 5);
    EXPECT_EQ (presets().getDropMode(), ListColumn::dropBefore);
    dragOver (presets(), { 1, 1 }); // on the column's margin, outside its list
    EXPECT_EQ (presets().getDropRow(), 5);
    presets().itemDragExit (details);
    EXPECT_EQ (presets().getDropRow(), -1);
    EXPECT_EQ (presets().getDropMode(), ListColumn::noDrop);

    // Another browser's drag is nothing to this one.
    DraggingBrowser other{ nullptr, *plugin };
    other.selectPresetInColumns (0, 0);
    juce::DragAndDropTarget::SourceDetails foreign (details.description, &other.getPresetColumn()->getList(),
                                                    {});
    EXPECT_FALSE (presets().isInterestedInDragSource (foreign));
}

TEST_F (BrowserDrops, KeepTheChainOfColumnsWhole)
{
    const int changes = browser.changes;
    browser.addColumn (nullptr);
    EXPECT_EQ (browser.changes, changes) << "nothing to add, nothing changed";

    // A preset column in an empty row brings its group column along.
    DraggingBrowser fresh{ nullptr, *plugin };
    fresh.setLookAndFeel (&look);
    fresh.addColumn (new OldStylePresetsBrowser::PresetListColumn (fresh, *plugin, 1));
    ASSERT_EQ (fresh.getNumColumns(), 2);
    EXPECT_NE (fresh.getGroupColumn(), nullptr);
    EXPECT_EQ (fresh.getPresetColumn()->getPreviousColumn(), fresh.getGroupColumn());
    EXPECT_TRUE (fresh.getPresetColumn()->isLastColumn());

    // A column that replaces another keeps its width, never under a hundred.
    fresh.getPresetColumn()->setSize (60, fresh.getPresetColumn()->getHeight());
    fresh.addColumn (new OldStylePresetsBrowser::PresetListColumn (fresh, *plugin, 2));
    EXPECT_EQ (fresh.getPresetColumn()->getWidth(), ColumnBrowser::Column::smallestWidth);
    EXPECT_EQ (fresh.getViewportComponent().getWidth(),
               OldStylePresetsBrowser::GroupListColumn::width + ColumnBrowser::Column::smallestWidth);
    fresh.setLookAndFeel (nullptr);
}
