#include "ScreenGrab.h"

#include <limits>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace
{
juce::Image grab (Display* display, int x, int y, int width, int height)
{
    XImage* shot = XGetImage (display, DefaultRootWindow (display), x, y, (unsigned int) width,
                              (unsigned int) height, AllPlanes, ZPixmap);
    if (shot == nullptr)
        return {};
    juce::Image image (juce::Image::RGB, width, height, false);
    {
        juce::Image::BitmapData pixels (image, juce::Image::BitmapData::writeOnly);
        for (int row = 0; row < height; ++row)
            for (int column = 0; column < width; ++column)
            {
                const auto value = XGetPixel (shot, column, row);
                pixels.setPixelColour (column, row,
                                       juce::Colour ((juce::uint8) ((value & shot->red_mask) >> 16),
                                                     (juce::uint8) ((value & shot->green_mask) >> 8),
                                                     (juce::uint8) (value & shot->blue_mask)));
            }
    }
    XDestroyImage (shot);
    return image;
}
} // namespace

juce::Image ScreenGrab::capture (juce::Rectangle<int> area)
{
    Display* display = XOpenDisplay (nullptr);
    if (display == nullptr)
        return {};
    XSync (display, False);
    const auto screen = juce::Rectangle<int> (DisplayWidth (display, DefaultScreen (display)),
                                              DisplayHeight (display, DefaultScreen (display)));
    const auto clipped = area.getIntersection (screen);
    auto image = clipped.isEmpty() ? juce::Image()
                                   : grab (display, clipped.getX(), clipped.getY(), clipped.getWidth(),
                                           clipped.getHeight());
    XCloseDisplay (display);
    return image;
}

juce::Image ScreenGrab::captureScreen()
{
    // An area beyond any screen, cut to the one there is.
    return capture ({ 0, 0, std::numeric_limits<short>::max(), std::numeric_limits<short>::max() });
}
