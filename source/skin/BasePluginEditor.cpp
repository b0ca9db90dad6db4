#include "skin/BasePluginEditor.h"

#include "common/EmbeddedFonts.h"
#include "common/ResourceLoader.h"
#include "frame/BasePlugin.h"
#include "parameters/BoolParameter.h"
#include "parameters/EnumParameter.h"
#include "parameters/IntParameter.h"
#include "skin/GFXAnimation.h"
#include "skin/GFXButton.h"
#include "skin/GFXKnob.h"
#include "skin/GFXMultiStateButton.h"
#include "skin/GFXPanel.h"
#include "skin/GFXSwitch.h"
#include "skin/GFXToggleButton.h"
#include "skin/SkinFactory.h"
#include "skin/SkinPictures.h"
#include "skin/SkinXml.h"
#include "windows/AboutWindow.h"
#include "windows/MidiControlComponent.h"
#include "windows/OptionsWindow.h"
#include "windows/StatusBar.h"

namespace
{
// Status messages: their priorities (a higher one stands against a lower) and how long they stay.
constexpr int learnPriority = 7, parameterPriority = 6, controllerPriority = 5, settingsNotePriority = 4;
constexpr int statusMilliseconds = 3000, stays = 0;

// The size of an editor without a skin, and the generic face's grid of controls.
constexpr int plainWidth = 1024, plainHeight = 800;
constexpr int gridColumn = 64, gridRow = 120, gridLeft = 5, gridTop = 30, gridMargin = 10, gridSpill = 14;
constexpr int plainControlWidth = 50, plainControlHeight = 80;
constexpr float plainGrey = 0.9f;

// The about and options windows' sizes until an editor that docks or sizes them does.
constexpr int aboutWidth = 640, aboutHeight = 480;
constexpr int optionsWidth = 800, optionsHeight = 600;
// The tooltip shows after the pointer rests this long.
constexpr int tooltipDelay = 850;
// The MIDI activity lamp stays lit after the last message, and the learn button blinks while learning.
constexpr int activityMilliseconds = 175, learnBlink = 100;

// The debug panel of a plug-in in its debug mode: twelve knobs and twelve buttons on parameters and
// events of their own numbers.
constexpr int debugCount = 12, debugFirstParameter = 300000, debugFirstEvent = 10000;
constexpr int debugPanelWidth = 600, debugPanelHeight = 140, debugPanelInset = 10;
constexpr int debugKnobPitch = 50, debugKnobWidth = 40, debugKnobHeight = 90;
constexpr int debugButtonPitch = 30, debugButtonSide = 20, debugButtonTop = 100;
} // namespace

BasePluginEditor::BasePluginEditor (BasePlugin& owner, const juce::String& skinKey)
    : plugin (owner)
{
    EmbeddedFonts::becomeDefault();
    setLookAndFeel (&lookAndFeel);

    tooltipWindow = std::make_unique<juce::TooltipWindow> (this, tooltipDelay);
    tooltipWindow->setOpaque (false);
    statusBar = std::make_unique<StatusBar>();
    addAndMakeVisible (*statusBar);
    aboutWindow = std::make_unique<AboutWindow> (plugin);
    aboutWindow->setSize (aboutWidth, aboutHeight);
    addChildComponent (*aboutWindow);

    optionsWindow = std::make_unique<OptionsWindow>();
    optionsWindow->setTitle ("Options");
    optionsWindow->getTabs().addListener (this);
    optionsWindow->setSize (optionsWidth, optionsHeight);
    addChildComponent (*optionsWindow);

    const auto mapExtension = "." + plugin.getPluginCode().toLowerCase() + "ccmap";
    midiControlComponent =
        std::make_unique<MidiControlComponent> (plugin.getMidiControl(), mapExtension, "*" + mapExtension);
    midiControlComponent->getDefaultMapBox().addListener (this);
    optionsWindow->addPage ("Midi Control", midiControlComponent.get(), -1);

    plugin.getMidiControl().addListener (this);
    plugin.getParameterManager().addDeferredListenerToAll (this);
    setEditorSize (plainWidth, plainHeight);
    skinLoaded = loadSkin (skinKey);

    midiLearnButton = dynamic_cast<GFXMultiStateButton*> (findComponentByName (*this, "MidiLearnButton"));
    midiActivityLed = dynamic_cast<GFXAnimation*> (findComponentByName (*this, "MidiActivityLed"));
}

