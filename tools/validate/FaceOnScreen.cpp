#include "FaceOnScreen.h"

#include "ImageComparison.h"

#include "common/ResourceLoader.h"
#include "frame/EventsMap.h"
#include "parameters/ParameterManager.h"
#include "skin/GFXDisplay.h"
#include "skin/SkinXml.h"

namespace
{
const juce::XmlElement* controlElement (const juce::XmlElement& skin, const juce::String& name)
{
    for (auto* element : skin.getChildIterator())
        if (SkinXml::getAttribute (*element, "name") == name)
            return element;
    return nullptr;
}
} // namespace

juce::Point<int> FaceOnScreen::findFace (const juce::Image& screen)
{
    // The brand in the top right corner is drawn the same whatever the controls show.
    const juce::Rectangle<int> brand (490, 0, 140, 45);
    const auto found = ImageComparison::find (
        screen, ImageComparison::loadGolden ("editor/face-defaults").getClippedImage (brand));
    return found.x < 0 ? found : found - brand.getPosition();
}

bool FaceOnScreen::isGoldenFace (const juce::Image& screen, juce::Point<int> origin)
{
    const auto golden = ImageComparison::loadGolden ("editor/face-defaults");
    const auto area = golden.getBounds() + origin;
    return origin.x >= 0 && screen.getBounds().contains (area)
           && ImageComparison::describeDifference (golden, screen.getClippedImage (area)).isEmpty();
}

juce::Rectangle<int> FaceOnScreen::getControlBounds (const juce::String& name)
{
    auto skin = juce::parseXML (loadResourceText ("skin.xml"));
    auto* element = skin != nullptr ? controlElement (*skin, name) : nullptr;
    auto* pos = element != nullptr ? SkinXml::getChild (*element, "pos") : nullptr;
    auto* size = element != nullptr ? SkinXml::getChild (*element, "size") : nullptr;
    if (pos == nullptr || size == nullptr)
        return {};
    return { SkinXml::getInt (*pos, "left", 0), SkinXml::getInt (*pos, "top", 0),
             SkinXml::getInt (*size, "width", 0), SkinXml::getInt (*size, "height", 0) };
}

juce::Image FaceOnScreen::drawNameField (const juce::String& text)
{
    ParameterManager parameters;
    EventsMap events;
    GFXDisplay display;
    if (auto skin = juce::parseXML (loadResourceText ("skin.xml")))
        if (auto* element = controlElement (*skin, "PresetNameDisplay"))
            display.loadFromXml (*element, parameters, events, nullptr);
    display.setText (text);
    return display.createComponentSnapshot (display.getLocalBounds());
}

bool FaceOnScreen::showsName (const juce::Image& screen, juce::Point<int> origin, const juce::String& text)
{
    const auto field = getNameField() + origin;
    if (!screen.getBounds().contains (field))
        return false;
    return ImageComparison::describeDifference (drawNameField (text), screen.getClippedImage (field))
        .isEmpty();
}
