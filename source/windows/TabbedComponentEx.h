#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** Tabs at the top over a page drawn as one rounded outline, the tab bar's depth and the page's indent
    from the look and feel; listeners hear of every change of tab. JUCE itself hands the tabbed
    component's look and feel to a page when it comes to the front. */
class TabbedComponentEx : public juce::TabbedComponent
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void tabChanged (TabbedComponentEx* source) = 0;
    };

    TabbedComponentEx();

    void addListener (Listener* listener);
    void removeListener (Listener* listener);
    const juce::Path& getBackgroundPath() const noexcept { return backgroundPath; }

    void lookAndFeelChanged() override;
    void resized() override;
    void paint (juce::Graphics& g) override;
    void currentTabChanged (int newCurrentTabIndex, const juce::String& newCurrentTabName) override;

private:
    juce::Array<Listener*> listeners;
    juce::Path backgroundPath;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (TabbedComponentEx)
};
