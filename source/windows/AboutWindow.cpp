#include "windows/AboutWindow.h"

#include "common/EmbeddedFonts.h"
#include "frame/SoftwareDesignation.h"
#include "windows/DefaultLookAndFeel.h"

namespace
{
int overriddenYear = 0;

// The window's layout: the name takes four tenths of the width less a gap, the details the rest; the
// footer is the content's last 23 rows.
constexpr float nameShare = 0.4f;
constexpr int areaGap = 4, areaSpacing = 8, headerHeight = 54, footerHeight = 23, linkOffset = 27;
constexpr float nameHeight = 17.0f, descriptionHeight = 15.0f, formatHeight = 14.0f, versionHeight = 15.0f,
                smallHeight = 12.0f;
constexpr int pathLines = 2, pathHeight = 30;
} // namespace

AboutWindow::AboutWindow (const SoftwareDesignation& designationToShow)
    : designation (designationToShow)
    , homePageLink (designationToShow.getSoftwareHomePage(),
                    juce::URL (designationToShow.getSoftwareHomePage()))
{
    setTitleBarVisible (false);
    homePageLink.setTooltip ({});
    addAndMakeVisible (homePageLink);
}

juce::String AboutWindow::yearSpan (const juce::String& designationYear, int presentYear)
{
    const auto present = juce::String (presentYear).paddedLeft ('0', 4);
    if (designationYear.compare (present) < 0)
        return designationYear + "-" + present.getLastCharacters (2);
    return present;
}

juce::String AboutWindow::technologyLine (const juce::String& format)
{
    if (format == "VST3")
        return "VST Plug-In Technology by Steinberg.";
    if (format == "Standalone")
        return "Standalone application.";
    if (format == "Offline")
        return "Offline renderer.";
    return format + " plug-in.";
}

void AboutWindow::setPresentYear (int year) { overriddenYear = year; }

juce::String AboutWindow::getVendorLine() const
{
    const int present = overriddenYear != 0 ? overriddenYear : juce::Time::getCurrentTime().getYear();
    return yearSpan (designation.getSoftwareYear(), present) + " Zelkora Sound Works";
}

void AboutWindow::lookAndFeelChanged()
{
    WindowComponent::lookAndFeelChanged();
    if (auto* look = dynamic_cast<DefaultLookAndFeel*> (&getLookAndFeel()))
    {
        setColour (DefaultLookAndFeel::windowBodyColourId,
                   look->findColour (DefaultLookAndFeel::aboutBodyColourId));
        setColour (DefaultLookAndFeel::windowBorderColourId,
                   look->findColour (DefaultLookAndFeel::aboutBorderColourId));
        homePageLink.setColour (juce::HyperlinkButton::textColourId,
                                look->findColour (DefaultLookAndFeel::aboutLinkColourId));
        const auto font = look->getNormalFont().withStyle (juce::Font::underlined);
        homePageLink.setFont (font, false, juce::Justification::centredLeft);
        // JUCE's link draws its text a pixel in from either side.
        homePageLink.setSize ((int) std::ceil (font.getStringWidthFloat (homePageLink.getButtonText())) + 2,
                              (int) std::ceil (font.getHeight()));
    }
    repaint();
}

void AboutWindow::resized()
{
    WindowComponent::resized();
    const auto area = getContentArea();
    const int w = area.getWidth();
    nameArea = { area.getX(), area.getY(), (int) ((float) w * nameShare) - areaGap, headerHeight };
    detailsArea = { nameArea.getRight() + areaSpacing, area.getY(), w - nameArea.getWidth() - areaSpacing,
                    headerHeight };
    footerArea = area.withTrimmedTop (juce::jmax (0, area.getHeight() - footerHeight));
    homePageLink.setTopLeftPosition (nameArea.getX(), nameArea.getY() + linkOffset);
    repaint();
}

void AboutWindow::paint (juce::Graphics& g)
{
    WindowComponent::paint (g);
    g.setColour (getLookAndFeel().findColour (DefaultLookAndFeel::aboutTextColourId));
    auto text = [&g] (const juce::String& s, juce::Rectangle<int> r, float height, bool bold,
                      juce::Justification just)
    {
        g.setFont (EmbeddedFonts::make (height, bold));
        g.drawText (s, r, just, false);
    };
    text (designation.getSoftwareName().toUpperCase(),
          { nameArea.getX(), nameArea.getY() - 3, nameArea.getWidth(), 17 }, nameHeight, true,
          juce::Justification::topLeft);
    text (designation.getSoftwareDescription(),
          { nameArea.getX(), nameArea.getY() + 12, nameArea.getWidth(), 15 }, descriptionHeight, true,
          juce::Justification::topLeft);

    const auto format = designation.getSoftwareFormat() + " " + designation.getSoftwareArchitecture();
    const int formatWidth = (int) EmbeddedFonts::make (formatHeight).getStringWidthFloat (format);
    text (format, { detailsArea.getX(), detailsArea.getY() - 3, detailsArea.getWidth(), 14 }, formatHeight,
          false, juce::Justification::topRight);
    text ("Version " + designation.getSoftwareVersion(),
          { detailsArea.getX(), detailsArea.getY() - 3, detailsArea.getWidth() - formatWidth - areaSpacing,
            15 },
          versionHeight, true, juce::Justification::topRight);
    text (designation.getSoftwareBuild() + "; " + designation.getSoftwareReleaseDate(),
          { detailsArea.getX(), detailsArea.getY() + 19, detailsArea.getWidth(), 12 }, smallHeight, false,
          juce::Justification::topRight);
    g.setFont (EmbeddedFonts::make (smallHeight));
    g.drawFittedText (designation.getSoftwarePath(),
                      { detailsArea.getX(), detailsArea.getY() + 30, detailsArea.getWidth(), pathHeight },
                      juce::Justification::topRight, pathLines, 1.0f);

    text (getVendorLine(), { footerArea.getX(), footerArea.getY() - 1, footerArea.getWidth(), 12 },
          smallHeight, false, juce::Justification::centredTop);
    text (technologyLine (designation.getSoftwareFormat()),
          { footerArea.getX(), footerArea.getY() + 10, footerArea.getWidth(), 12 }, smallHeight, false,
          juce::Justification::centredBottom);
}
