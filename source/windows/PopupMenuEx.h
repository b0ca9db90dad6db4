#pragma once

#include "windows/PseudoModalComponent.h"

/** A cascading menu that opens inside the editor: a transparent cover takes the mouse, and each open
    level is a plain child on it. A submenu opens, and a deeper level closes, when the mouse has rested
    for a tenth of a second; a click chooses at once. The menu is a tree of items with one display at its
    root. */
class PopupMenuEx
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void menuItemSelected (PopupMenuEx* menu, int id, bool ticked) = 0;
    };

    struct Item
    {
        PopupMenuEx* menu = nullptr;
        int id = 0;
        juce::String text;
        bool ticked = false;
        bool enabled = true;
        bool hasTickedChild = false;
        std::unique_ptr<PopupMenuEx> subMenu;
    };

    class PopupMenuComponent;

    /** One open level: its items in rows of 16 pixels. */
    class Window final : public juce::Component
    {
    public:
        Window (PopupMenuComponent& owner, PopupMenuEx& menu);

        /** The row under a local y, or -1: rows start 6 pixels down, though they are drawn from 3. */
        int rowAt (int y) const;
        Item* getHighlighted() const noexcept { return highlighted; }
        PopupMenuEx& getMenu() const noexcept { return menu; }

        void lookAndFeelChanged() override;
        void paint (juce::Graphics& g) override;
        void mouseMove (const juce::MouseEvent& e) override;
        void mouseExit (const juce::MouseEvent& e) override;
        void mouseDown (const juce::MouseEvent& e) override;

    private:
        void fitSize();
        /** Where the item's level should stand, and whether that is another than the one open. */
        void aimAt (Item& item, int row);

        PopupMenuComponent& owner;
        PopupMenuEx& menu;
        juce::Font font{ 14.0f };
        Item* highlighted = nullptr;
    };

    /** The menu's display: spread over the cover, it holds the open levels. */
    class PopupMenuComponent final : public PseudoModalComponent, public juce::Timer
    {
    public:
        explicit PopupMenuComponent (PopupMenuEx& rootMenu);

        void updatePosition() override;
        void shownStateChanged() override;
        void timerCallback() override;
        void mouseDown (const juce::MouseEvent&) override { hide(); }

        int getNumOpenLevels() const noexcept { return windows.size(); }
        Window* getLevel (int index) const noexcept { return windows[index]; }

        PopupMenuEx* pendingMenu = nullptr;
        PopupMenuEx* openMenu = nullptr;
        int pendingX = 0, pendingY = 0;

    private:
        void pop();

        juce::OwnedArray<Window> windows;
        PopupMenuEx& rootMenu;
    };

    explicit PopupMenuEx (const juce::String& name = {});
    ~PopupMenuEx();

    void addItem (int id, const juce::String& text, bool ticked = false, bool enabled = true);
    /** Adds a submenu under `text`; the menu holds it from then on, one level deeper. */
    void addSubMenu (const juce::String& text, std::unique_ptr<PopupMenuEx> subMenu);

    void setItemTicked (int id, bool ticked, bool exclusive);
    Item* findItem (int id) const;
    juce::String getItemText (int id) const;
    void addListener (Listener* listener);

    int getLevel() const noexcept { return level; }
    int getNumItems() const noexcept { return items.size(); }
    Item* getItem (int index) const noexcept { return items[index]; }
    PopupMenuComponent& getComponent() noexcept { return *component; }
    /** The root of the tree this menu belongs to. */
    PopupMenuEx& getRoot() noexcept;

private:
    void tickRecursively (int id, bool ticked, bool exclusive);
    bool updateTickedChildren();
    void notifySelected (int id, bool ticked);

    juce::Array<Listener*> listeners;
    juce::String name;
    int level = 0;
    PopupMenuEx* parent = nullptr;
    juce::OwnedArray<Item> items;
    std::unique_ptr<PopupMenuComponent> component;

    JUCE_DECLARE_NON_COPYABLE (PopupMenuEx)
};
