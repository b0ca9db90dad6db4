#include "skin/GFXDisplay.h"
#include "support/GoldenImage.h"
#include "support/MouseEvents.h"
#include "windows/BrowserFixture.h"
#include "windows/TextButtonEx.h"

namespace
{
struct BrowserWindow : ::testing::Test, BrowserFixture
{
};

/** Types `text` over the whole name in the row's in-place editor and ends with `key`. */
void rename (ColumnBrowser::ListColumn& column, int row, const juce::String& text, int key)
{
    column.startRename (row);
    auto* item = itemAt (column, row);
    ASSERT_NE (item, nullptr);
    auto* editor = item->getLabel().getEditor();
    ASSERT_NE (editor, nullptr) << "the rename started";
    editor->focusGained (juce::Component::focusChangedByMouseClick);
    editor->selectAll();
    editor->insertTextAtCaret (text);
    editor->keyPressed (juce::KeyPress (key));
}
} // namespace

TEST_F (BrowserWindow, OpensOnTheCurrentPresetWithTheGroupButtonsSet)
{
    // Before any news of the current preset: no columns, and group buttons that can't act on nothing.
    OldStylePresetBrowserWindow fresh (*h.plugin);
    EXPECT_EQ (fresh.getBrowser().getNumColumns(), 0);
    EXPECT_FALSE (fresh.getAddGroupButton().isEnabled());
    EXPECT_FALSE (fresh.getRemoveGroupButton().isEnabled());

    ASSERT_EQ (browser().getNumColumns(), 2);
    EXPECT_EQ (selected (groups()), juce::Array<int> (0));
    EXPECT_EQ (presets().getGroup(), 0);
    EXPECT_EQ (selected (presets()), juce::Array<int> (0));
    EXPECT_TRUE (window->getAddGroupButton().isEnabled());
    EXPECT_FALSE (window->getRemoveGroupButton().isEnabled()) << "the first group holds presets";

    // Docked, the two columns exactly fill the browser.
    EXPECT_EQ (browser().getBounds().getWidth(), browserWidth);
    EXPECT_EQ (browser().getBounds().getHeight(), browserHeight);
    EXPECT_EQ (groups().getWidth() + presets().getWidth(), browserWidth);
    EXPECT_EQ (window->getPresetLabel().getWidth(),
               window->getPresetLabel().getFont().getStringWidth ("Preset") + 20);
}

TEST_F (BrowserWindow, FollowsThePresetBothWays)
{
    // A click on a preset row makes it current, and the columns hear of it without a change.
    presets().getList().selectRow (3);
    EXPECT_EQ (plugin().getCurrentPreset(), 3);
    h.pump();
    EXPECT_EQ (selected (presets()), juce::Array<int> (3));

    // The editor's Next event, and a program change in the audio.
    h.editor->controllerEvent (nullptr, 1002);
    h.pump();
    EXPECT_EQ (selected (presets()), juce::Array<int> (4));

    const int target = plugin().getGroupStart (2) + 5;
    h.plugin->prepareToPlay (44100.0, 64);
    juce::AudioBuffer<float> audio (2, 64);
    audio.clear();
    juce::MidiBuffer midi;
    midi.addEvent (juce::MidiMessage::programChange (1, target), 10);
    h.plugin->processBlock (audio, midi);
    h.pump();
    EXPECT_EQ (plugin().getCurrentPreset(), target);
    EXPECT_EQ (selected (groups()), juce::Array<int> (2));
    EXPECT_EQ (presets().getGroup(), 2);
    EXPECT_EQ (selected (presets()), juce::Array<int> (5));

    // "Up" on a group's first row goes on into the group before.
    presets().getList().selectRow (0);
    h.pump();
    window->buttonClicked (&window->getPreviousButton());
    h.pump();
    EXPECT_EQ (plugin().getCurrentPreset(), plugin().getGroupStart (2) - 1);
    EXPECT_EQ (selected (groups()), juce::Array<int> (1));
    EXPECT_EQ (presets().getGroup(), 1);
    EXPECT_EQ (selected (presets()), juce::Array<int> (plugin().getGroupSize (1) - 1));
}

TEST_F (BrowserWindow, ASelectionOfSeveralSurvivesANewName)
{
    presets().getList().selectRow (2);
    presets().getList().selectRow (4, true, false);
    presets().getList().selectRow (3, true, false);
    h.pump();
    ASSERT_EQ (plugin().getCurrentPreset(), 3);
    plugin().setPresetName (3, "Renamed elsewhere");
    h.pump();
    EXPECT_EQ (selected (presets()), juce::Array<int> ({ 2, 3, 4 }));
    auto* item = itemAt (presets(), 3);
    ASSERT_NE (item, nullptr);
    EXPECT_EQ (item->getLabel().getText(), "Renamed elsewhere");

    // A double click on one row of several starts no rename.
    auto& list = presets().getList();
    list.listBoxItemDoubleClicked (3, MouseEvents::at (list, {}, {}, {}));
    EXPECT_EQ (item->getLabel().getEditor(), nullptr);
}

