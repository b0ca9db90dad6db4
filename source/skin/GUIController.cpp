#include "skin/GUIController.h"

#include "common/ListenerWalk.h"
#include "frame/EventsMap.h"
#include "parameters/ParameterManager.h"
#include "skin/SkinXml.h"

GUIController::~GUIController() { connectTo (nullptr); }

void GUIController::setAction (const juce::String&, int, const juce::String&) {}

void GUIController::updateFromParameter (Parameter*) {}

void GUIController::addListener (Listener* listener)
{
    if (listener != nullptr)
        listeners.addIfNotAlreadyThere (listener);
}

void GUIController::removeListener (Listener* listener) { listeners.removeFirstMatchingValue (listener); }

void GUIController::connectTo (Parameter* newParameter)
{
    if (parameter != nullptr)
        parameter->removeDeferredListener (this);
    parameter = newParameter;
    if (parameter != nullptr)
        parameter->addDeferredListener (this);
}

void GUIController::loadFromXml (const juce::XmlElement& element, ParameterManager& parameters,
                                 EventsMap& events, BasePluginEditor*)
{
    // The first values arrive later, with the editor's first round of notifications.
    if (auto* links = SkinXml::getChild (element, "links"))
        for (auto* link : links->getChildIterator())
            if (SkinXml::isTag (*link, "link"))
            {
                auto* linked = parameters.getParameterByName (SkinXml::getAttribute (*link, "param"));
                if (linked != nullptr && SkinXml::getAttribute (*link, "as") == "connectedTo")
                    connectTo (linked);
            }

    if (auto* actions = SkinXml::getChild (element, "actions"))
        for (auto* action : actions->getChildIterator())
            if (SkinXml::isTag (*action, "action"))
            {
                const auto type = SkinXml::getAttribute (*action, "type");
                const auto eventName = SkinXml::getAttribute (*action, "event");
                if (type.isNotEmpty() && events.hasEvent (eventName))
                {
                    const int uid = events.getEventUid (eventName);
                    setAction (type, uid, events.getEventLabel (uid));
                }
            }
}

void GUIController::beginGesture()
{
    if (parameter == nullptr)
        return;
    callListenersBackwards (parameter->getImmediateListeners(),
                            [this] (Parameter::Listener& l) { l.parameterGestureBegan (parameter); });
    callListenersBackwards (listeners, [this] (Listener& l) { l.controllerGestureBegan (this); });
}

void GUIController::endGesture()
{
    if (parameter == nullptr)
        return;
    callListenersBackwards (parameter->getImmediateListeners(),
                            [this] (Parameter::Listener& l) { l.parameterGestureEnded (parameter); });
    callListenersBackwards (listeners, [this] (Listener& l) { l.controllerGestureEnded (this); });
}

void GUIController::sendValueChanged()
{
    callListenersBackwards (listeners, [this] (Listener& l) { l.controllerValueChanged (this); });
}

void GUIController::sendEvent (int uid)
{
    callListenersBackwards (listeners, [this, uid] (Listener& l) { l.controllerEvent (this, uid); });
}
