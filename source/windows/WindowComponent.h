#pragma once

#include "windows/PseudoModalComponent.h"

/** A dialog window: a body with a border, a title bar with an icon and a close button, and a shadow strip
    along one side; all of it can be turned off, as the panels below the face do. */
class WindowComponent : public PseudoModalComponent, public juce::Button::Listener
{
public:
    enum ShadowSide
    {
        noShadow = 0,
        topShadow = 1,
        bottomShadow = 2,
        leftShadow = 3,
        rightShadow = 4
    };

    WindowComponent();
    ~WindowComponent() override;

    void setTitle (const juce::String& newTitle);
    const juce::String& getTitle() const noexcept { return title; }
    void setCornerStyle (int style);
    void setBorderVisible (bool shouldBeVisible);
    void setShadowSide (int side);
    void setTitleBarVisible (bool shouldBeVisible);
    bool isTitleBarVisible() const noexcept { return hasTitleBar; }
    void setIcon (const juce::Image& newIcon) { icon = newIcon; }
    void setShadowImages (const juce::Image& top, const juce::Image& bottom, const juce::Image& left,
                          const juce::Image& right);

    /** What is left for the content inside the border, shadow, inset and title bar; never negative. */
    juce::Rectangle<int> getContentArea() const;
    /** Sizes the window so that its content area is at least `width` by `height`, keeping its place; a
        window is at least 250 by 120. */
    void setContentSize (int width, int height);

    juce::ImageButton& getCloseButton() noexcept { return closeButton; }

    void resized() override;
    void paint (juce::Graphics& g) override;
    void lookAndFeelChanged() override;
    void buttonClicked (juce::Button* button) override;

protected:
    juce::Rectangle<int> titleBarArea, titleTextArea;

private:
    const juce::Image& shadowImage (int side) const;

    juce::Image icon;
    juce::ImageButton closeButton{ "CloseButton" };
    juce::String title;
    juce::Font titleFont;
    juce::Image topShadowImage, bottomShadowImage, leftShadowImage, rightShadowImage;
    bool hasTitleBar = true, hasBorder = true;
    int cornerStyle = 1;
    int shadowSide = noShadow;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (WindowComponent)
};