struct RenameCase
{
    const char* name;
    juce::String typed;
    int key;
    bool taken;
};

void PrintTo (const RenameCase& c, std::ostream* out) { *out << c.name; }

struct BrowserRename : BrowserWindow, ::testing::WithParamInterface<RenameCase>
{
};

TEST_P (BrowserRename, TakesWhatIsTypedOnReturnAndNothingOnEscape)
{
    const auto& c = GetParam();
    const auto before = plugin().getPresetName (0);
    rename (presets(), 0, c.typed, c.key);
    h.pump();
    const auto expected = c.taken ? c.typed : before;
    EXPECT_EQ (plugin().getPresetName (0), expected);
    EXPECT_EQ (h.control<GFXDisplay> ("PresetNameDisplay").getText(), expected) << "the face shows it";

    rename (groups(), 0, c.typed, c.key);
    h.pump();
    EXPECT_EQ (plugin().getGroupName (0), c.taken ? c.typed : "Classic Boxes");
}

INSTANTIATE_TEST_SUITE_P (
    Names, BrowserRename,
    ::testing::Values (RenameCase{ "Return", "Crushed Loop", juce::KeyPress::returnKey, true },
                       RenameCase{ "Escape", "Crushed Loop", juce::KeyPress::escapeKey, false },
                       RenameCase{ "Empty", "", juce::KeyPress::returnKey, true },
                       RenameCase{ "Long", juce::String::repeatedString ("long ", 80),
                                   juce::KeyPress::returnKey, true }),
    [] (const ::testing::TestParamInfo<RenameCase>& paramInfo)
    { return std::string (paramInfo.param.name); });

TEST_F (BrowserWindow, AddsAndRemovesOnlyEmptyGroups)
{
    const int groupsBefore = plugin().getNumGroups();
    groups().selectRow (1);
    h.pump();
    EXPECT_FALSE (window->getRemoveGroupButton().isEnabled());
    window->buttonClicked (&window->getRemoveGroupButton());
    EXPECT_EQ (plugin().getNumGroups(), groupsBefore) << "a group that holds presets stays";

    window->buttonClicked (&window->getAddGroupButton());
    EXPECT_EQ (plugin().getNumGroups(), groupsBefore + 1);
    EXPECT_EQ (plugin().getGroupName (1), "New Group") << "before the selected group";
    EXPECT_EQ (selected (groups()), juce::Array<int> (1));
    EXPECT_EQ (presets().getNumItems(), 0);
    EXPECT_TRUE (window->getRemoveGroupButton().isEnabled());

    window->buttonClicked (&window->getRemoveGroupButton());
    EXPECT_EQ (plugin().getNumGroups(), groupsBefore);
    EXPECT_EQ (plugin().getGroupName (1), "Linked Channels");
}

TEST_F (BrowserWindow, LooksAsItShouldDockedBelowTheFace)
{
    groups().selectRow (1);
    presets().getList().selectRow (2);
    h.pump();
    // The editor as it will be with the panel open: the face, the panel, the status bar.
    const auto face = h.snapshot();
    const int statusHeight = face.getHeight() - faceHeight;
    juce::Image whole (juce::Image::RGB, panelWidth, faceHeight + window->getHeight() + statusHeight, true);
    {
        juce::Graphics g (whole);
        g.drawImageAt (face.getClippedImage ({ 0, 0, panelWidth, faceHeight }), 0, 0);
        g.drawImageAt (window->createComponentSnapshot (window->getLocalBounds()), 0, faceHeight);
        g.drawImageAt (face.getClippedImage ({ 0, faceHeight, panelWidth, statusHeight }), 0,
                       faceHeight + window->getHeight());
    }
    EXPECT_EQ (whole.getHeight(), 479);
    EXPECT_EQ (GoldenImage::check (whole, "windows/browser-below-face"), "");
}

// A file dialog that remembers what it was asked and answers when the test says.
struct FakeDialog final : FileDialog
{
    void ask (juce::Component&, const Request& request, Answer answer) override
    {
        asked.push_back (request);
        pending = std::move (answer);
    }
    static inline std::vector<Request> asked;
    static inline Answer pending;
};

