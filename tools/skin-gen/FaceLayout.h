#pragma once

#include <juce_graphics/juce_graphics.h>

#include <vector>

/** The face of the plug-in as one table: every control of the skin with its tag, name, binding, actions,
    place and frames, and what the artwork draws for it. The skin document and the pictures are both made
    from this table, so they can't disagree. */
class FaceLayout final
{
public:
    /** What a control looks like, which decides how its frames are drawn. */
    enum class Look
    {
        knob,        // a knob turned in even steps over its sweep
        steppedKnob, // a knob that stops on printed detents
        lever,       // a two-position lever, frame 0 down
        lampButton,  // a push button with a lamp: off up, off pressed, on up, on pressed
        pushButton,  // a momentary button with an icon: up, pressed
        display,     // the preset name window, drawn by the bitmap font
        meter,       // a column of lamps lit from the bottom
        lamp         // a single lamp: dark, lit
    };

    enum class Icon
    {
        none,
        gear,
        previous,
        next,
        list
    };

    struct Attribute
    {
        const char* name;
        const char* value;
    };

    struct Control
    {
        const char* tag;
        const char* name;
        Look look;
        juce::String resource; // the strip's key; the control's name and ".png" unless given
        int frames;
        juce::Rectangle<int> bounds;
        const char* parameter; // bound parameter, or null
        std::vector<Attribute> actions;
        std::vector<Attribute> attributes;
        std::vector<Attribute> gfxAttributes;
        float defaultValue; // the parameter table's default, for the face at defaults

        // What the face prints around it.
        const char* caption = nullptr;      // under a knob or button
        const char* lowText = nullptr;      // at the start of a knob's scale
        const char* highText = nullptr;     // at its end
        std::vector<const char*> detents{}; // a stepped knob's positions, in order
        Icon icon = Icon::none;
    };

    /** The controls in document order. */
    static const std::vector<Control>& getControls();

    /** The editor's size: the background's. */
    static constexpr int width = 633;
    static constexpr int height = 207;
    static constexpr const char* backgroundResource = "Background.png";
    static constexpr const char* fontResource = "Fonts.png";

    /** The bitmap font's cells: 7 by 9 pixels, the 96 characters from 32 on, then the same reversed. */
    static constexpr int glyphWidth = 7;
    static constexpr int glyphHeight = 9;
    static constexpr int firstGlyph = 32;
    static constexpr int numGlyphs = 96;

    /** The display's two colours, which the skin names and the font is drawn in. */
    static constexpr juce::uint32 displayBackground = 0xff232224;
    static constexpr juce::uint32 displayText = 0xffbef6ff;

    /** The skin document of the table. */
    static juce::String createSkinXml();
};