BasePluginEditor::~BasePluginEditor()
{
    // The look and feel goes last of all, and nothing may ask for it on the way.
    setLookAndFeel (nullptr);
    stopTimer();
    plugin.getMidiControl().removeListener (this);
    plugin.getParameterManager().removeDeferredListenerFromAll (this);
    debugPanel.reset();
    if (midiControlComponent != nullptr)
        midiControlComponent->getDefaultMapBox().removeListener (this);
    if (optionsWindow != nullptr)
        optionsWindow->getTabs().removeListener (this);
    // The window holds its pages without owning them: it goes first.
    optionsWindow.reset();
    midiControlComponent.reset();
    aboutWindow.reset();
    statusBar.reset();
    tooltipWindow.reset();
    defaultControls.clear();
    {
        const juce::ScopedLock sl (controllersLock);
        controllers.clear();
    }
    skinComponents.clear();
}

bool BasePluginEditor::endsParameterGroup (int) { return false; }
bool BasePluginEditor::endsParameterRow (int) { return false; }
bool BasePluginEditor::isStatusBarVisible() { return true; }

void BasePluginEditor::setEditorSize (int width, int height)
{
    contentHeight = height;
    int total = height;
    if (statusBar != nullptr && isStatusBarVisible())
        total += statusBar->getHeight();
    setSize (width, total);
    if (statusBar != nullptr)
        statusBar->setBounds (0, contentHeight, width, statusBar->getHeight());
    if (auto* parent = getParentComponent())
        parent->setSize (width, total);
}

bool BasePluginEditor::loadSkin (const juce::String& key)
{
    auto xml = juce::parseXML (loadResourceText (key));
    if (xml == nullptr)
        return false;
    loadSkinFromXml (*xml);
    return true;
}

void BasePluginEditor::loadSkinFromXml (const juce::XmlElement& xml)
{
    if (!SkinXml::isTag (xml, "PluginEditor"))
        return;

    const auto key = SkinXml::getAttribute (xml, "background", "Background.png");
    juce::Image image;
    loadResourceImage (key, image);
    if (image.isValid())
    {
        background = image;
        backgroundKey = key;
        setEditorSize (image.getWidth(), image.getHeight());
    }

    auto& parameters = plugin.getParameterManager();
    auto& events = plugin.getEvents();
    SkinFactory::buildControls (
        xml, SkinFactory::Place::root,
        [this] (SkinFactory::Control& made)
        {
            skinComponents.add (made.component.release());
            const juce::ScopedLock sl (controllersLock);
            controllers.add (made.controller);
        },
        [&] (SkinFactory::Control& made, const juce::XmlElement& element)
        {
            made.controller->loadFromXml (element, parameters, events, this);
            made.view->setVisible (true);
            // Just above the status bar; a later control stands below an earlier one.
            addChildComponent (made.view, 1);
        });

    for (auto* controller : getControllers())
        controller->addListener (this);
}

juce::Array<GUIController*> BasePluginEditor::getControllers() const
{
    const juce::ScopedLock sl (controllersLock);
    return controllers;
}

