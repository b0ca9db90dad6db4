#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** A dialog inside the editor, where no modal loop may run: the window stands on a cover that spreads over
    the whole editor, takes every click outside the window, and may dim what lies below. Showing returns
    at once; answers come later. Nothing here uses JUCE's modal state. */
class PseudoModalComponent : public juce::Component
{
public:
    /** Marks the component that carries the covers: the editor. */
    class Desktop
    {
    public:
        virtual ~Desktop() = default;
    };

    /** The cover: it has no mouse handlers, so the clicks it takes go nowhere. */
    class CoveringWindow final : public juce::Component
    {
    public:
        explicit CoveringWindow (PseudoModalComponent& ownerToUse);
        void parentHierarchyChanged() override;
        void parentSizeChanged() override;
        void resized() override;
        void paint (juce::Graphics& g) override;

    private:
        PseudoModalComponent& owner;
    };

    enum PositionMode
    {
        centred = 0,
        atPoint = 1
    };

    PseudoModalComponent();
    ~PseudoModalComponent() override;

    void showCentred();
    /** Shows the window with its top left corner at `position`, taken from `relativeTo`'s coordinates if
        it is given. */
    void showAt (int mode, juce::Point<int> position, juce::Component* relativeTo);
    void hide();
    /** Hangs the window on its cover and the cover on the nearest desktop above `start`. */
    void attachToDesktop (juce::Component* start);

    /** Whether the window shows now: on its cover, the cover's visibility; without one, its own. */
    bool isShown() const;
    CoveringWindow& getCover() noexcept { return coveringWindow; }

    virtual bool isDimmingBackground() { return false; }
    virtual void updatePosition();
    virtual void shownStateChanged() {}

    void parentHierarchyChanged() override;

protected:
    int positionMode = centred;
    int positionX = 0, positionY = 0;

private:
    bool isOnAttachedCover() const;
    void show (int mode, juce::Point<int> position, juce::Component* relativeTo);

    CoveringWindow coveringWindow;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (PseudoModalComponent)
};
