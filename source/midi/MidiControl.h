#pragma once

#include <juce_audio_basics/juce_audio_basics.h>
#include <juce_events/juce_events.h>

#include <array>

class Parameter;
class ParameterManager;

// Binds the 128 MIDI controllers to parameters, one parameter per controller and one controller per
// parameter. Controller messages move their parameters on the audio thread; the learn mode pairs a moved
// control with a moved controller in either order; maps are read and written as XML.
//
// The lock guards everything below and is held on the audio thread across a parameter's setter, so the
// holders on other threads stay short. Listeners hear of changes on the message thread, except for
// midiLearnChanged from setLearnActive, which is called directly.
class MidiControl final : public juce::AsyncUpdater
{
public:
    static constexpr int numControllers = 128;
    static constexpr int noController = -1;

    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void midiMapChanged (MidiControl*) {}
        virtual void midiLearnChanged (MidiControl*) {}
        virtual void midiControllerMoved (MidiControl*) {}
    };

    explicit MidiControl (ParameterManager& parameterManager);
    ~MidiControl() override;

    void handleAsyncUpdate() override;

    // The root is "MidiControlMap" or the older "MidiCCMap".
    virtual bool isMapXml (const juce::XmlElement& xml) const;
    // A map document of this application, or of any while the application name is still empty.
    virtual bool isValidMap (const juce::XmlElement& xml) const;
    // Switches learn off and replaces the map by the valid rows of xml; a map that isValidMap refuses
    // leaves the map empty.
    virtual void loadFromXml (const juce::XmlElement& xml);

    std::unique_ptr<juce::XmlElement> createXml() const;
    // A file that doesn't parse leaves the map as it was.
    bool loadFile (const juce::File& file);
    bool saveFile (const juce::File& file) const;

    // Gives the plug-in's name, then loads the default map file if the user has one.
    void initialise (const juce::String& applicationName);
    juce::String getApplicationName() const;
    void setApplicationName (const juce::String& name);
    bool getUseDefaultMap() const;
    void setUseDefaultMap (bool shouldUse);
    juce::String getDefaultMapFile() const;
    void setDefaultMapFile (const juce::String& path);

    void setLearnActive (bool shouldBeActive);
    bool isLearnActive() const;
    Parameter* getLearnParameter() const;
    int getLearnController() const;
    Parameter* getLastMovedParameter() const;

    Parameter* getAssignedParameter (int controller) const;
    int getNumAssignments() const;
    int findController (const Parameter* parameter) const;

    // The two halves of a learn step: a control moved on the screen, a controller moved on the hardware.
    void setLearnParameter (Parameter* parameter);
    void setLearnController (int controller);
    // Makes a row of the map the current learn pair.
    void selectLearnAssignment (int controller);

    void assign (int controller, Parameter* parameter, bool notify);
    void clearController (int controller);
    void clearAll();

    // Audio thread: a control change moves the controller's parameter, and in learn mode offers the
    // controller to the learn step. Other messages are ignored.
    void handleMidiMessage (const juce::MidiMessage& message);

    // On the message thread, which is also where the asynchronous notifications walk the list.
    void addListener (Listener* listener);
    void removeListener (Listener* listener);

private:
    static bool isController (int controller) noexcept;
    void commitLearnStep();
    void countAssignments();

    ParameterManager* parameterManager;
    juce::Array<Listener*> listeners;
    std::array<Parameter*, numControllers> map{};
    bool learnActive = false;
    Parameter* learnParameter = nullptr;
    int learnController = noController;
    juce::String applicationName;
    int numAssignments = 0;
    bool useDefaultMap = false;
    juce::String defaultMapFile;
    bool mapChanged = false;
    bool learnChanged = false;
    bool controllerMoved = false;
    Parameter* lastMovedParameter = nullptr;
    juce::CriticalSection lock;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (MidiControl)
};
