#pragma once

#include "SkinImages.h"

#include <vector>

/** Small strips for the skin controls the shipped face doesn't use (numeric and pattern digits, piano
    keys, note cells): a kit for other skins of the framework, and what the tests of those controls draw
    with. Our own artwork like the rest, in `resources/skin/kit`. */
class KitImages final
{
public:
    static std::vector<SkinImages::Picture> render();

    /** Neighbours a kit key's picture covers: the white key one on each side, the black key none. */
    static constexpr int whiteKeyLeft = 1, whiteKeyRight = 1;
};
