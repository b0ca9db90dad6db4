#pragma once

#include "midi/MidiControl.h"
#include "parameters/Parameter.h"
#include "skin/GFXToggleButtonDragGroup.h"
#include "skin/GUIController.h"
#include "windows/AlertWindow.h"
#include "windows/DefaultLookAndFeel.h"
#include "windows/DefaultResourceCheckBox.h"
#include "windows/PseudoModalComponent.h"
#include "windows/TabbedComponentEx.h"

#include <juce_gui_basics/juce_gui_basics.h>

class AboutWindow;
class BasePlugin;
class GFXAnimation;
class GFXMultiStateButton;
class GFXPanel;
class MidiControlComponent;
class OptionsWindow;
class StatusBar;

/** The plug-in's whole face: the controls its skin makes, the status bar and the tooltips, and the one
    place where control gestures, button events and MIDI learn turn into actions and status text. It is
    made once, when a host first asks for an editor, and lives as long as the plug-in: a host that closes
    and opens its window only moves it between wrappers. Subclasses add behaviour through the virtual
    operations below and by finding the skin's controls by name. */
class BasePluginEditor : public juce::Component,
                         public Parameter::Listener,
                         public GUIController::Listener,
                         public MidiControl::Listener,
                         public PseudoModalComponent::Desktop,
                         public juce::Timer,
                         public Zelkora::AlertWindow::Caller,
                         public TabbedComponentEx::Listener,
                         public DefaultResourceCheckBox::Listener
{
public:
    /** The editor's tick, while it is visible. */
    static constexpr int tickMilliseconds = 25;
    /** The editor's own events, as the skin's buttons send them. */
    static constexpr int optionsEvent = 1000, aboutEvent = 1001, browseEvent = 1004, savePresetEvent = 1005,
                         savePresetAsEvent = 1006, toggleLearnEvent = 1010;

    /** Builds the face from the skin under `skinKey`; a skin that is missing or doesn't parse leaves the
        editor to the generic face of `createDefaultControls`. */
    explicit BasePluginEditor (BasePlugin& plugin, const juce::String& skinKey = "skin.xml");
    ~BasePluginEditor() override;

    // Operations for the editors built on this one.
    virtual bool endsParameterGroup (int index);
    virtual bool endsParameterRow (int index);
    virtual void reservedOperation() {}
    /** The tick's work; it runs only while the editor is visible. */
    virtual void update();
    virtual bool isStatusBarVisible();
    virtual void createDebugPanel();
    virtual void reservedOperation2() {}

    /** `height` leaves out the status bar, which goes below it; a parent (the host's wrapper) follows. */
    void setEditorSize (int width, int height);
    bool loadSkin (const juce::String& key);
    void loadSkinFromXml (const juce::XmlElement& xml);
    /** The generic face, for an editor whose skin didn't load: one plain control per parameter. */
    void createDefaultControls();

    /** Depth-first: the direct children first, then each child's subtree in turn. */
    static juce::Component* findComponentByName (juce::Component& parent, const juce::String& name);

    void showParameterStatus (Parameter* parameter);
    void showDefaultSettingsNote (const juce::String& label);

    bool isSkinLoaded() const noexcept { return skinLoaded; }
    int getContentHeight() const noexcept { return contentHeight; }
    BasePlugin& getPlugin() const noexcept { return plugin; }
    StatusBar* getStatusBar() const noexcept { return statusBar.get(); }
    GFXToggleButtonDragGroup& getToggleDragGroups() noexcept { return toggleDragGroups; }
    juce::Array<GUIController*> getControllers() const;
    GFXPanel* getDebugPanel() const noexcept { return debugPanel.get(); }

    // GUIController::Listener
    void controllerValueChanged (GUIController* controller) override;
    void controllerEvent (GUIController* controller, int uid) override;
    // MidiControl::Listener
    void midiLearnChanged (MidiControl* control) override;
    void midiControllerMoved (MidiControl* control) override;
    // Parameter::Listener: the editor is on every deferred list, and needs none of it here.
    void parameterChanged (Parameter*) override {}
    // Zelkora::AlertWindow::Caller: the questions about a preset collection's files, which this family
    // never has.
    void alertWindowFinished (Zelkora::AlertWindow*, int) override {}
    // TabbedComponentEx::Listener: a new page of the options clears the status bar.
    void tabChanged (TabbedComponentEx* source) override;
    // DefaultResourceCheckBox::Listener: the default map waits for the next start.
    void defaultResourceChanged (DefaultResourceCheckBox* source) override;

    AboutWindow* getAboutWindow() const noexcept { return aboutWindow.get(); }
    OptionsWindow* getOptionsWindow() const noexcept { return optionsWindow.get(); }
    MidiControlComponent* getMidiControlComponent() const noexcept { return midiControlComponent.get(); }

    void paint (juce::Graphics& g) override;
    void resized() override;
    void childBoundsChanged (juce::Component* child) override;
    void timerCallback() override;

protected:
    /** The events of the face, the way this editor handles them. */
    virtual void handleEditorEvent (GUIController* controller, int uid);

    BasePlugin& plugin;
    juce::CriticalSection controllersLock;
    juce::Array<GUIController*> controllers;
    // Declared ahead of the controls, so that their groups outlive them.
    GFXToggleButtonDragGroup toggleDragGroups;
    juce::OwnedArray<juce::Component> skinComponents;
    bool skinLoaded = false;
    GFXAnimation* midiActivityLed = nullptr;
    juce::Image background;
    juce::Image doubleBackground;
    juce::String backgroundKey;
    DefaultLookAndFeel lookAndFeel;
    juce::OwnedArray<juce::Component> defaultControls;
    std::unique_ptr<AboutWindow> aboutWindow;
    std::unique_ptr<OptionsWindow> optionsWindow;
    std::unique_ptr<MidiControlComponent> midiControlComponent;
    std::unique_ptr<juce::TooltipWindow> tooltipWindow;
    std::unique_ptr<StatusBar> statusBar;
    int contentHeight = 0;
    GFXMultiStateButton* midiLearnButton = nullptr;
    std::unique_ptr<GFXPanel> debugPanel;

private:
    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (BasePluginEditor)
};
