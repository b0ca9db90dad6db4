#include "skin/GFXPanel.h"

#include "skin/SkinFactory.h"
#include "skin/SkinXml.h"

namespace
{
constexpr float panelGrey = 0.9f;
}

GFXPanel::GFXPanel (const juce::String& name)
    : juce::Component (name)
{
    setInterceptsMouseClicks (false, true);
}

GFXPanel::~GFXPanel()
{
    // The controls refer to their components; the list goes first, then the components with it.
    {
        const juce::ScopedLock sl (controllersLock);
        controllers.clear();
    }
    components.clear();
}

void GFXPanel::showWhenTrue (Parameter* p) { setVisible (p->getBoolValue()); }

void GFXPanel::showWhenFalse (Parameter* p) { setVisible (!p->getBoolValue()); }

juce::Array<GUIController*> GFXPanel::getControllers() const
{
    const juce::ScopedLock sl (controllersLock);
    return controllers;
}

void GFXPanel::addListener (Listener* listener)
{
    GUIController::addListener (listener);
    for (auto* controller : getControllers())
        controller->addListener (listener);
}

void GFXPanel::setTransparent (bool shouldBeTransparent)
{
    if (transparent == shouldBeTransparent)
        return;
    transparent = shouldBeTransparent;
    repaint();
}

void GFXPanel::addControl (std::unique_ptr<juce::Component> component, GUIController& controller)
{
    auto* added = components.add (component.release());
    {
        const juce::ScopedLock sl (controllersLock);
        controllers.add (&controller);
    }
    added->setVisible (true);
    addChildComponent (added);
}

void GFXPanel::loadFromXml (const juce::XmlElement& element, ParameterManager& parameters, EventsMap& events,
                            BasePluginEditor* editor)
{
    BaseGFXController::loadFromXml (element, parameters, events, editor);

    if (auto* gfx = SkinXml::getChild (element, "gfx"))
        setTransparent (SkinXml::getBool (*gfx, "transparent", false));

    if (auto* list = SkinXml::getChild (element, "controls"))
    {
        const int offsetX = SkinXml::getInt (*list, "ofsX", 0);
        const int offsetY = SkinXml::getInt (*list, "ofsY", 0);
        SkinFactory::buildControls (
            *list, SkinFactory::Place::panel,
            [this] (SkinFactory::Control& made)
            {
                components.add (made.component.release());
                const juce::ScopedLock sl (controllersLock);
                controllers.add (made.controller);
            },
            [&] (SkinFactory::Control& made, const juce::XmlElement& child)
            {
                made.controller->loadFromXml (child, parameters, events, editor);
                made.view->setVisible (true);
                addChildComponent (made.view);
            });
        // Offsets add up through the levels: each panel moves its own children only.
        for (auto* child : getChildren())
            child->setTopLeftPosition (child->getPosition() + juce::Point<int> (offsetX, offsetY));
    }

    setBounds (left, top, frameWidth, frameHeight);
    repaint();
}

void GFXPanel::paint (juce::Graphics& g)
{
    if (transparent)
        return;
    if (strip.isValid())
        drawFrame (g, 0);
    else
        g.fillAll (juce::Colour::greyLevel (panelGrey));
}
