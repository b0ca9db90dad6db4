// skin-gen: draws the skin's pictures and writes its document, or checks the committed ones.
//
//   skin-gen --out DIR      writes DIR/skin.xml, the pictures at 1x and DIR/2x/ at 2x
//   skin-gen --check DIR    draws into a temporary folder and compares with DIR: decoded pixels, sizes
//                           and formats (not bytes, which follow the PNG library's version)
//   skin-gen --sheet FILE   writes a contact sheet of every frame and of the face

#include "ContactSheet.h"
#include "DialogImages.h"
#include "FaceLayout.h"
#include "KitImages.h"
#include "SkinImages.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <iostream>

namespace
{
constexpr int scales[] = { 1, 2 };

juce::File folderFor (const juce::File& root, int scale)
{
    return scale == 1 ? root : root.getChildFile (juce::String (scale) + "x");
}

juce::File kitFolder (const juce::File& root) { return root.getChildFile ("kit"); }
juce::File dialogFolder (const juce::File& root, int scale)
{
    return folderFor (root.getChildFile ("dialog"), scale);
}

bool writeAtomically (const juce::File& target, const std::function<bool (juce::OutputStream&)>& write)
{
    juce::TemporaryFile temporary (target);
    {
        auto stream = temporary.getFile().createOutputStream();
        if (stream == nullptr || !write (*stream))
            return false;
    }
    return temporary.overwriteTargetFileWithTemporary();
}

bool writePng (const juce::Image& image, const juce::File& target)
{
    return writeAtomically (target,
                            [&image] (juce::OutputStream& out)
                            {
                                juce::PNGImageFormat png;
                                return png.writeImageToStream (image, out);
                            });
}

bool writeText (const juce::String& text, const juce::File& target)
{
    return writeAtomically (target, [&text] (juce::OutputStream& out)
                            { return out.writeText (text, false, false, nullptr); });
}

int fail (const juce::String& message)
{
    std::cerr << "skin-gen: " << message << std::endl;
    return 1;
}

int writeAll (const juce::File& root)
{
    for (const int scale : scales)
    {
        const auto folder = folderFor (root, scale);
        if (!folder.createDirectory())
            return fail ("cannot create " + folder.getFullPathName());
        for (const auto& picture : SkinImages::render (scale))
            if (!writePng (picture.image, folder.getChildFile (picture.key)))
                return fail ("cannot write " + folder.getChildFile (picture.key).getFullPathName());
    }
    for (const int scale : scales)
    {
        const auto folder = dialogFolder (root, scale);
        if (!folder.createDirectory())
            return fail ("cannot create " + folder.getFullPathName());
        for (const auto& picture : DialogImages::render (scale))
            if (!writePng (picture.image, folder.getChildFile (picture.key)))
                return fail ("cannot write " + folder.getChildFile (picture.key).getFullPathName());
    }
    if (!kitFolder (root).createDirectory())
        return fail ("cannot create " + kitFolder (root).getFullPathName());
    for (const auto& picture : KitImages::render())
        if (!writePng (picture.image, kitFolder (root).getChildFile (picture.key)))
            return fail ("cannot write " + kitFolder (root).getChildFile (picture.key).getFullPathName());
    if (!writeText (FaceLayout::createSkinXml(), root.getChildFile ("skin.xml")))
        return fail ("cannot write " + root.getChildFile ("skin.xml").getFullPathName());
    return 0;
}

/** Why a committed picture differs from the drawn one, or nothing. */
juce::String compareImages (const juce::Image& drawnPicture, const juce::File& committed)
{
    // The drawn picture goes through the file format as the committed one did: its faint pixels keep
    // only what a PNG's straight alpha can hold.
    juce::MemoryOutputStream encoded;
    juce::PNGImageFormat().writeImageToStream (drawnPicture, encoded);
    const auto drawn = juce::ImageFileFormat::loadFrom (encoded.getData(), encoded.getDataSize());
    const auto image = juce::ImageFileFormat::loadFrom (committed);
    if (image.isNull())
        return "is missing or doesn't decode";
    if (image.hasAlphaChannel() != drawn.hasAlphaChannel())
        return image.hasAlphaChannel() ? "has an alpha channel" : "lacks the alpha channel";
    if (image.getBounds() != drawn.getBounds())
        return "is " + juce::String (image.getWidth()) + " by " + juce::String (image.getHeight()) + ", not "
               + juce::String (drawn.getWidth()) + " by " + juce::String (drawn.getHeight());
    const juce::Image::BitmapData a (image, juce::Image::BitmapData::readOnly);
    const juce::Image::BitmapData b (drawn, juce::Image::BitmapData::readOnly);
    for (int y = 0; y < image.getHeight(); ++y)
        for (int x = 0; x < image.getWidth(); ++x)
            if (a.getPixelColour (x, y) != b.getPixelColour (x, y))
                return "differs first at (" + juce::String (x) + ", " + juce::String (y) + ")";
    return {};
}

int checkAll (const juce::File& root)
{
    juce::StringArray problems;
    auto checkFolder =
        [&problems] (const juce::File& folder, const std::vector<SkinImages::Picture>& pictures)
    {
        juce::StringArray expected;
        for (const auto& picture : pictures)
        {
            expected.add (picture.key);
            const auto why = compareImages (picture.image, folder.getChildFile (picture.key));
            if (why.isNotEmpty())
                problems.add (folder.getChildFile (picture.key).getFullPathName() + " " + why);
        }
        for (const auto& file : folder.findChildFiles (juce::File::findFiles, false, "*.png"))
            if (!expected.contains (file.getFileName()))
                problems.add (file.getFullPathName() + " is not drawn by the generator");
    };
    for (const int scale : scales)
        checkFolder (folderFor (root, scale), SkinImages::render (scale));
    checkFolder (kitFolder (root), KitImages::render());
    for (const int scale : scales)
        checkFolder (dialogFolder (root, scale), DialogImages::render (scale));
    if (root.getChildFile ("skin.xml").loadFileAsString() != FaceLayout::createSkinXml())
        problems.add (root.getChildFile ("skin.xml").getFullPathName() + " differs from the layout");
    if (!problems.isEmpty())
        return fail (juce::String (problems.size()) + " out of date, first: " + problems[0]
                     + " (skin-gen --out writes them anew)");
    std::cout << "skin-gen: the skin and its pictures are up to date" << std::endl;
    return 0;
}

int writeSheet (const juce::File& target)
{
    if (!writePng (ContactSheet::render (1), target))
        return fail ("cannot write " + target.getFullPathName());
    return 0;
}
} // namespace

int main (int argc, char* argv[])
{
    const juce::ScopedJuceInitialiser_GUI juceSystem;
    const juce::StringArray args (argv + 1, argc - 1);
    const auto cwd = juce::File::getCurrentWorkingDirectory();
    if (args.size() == 2 && args[0] == "--out")
        return writeAll (cwd.getChildFile (args[1]));
    if (args.size() == 2 && args[0] == "--check")
        return checkAll (cwd.getChildFile (args[1]));
    if (args.size() == 2 && args[0] == "--sheet")
        return writeSheet (cwd.getChildFile (args[1]));
    std::cerr << "usage: skin-gen --out DIR | --check DIR | --sheet FILE.png" << std::endl;
    return 2;
}
