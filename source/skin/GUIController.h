#pragma once

#include "parameters/Parameter.h"
#include "skin/BlinkingComponent.h"

class BasePluginEditor;
class EventsMap;
class ParameterManager;

/** The controller side of every skin control: bound to at most one parameter, with listeners, read from
    its element of the skin. The two directions stay apart: a user action writes the parameter with
    notification; the value comes back later on the message thread through the deferred list, and the
    control then updates itself silently, so nothing goes round in a loop. */
class GUIController : public Parameter::Listener, public BlinkingComponent
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;
        /** Nothing calls this one; it keeps the interface's order of operations. */
        virtual void controllerNotUsed (GUIController*) {}
        virtual void controllerGestureBegan (GUIController*) {}
        virtual void controllerGestureEnded (GUIController*) {}
        virtual void controllerValueChanged (GUIController*) {}
        virtual void controllerEvent (GUIController*, int /*uid*/) {}
    };

    GUIController() = default;
    /** Leaves the deferred list of the bound parameter. */
    ~GUIController() override;

    void parameterChanged (Parameter* changed) override { updateFromParameter (changed); }
    void parameterGestureBegan (Parameter*) override {}
    void parameterGestureEnded (Parameter*) override {}

    /** An action of the skin: `type` names when it fires, `uid` what it fires. Unknown types do nothing. */
    virtual void setAction (const juce::String& type, int uid, const juce::String& label);
    /** Shows the parameter's value; never writes back. */
    virtual void updateFromParameter (Parameter* changed);
    virtual void addListener (Listener* listener);
    void removeListener (Listener* listener);

    /** Reads the links and actions; `editor` is only handed on to nested controls. */
    virtual void loadFromXml (const juce::XmlElement& element, ParameterManager& parameters,
                              EventsMap& events, BasePluginEditor* editor);

    /** Binds the control to `newParameter` (or to nothing), leaving the old one's deferred list. */
    void connectTo (Parameter* newParameter);
    Parameter* getParameter() const noexcept { return parameter; }

    /** The start and end of a drag: the parameter's immediate listeners hear it first, last to first
        (that is how the host learns of it), then the control's own listeners. Nothing without a
        parameter. */
    void beginGesture();
    void endGesture();

protected:
    void sendValueChanged();
    void sendEvent (int uid);

    Parameter* parameter = nullptr;

private:
    juce::Array<Listener*> listeners;

    JUCE_DECLARE_NON_COPYABLE (GUIController)
};