struct BrowserFiles : BrowserWindow
{
    BrowserFiles()
    {
        FakeDialog::asked.clear();
        FakeDialog::pending = nullptr;
        FileDialog::setFactory ([] { return std::make_unique<FakeDialog>(); });
        plugin().setRecentDirectory (h.folder.getFullPathName());
    }
    ~BrowserFiles() override { FileDialog::setFactory ({}); }

    /** Clicks the button, then answers with `file` (none: the user cancelled). */
    void choose (juce::Button& button, const juce::File& file)
    {
        window->buttonClicked (&button);
        if (file != juce::File())
            FakeDialog::pending (file);
        h.pump();
    }
};

TEST_F (BrowserFiles, AskWithTheirTitlesPatternsAndFolder)
{
    struct Expected
    {
        juce::Button& button;
        const char* title;
        const char* patterns;
        FileDialog::Mode mode;
    };
    const Expected table[] = {
        { window->getLoadPresetButton(), "Load single preset", "*.vtprs; *.vtp", FileDialog::Mode::open },
        { window->getSavePresetButton(), "Save current settings as preset", "*.vtprs",
          FileDialog::Mode::save },
        { window->getLoadBankButton(), "Load preset bank", "*.vtprsb; *.vtb", FileDialog::Mode::open },
        { window->getSaveBankButton(), "Save preset bank", "*.vtprsb", FileDialog::Mode::save },
    };
    for (const auto& e : table)
    {
        choose (e.button, {});
        const auto& request = FakeDialog::asked.back();
        EXPECT_EQ (request.title, e.title);
        EXPECT_EQ (request.patterns, e.patterns) << e.title;
        EXPECT_EQ (request.mode, e.mode) << e.title;
        EXPECT_EQ (request.warnAboutOverwriting, e.mode == FileDialog::Mode::save) << e.title;
        EXPECT_EQ (request.startFolder, h.folder) << e.title;
    }
    EXPECT_EQ (plugin().getCurrentPreset(), 0) << "cancelling changed nothing";
}

TEST_F (BrowserFiles, SaveTheCurrentPresetAsItIsWhenTheAnswerComes)
{
    const auto elsewhere = h.folder.getChildFile ("elsewhere");
    ASSERT_TRUE (elsewhere.createDirectory());
    window->buttonClicked (&window->getSavePresetButton());
    // The user picks a preset while the dialog is open; the answer saves that one.
    presets().getList().selectRow (6);
    FakeDialog::pending (elsewhere.getChildFile ("x"));
    const auto written = elsewhere.getChildFile ("x.vtprs");
    ASSERT_TRUE (written.existsAsFile());
    EXPECT_TRUE (written.loadFileAsString().contains (plugin().getPresetName (6)));
    EXPECT_EQ (plugin().getRecentDirectory(), elsewhere.getFullPathName());

    choose (window->getSaveBankButton(), elsewhere.getChildFile ("all.txt"));
    EXPECT_TRUE (elsewhere.getChildFile ("all.vtprsb").existsAsFile());
}

TEST_F (BrowserFiles, ShowTheGroupsOfALoadedBankAndLeaveTheBankForBadFiles)
{
    // A bank of two groups, made by a plug-in of its own: all but the first group poured into the second.
    const auto bank = h.folder.getChildFile ("two.vtprsb");
    {
        PluginHarness other;
        while (other->getNumGroups() > 2)
        {
            juce::SparseSet<int> all;
            all.addRange ({ 0, other->getGroupSize (2) });
            other->movePresetsToGroup (1, 2, all);
            other->removeEmptyGroup (2);
        }
        ASSERT_TRUE (other->saveBankFile (bank));
    }
    const auto garbage = h.folder.getChildFile ("garbage.vtprsb");
    garbage.replaceWithText ("not a bank at all");
    const auto foreign = h.folder.getChildFile ("foreign.vtprsb");
    foreign.replaceWithText ("<Session application=\"SomethingElse\"><Track name=\"one\"/></Session>");

    const int groupsBefore = plugin().getNumGroups();
    for (const auto& bad : { garbage, foreign })
    {
        choose (window->getLoadBankButton(), bad);
        EXPECT_EQ (plugin().getNumGroups(), groupsBefore) << bad.getFileName();
        EXPECT_EQ (groups().getNumItems(), groupsBefore) << bad.getFileName();
    }
    choose (window->getLoadPresetButton(), garbage);
    EXPECT_EQ (plugin().getPresetName (0), "MPC 60");

    choose (window->getLoadBankButton(), bank);
    EXPECT_EQ (groups().getNumItems(), 2);
    ASSERT_NE (itemAt (groups(), 1), nullptr);
    EXPECT_EQ (itemAt (groups(), 1)->getLabel().getText(), "Linked Channels");
    EXPECT_EQ (selected (groups()), juce::Array<int> (0));
}