void BasePluginEditor::createDefaultControls()
{
    if (skinLoaded)
        return;

    int columns = (getWidth() - gridMargin) / gridColumn;
    if (columns * gridColumn - gridSpill < getWidth() - gridMargin)
        ++columns;
    int column = 0, y = gridTop;

    auto& parameters = plugin.getParameterManager();
    for (int index = 0; index < plugin.getNumberOfParameters(); ++index)
    {
        auto* parameter = parameters.getParameter (index);
        if (parameter == nullptr)
            continue;

        juce::Component* view = nullptr;
        GUIController* controller = nullptr;
        auto make = [&] (auto control)
        {
            view = control.get();
            controller = control.get();
            defaultControls.add (control.release());
        };
        if (dynamic_cast<BoolParameter*> (parameter) != nullptr)
            make (std::make_unique<GFXToggleButton> (parameter->getName()));
        else if (dynamic_cast<EnumParameter*> (parameter) != nullptr
                 || dynamic_cast<IntParameter*> (parameter) != nullptr)
            make (std::make_unique<GFXSwitch> (parameter->getName()));
        else
            make (std::make_unique<GFXKnob> (parameter->getName()));

        view->setBounds (column * gridColumn + gridLeft, y, plainControlWidth, plainControlHeight);
        controller->addListener (this);
        view->setVisible (true);
        addChildComponent (view, 1);
        controller->connectTo (parameter);
        ++column;

        if (endsParameterGroup (index))
            ++column;
        if (endsParameterRow (index) || column >= columns)
        {
            y += gridRow;
            column = 0;
        }
    }
}

void BasePluginEditor::createDebugPanel()
{
    debugPanel = std::make_unique<GFXPanel> ("DebugPanel");
    debugPanel->setTransparent (true);
    debugPanel->setBounds (getWidth() - debugPanelWidth - debugPanelInset,
                           getHeight() - debugPanelHeight - debugPanelInset, debugPanelWidth,
                           debugPanelHeight);
    for (int i = 0; i < debugCount; ++i)
    {
        auto knob = std::make_unique<GFXKnob> ("Debug Knob " + juce::String (i));
        knob->setBounds (i * debugKnobPitch, 0, debugKnobWidth, debugKnobHeight);
        knob->connectTo (plugin.getParameterManager().getParameter (debugFirstParameter + i));
        auto& knobRef = *knob;
        knobRef.GUIController::addListener (this);
        debugPanel->addControl (std::move (knob), knobRef);

        auto button = std::make_unique<GFXButton> ("Debug Button " + juce::String (i));
        button->setBounds (i * debugButtonPitch, debugButtonTop, debugButtonSide, debugButtonSide);
        button->setAction ("onClick", debugFirstEvent + i, "Debug Event " + juce::String (i));
        auto& buttonRef = *button;
        buttonRef.GUIController::addListener (this);
        debugPanel->addControl (std::move (button), buttonRef);
    }
    debugPanel->setVisible (true);
    addChildComponent (*debugPanel);
    debugPanel->toFront (false);
}

juce::Component* BasePluginEditor::findComponentByName (juce::Component& parent, const juce::String& name)
{
    for (auto* child : parent.getChildren())
        if (child->getName() == name)
            return child;
    for (auto* child : parent.getChildren())
        if (auto* found = findComponentByName (*child, name))
            return found;
    return nullptr;
}

void BasePluginEditor::showParameterStatus (Parameter* parameter)
{
    if (parameter == nullptr)
        return;
    auto& midi = plugin.getMidiControl();
    if (parameter->isAutomatable() && midi.isLearnActive())
        midi.setLearnParameter (parameter);
    const auto text = plugin.getParameterTextFor (parameter->getIndex());
    if (text.isNotEmpty() && statusBar != nullptr)
        statusBar->showMessage (parameter->getName() + ": " + text, parameterPriority, statusMilliseconds);
}

void BasePluginEditor::showDefaultSettingsNote (const juce::String& label)
{
    if (statusBar != nullptr)
        statusBar->showMessage (label + " settings will be affected when plugin is loaded.",
                                settingsNotePriority, stays);
}

void BasePluginEditor::tabChanged (TabbedComponentEx* source)
{
    if (optionsWindow != nullptr && source == &optionsWindow->getTabs() && statusBar != nullptr)
        statusBar->clearMessage();
}

void BasePluginEditor::defaultResourceChanged (DefaultResourceCheckBox* source)
{
    if (midiControlComponent != nullptr && source == &midiControlComponent->getDefaultMapBox())
        showDefaultSettingsNote ("Default Map");
}

void BasePluginEditor::controllerValueChanged (GUIController* controller)
{
    showParameterStatus (controller->getParameter());
}

