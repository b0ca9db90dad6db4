#pragma once

#include "windows/WindowComponent.h"

class SoftwareDesignation;

/** What the plug-in is: its name and description, version, format and build, where its file lies, its
    home page, the vendor and the technology it is built on. Black with a white border on a dimmed editor,
    without a title bar; a click anywhere on it closes it. */
class AboutWindow final : public WindowComponent
{
public:
    explicit AboutWindow (const SoftwareDesignation& designation);

    /** The years from the designation's to the present one's: "2026" in the first year, else
        "2008-26". */
    static juce::String yearSpan (const juce::String& designationYear, int presentYear);
    /** The footer's last line: the technology of the format the plug-in runs in. */
    static juce::String technologyLine (const juce::String& format);
    /** The present year, which tests may set; 0 takes the clock's again. */
    static void setPresentYear (int year);

    juce::String getVendorLine() const;
    juce::HyperlinkButton& getHomePageLink() noexcept { return homePageLink; }

    bool isDimmingBackground() override { return true; }
    void lookAndFeelChanged() override;
    void resized() override;
    void paint (juce::Graphics& g) override;
    void mouseDown (const juce::MouseEvent&) override { hide(); }

private:
    const SoftwareDesignation& designation;
    juce::HyperlinkButton homePageLink;
    juce::Rectangle<int> nameArea, detailsArea, footerArea;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (AboutWindow)
};
