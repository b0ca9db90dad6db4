#pragma once

#include "windows/PathComponent.h"
#include "windows/RadioButtons.h"

/** A radio group whose last row carries a file's path: the path can be changed only while that row is
    chosen, and a new path reaches the group's listeners as a change of the group. */
class DefaultResourcesRadioButtons : public RadioButtons, public PathComponent::Listener
{
public:
    DefaultResourcesRadioButtons (const juce::String& title, const juce::StringArray& labels);
    ~DefaultResourcesRadioButtons() override;

    PathComponent& getPath() noexcept { return path; }

    void resized() override;
    void sizeChanged() override;
    void selectionChanged() override;
    void childBoundsChanged (juce::Component* child) override;
    void pathChanged (PathComponent* source) override;

private:
    /** How far the path stands out of its row, above and below. */
    int pathOverhang() const;
    /** The rows, stretched where the path stands out of the last one. */
    void fitHeight();

    PathComponent path;
    bool sizing = false;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (DefaultResourcesRadioButtons)
};
