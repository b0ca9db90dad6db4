#include "windows/PopupMenuEx.h"

#include "common/ListenerWalk.h"
#include "windows/DefaultLookAndFeel.h"

namespace
{
// Rows of 16 pixels, drawn from 3 pixels down and hit from 6; the text 6 pixels in from either side.
constexpr int rowHeight = 16, rowsTop = 3, hitTop = 6, textInset = 6, extraHeight = 8, emptyWidth = 12;
// A level opens or closes when the mouse has rested this long; a submenu stands this far right of its
// parent level.
constexpr int restMilliseconds = 100, subMenuGap = 5;
const juce::Colour menuBody (0xffe3e3e3), highlightFill (0xffadadad);
constexpr float bodyCorner = 6.0f, outlineCorner = 5.0f, highlightCorner = 3.0f;
} // namespace

//==============================================================================
PopupMenuEx::Window::Window (PopupMenuComponent& ownerToUse, PopupMenuEx& menuToShow)
    : owner (ownerToUse)
    , menu (menuToShow)
{
    fitSize();
}

void PopupMenuEx::Window::fitSize()
{
    if (menu.getNumItems() == 0)
    {
        setSize (emptyWidth, extraHeight);
        return;
    }
    float widest = 0.0f;
    for (int i = 0; i < menu.getNumItems(); ++i)
        widest = juce::jmax (widest, font.getStringWidthFloat (menu.getItem (i)->text));
    setSize (juce::roundToInt (widest) + 2 * textInset, rowHeight * menu.getNumItems() + extraHeight);
}

void PopupMenuEx::Window::lookAndFeelChanged()
{
    if (auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel()))
        font = look->getNormalFont();
    fitSize();
    repaint();
}

int PopupMenuEx::Window::rowAt (int y) const
{
    const int row = (y - hitTop) / rowHeight;
    return (unsigned int) row < (unsigned int) menu.getNumItems() && y >= hitTop ? row : -1;
}

void PopupMenuEx::Window::aimAt (Item& item, int row)
{
    owner.pendingMenu = item.subMenu != nullptr ? item.subMenu.get() : item.menu;
    owner.pendingX = getRight() + subMenuGap;
    owner.pendingY = getY() + rowHeight * row;
}

void PopupMenuEx::Window::mouseMove (const juce::MouseEvent& e)
{
    const int row = rowAt (e.y);
    Item* item = row >= 0 ? menu.getItem (row) : nullptr;
    if (item != nullptr)
    {
        aimAt (*item, row);
        if (owner.pendingMenu == owner.openMenu)
            owner.stopTimer();
        else
            owner.startTimer (restMilliseconds);
    }
    if (item != highlighted)
    {
        highlighted = item;
        repaint();
    }
}

void PopupMenuEx::Window::mouseExit (const juce::MouseEvent&)
{
    if (highlighted != nullptr)
    {
        highlighted = nullptr;
        repaint();
    }
}

void PopupMenuEx::Window::mouseDown (const juce::MouseEvent& e)
{
    const int row = rowAt (e.y);
    Item* item = row >= 0 ? menu.getItem (row) : nullptr;
    if (item == nullptr)
        return;
    if (item->subMenu != nullptr)
    {
        aimAt (*item, row);
        if (owner.pendingMenu != owner.openMenu)
            owner.timerCallback();
        return;
    }
    if (!item->enabled)
        return;
    // Hiding deletes this window: what the listeners hear is taken first.
    const int id = item->id;
    const bool ticked = item->ticked;
    auto& root = menu.getRoot();
    auto& component = owner;
    component.stopTimer();
    component.hide();
    root.notifySelected (id, ticked);
}

void PopupMenuEx::Window::paint (juce::Graphics& g)
{
    const auto bounds = getLocalBounds().toFloat();
    g.setColour (menuBody);
    g.fillRoundedRectangle (bounds, bodyCorner);
    g.setColour (juce::Colours::black);
    g.drawRoundedRectangle (bounds, outlineCorner, 1.0f);
    for (int i = 0; i < menu.getNumItems(); ++i)
    {
        auto* item = menu.getItem (i);
        const int y = rowsTop + rowHeight * i;
        if (item == highlighted)
        {
            g.setColour (highlightFill);
            g.fillRoundedRectangle (4.0f, (float) y + 1.0f, (float) getWidth() - 8.0f, (float) rowHeight,
                                    highlightCorner);
        }
        g.setColour (juce::Colours::black);
        g.setFont (item->subMenu != nullptr && item->hasTickedChild ? font.boldened() : font);
        g.drawText (item->text, textInset, y, getWidth() - 2 * textInset, rowHeight,
                    juce::Justification::centredLeft, false);
    }
}

