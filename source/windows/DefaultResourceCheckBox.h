#pragma once

#include "windows/CheckBox.h"
#include "windows/PathComponent.h"

/** A check box that switches a default file on, with the file's path beside it. The path can be changed
    only while the box is checked; either change reaches the listeners as one. */
class DefaultResourceCheckBox : public juce::Component,
                                public CheckBox::Listener,
                                public PathComponent::Listener
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void defaultResourceChanged (DefaultResourceCheckBox* source) = 0;
    };

    DefaultResourceCheckBox();
    ~DefaultResourceCheckBox() override;

    /** Shows the file, the box checked if there is one; tells nobody. */
    void setPath (const juce::String& text);
    const juce::String& getPath() const noexcept { return path.getPath(); }
    bool isChecked() const noexcept { return check.getToggleState(); }
    void setWildcards (const juce::String& text) { path.setWildcards (text); }
    void addListener (Listener* listener);
    void removeListener (Listener* listener);

    CheckBox& getCheck() noexcept { return check; }
    PathComponent& getPathComponent() noexcept { return path; }

    void resized() override;
    void lookAndFeelChanged() override;
    void childBoundsChanged (juce::Component* child) override;
    void checkBoxChanged (CheckBox* source) override;
    void pathChanged (PathComponent* source) override;

private:
    void updateEnabling();
    void notifyListeners();

    juce::Array<Listener*> listeners;
    PathComponent path;
    CheckBox check;
    bool layingOut = false;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (DefaultResourceCheckBox)
};