void BasePluginEditor::controllerEvent (GUIController* controller, int uid)
{
    handleEditorEvent (controller, uid);
}

void BasePluginEditor::handleEditorEvent (GUIController* controller, int uid)
{
    switch (uid)
    {
        case aboutEvent:
            if (aboutWindow != nullptr)
                aboutWindow->showCentred();
            return;
        case optionsEvent:
            if (optionsWindow != nullptr)
                optionsWindow->showCentred();
            if (statusBar != nullptr)
                statusBar->clearMessage();
            return;
        case browseEvent:
            // The browser comes with the editors of plug-ins that have a bank.
            return;
        case savePresetEvent:
        case savePresetAsEvent:
            // Presets of a file-based collection: this plug-in keeps its presets in its bank and has none.
            return;
        case toggleLearnEvent:
        {
            auto& midi = plugin.getMidiControl();
            midi.setLearnActive (!midi.isLearnActive());
            return;
        }
        default:
            plugin.handleEvent (uid);
            showParameterStatus (controller != nullptr ? controller->getParameter() : nullptr);
            return;
    }
}

void BasePluginEditor::midiControllerMoved (MidiControl* control)
{
    auto* moved = control->getLastMovedParameter();
    if (moved == nullptr || statusBar == nullptr)
        return;
    statusBar->showMessage (moved->getName() + ": " + plugin.getParameterTextFor (moved->getIndex()),
                            controllerPriority, statusMilliseconds);
}

void BasePluginEditor::midiLearnChanged (MidiControl* control)
{
    const bool active = control->isLearnActive();
    if (statusBar != nullptr)
    {
        if (!active)
        {
            statusBar->clearMessage();
        }
        else
        {
            const int cc = control->getLearnController();
            auto* p = control->getLearnParameter();
            juce::String text;
            if (cc < 0 && p == nullptr)
                text = "Waiting for a controller or parameter movement...";
            else if (cc < 0)
                text = "'" + p->getName() + "' parameter is free. Waiting for a free controller now...";
            else if (p == nullptr)
                text = "CC# " + juce::String (cc) + " is free. Waiting for a parameter now...";
            else
                text = "CC# " + juce::String (cc) + " is assigned to parameter '" + p->getName() + "'.";
            statusBar->showMessage (text, learnPriority, stays);
        }
    }

    if (midiLearnButton != nullptr)
    {
        midiLearnButton->setState (active ? 1 : 0);
        if (active)
            midiLearnButton->startBlinking (learnBlink);
        else if (midiLearnButton->isBlinking())
            midiLearnButton->stopBlinking();
    }
}

void BasePluginEditor::update()
{
    if (midiActivityLed != nullptr && plugin.midiActivity.exchange (0) == 1)
    {
        midiActivityLed->setFrame (1);
        midiActivityLed->returnToRestAfter (activityMilliseconds);
    }
}

void BasePluginEditor::timerCallback()
{
    if (isVisible())
        update();
}

void BasePluginEditor::paint (juce::Graphics& g)
{
    if (background.isValid())
    {
        if (SkinPictures::wantsDouble (g) && doubleBackground.isNull())
            doubleBackground = SkinPictures::loadDouble (backgroundKey, background);
        if (SkinPictures::wantsDouble (g) && doubleBackground.isValid())
            g.drawImage (doubleBackground, 0, 0, background.getWidth(), background.getHeight(), 0, 0,
                         doubleBackground.getWidth(), doubleBackground.getHeight());
        else
            g.drawImageAt (background, 0, 0);
        return;
    }
    g.fillAll (juce::Colour::greyLevel (plainGrey));
    g.setColour (juce::Colours::black);
    g.drawText (plugin.getPluginName(), getLocalBounds(), juce::Justification::topLeft, false);
}

void BasePluginEditor::resized()
{
    if (statusBar != nullptr && isStatusBarVisible())
        statusBar->setBounds (0, contentHeight, getWidth(), statusBar->getHeight());
    repaint();
}

void BasePluginEditor::childBoundsChanged (juce::Component* child)
{
    if (child == statusBar.get())
        setEditorSize (getWidth(), contentHeight);
}