//==============================================================================
PopupMenuEx::PopupMenuComponent::PopupMenuComponent (PopupMenuEx& root)
    : rootMenu (root)
{
}

void PopupMenuEx::PopupMenuComponent::updatePosition()
{
    // The display spreads over the whole cover; the point stays for the root's window.
    if (auto* parent = getParentComponent())
        setBounds (parent->getLocalBounds());
}

void PopupMenuEx::PopupMenuComponent::shownStateChanged()
{
    windows.clear();
    removeAllChildren();
    pendingMenu = nullptr;
    openMenu = nullptr;
    if (isShown())
    {
        pendingMenu = &rootMenu;
        pendingX = positionX;
        pendingY = positionY;
        timerCallback();
    }
}

void PopupMenuEx::PopupMenuComponent::pop()
{
    auto* top = windows.getLast();
    if (top == nullptr || &top->getMenu() == &rootMenu)
        return;
    removeChildComponent (top);
    windows.removeLast();
    openMenu = windows.isEmpty() ? nullptr : &windows.getLast()->getMenu();
}

void PopupMenuEx::PopupMenuComponent::timerCallback()
{
    stopTimer();
    auto* target = pendingMenu;
    if (target == nullptr)
        return;
    while (!windows.isEmpty() && windows.getLast()->getMenu().getLevel() > target->getLevel()
           && &windows.getLast()->getMenu() != &rootMenu)
        pop();
    if (!windows.isEmpty() && windows.getLast()->getMenu().getLevel() == target->getLevel()
        && &windows.getLast()->getMenu() != target)
        pop();
    if (!windows.isEmpty() && &windows.getLast()->getMenu() == target)
        return;
    auto* window = windows.add (new Window (*this, *target));
    window->setTopLeftPosition (pendingX, pendingY);
    addAndMakeVisible (window);
    // JUCE tells a component of its look only when it changes, not when it joins a parent.
    window->sendLookAndFeelChange();
    openMenu = target;
}

//==============================================================================
PopupMenuEx::PopupMenuEx (const juce::String& menuName)
    : name (menuName)
    , component (std::make_unique<PopupMenuComponent> (*this))
{
}

PopupMenuEx::~PopupMenuEx() { component.reset(); }

PopupMenuEx& PopupMenuEx::getRoot() noexcept { return parent != nullptr ? parent->getRoot() : *this; }

void PopupMenuEx::addItem (int id, const juce::String& text, bool ticked, bool enabled)
{
    auto* item = items.add (new Item());
    item->menu = this;
    item->id = id;
    item->text = text;
    item->ticked = ticked;
    item->enabled = enabled;
    updateTickedChildren();
}

void PopupMenuEx::addSubMenu (const juce::String& text, std::unique_ptr<PopupMenuEx> subMenu)
{
    auto* item = items.add (new Item());
    item->menu = this;
    item->text = text;
    subMenu->parent = this;
    subMenu->level = level + 1;
    item->subMenu = std::move (subMenu);
    updateTickedChildren();
}

void PopupMenuEx::tickRecursively (int id, bool ticked, bool exclusive)
{
    for (auto* item : items)
    {
        if (item->subMenu != nullptr)
            item->subMenu->tickRecursively (id, ticked, exclusive);
        else if (item->id == id)
            item->ticked = ticked;
        else if (exclusive)
            item->ticked = false;
    }
}

bool PopupMenuEx::updateTickedChildren()
{
    bool any = false;
    for (auto* item : items)
    {
        if (item->subMenu != nullptr)
            item->hasTickedChild = item->subMenu->updateTickedChildren();
        any = any || item->ticked || item->hasTickedChild;
    }
    return any;
}

void PopupMenuEx::setItemTicked (int id, bool ticked, bool exclusive)
{
    tickRecursively (id, ticked, exclusive);
    updateTickedChildren();
    component->repaint();
}

PopupMenuEx::Item* PopupMenuEx::findItem (int id) const
{
    for (auto* item : items)
    {
        if (item->subMenu != nullptr)
        {
            if (auto* found = item->subMenu->findItem (id))
                return found;
        }
        else if (item->id == id)
        {
            return item;
        }
    }
    return nullptr;
}

juce::String PopupMenuEx::getItemText (int id) const
{
    auto* item = findItem (id);
    return item != nullptr ? item->text : juce::String();
}

void PopupMenuEx::addListener (Listener* listener)
{
    if (listener != nullptr)
        listeners.addIfNotAlreadyThere (listener);
}

void PopupMenuEx::notifySelected (int id, bool ticked)
{
    callListenersBackwards (listeners,
                            [this, id, ticked] (Listener& l) { l.menuItemSelected (this, id, ticked); });
}
