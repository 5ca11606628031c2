// SPDX-License-Identifier: GPL-3.0-or-later

#include "skin/files/BoundedFont.h"

#include <ft2build.h>
#include FT_FREETYPE_H

namespace K7R
{

namespace
{

bool isUsable (const FT_Face face)
{
    return FT_IS_SCALABLE (face) && face->num_charmaps > 0 && face->ascender > face->descender
           && face->family_name != nullptr && *face->family_name != 0;
}

bool canBeRead (const void* data, size_t numBytes)
{
    FT_Library library = nullptr;
    FT_Face face = nullptr;

    if (numBytes == 0 || FT_Init_FreeType (&library) != 0)
        return false;

    const auto isGood =
        FT_New_Memory_Face (library, static_cast<const FT_Byte*> (data), static_cast<FT_Long> (numBytes), 0, &face) == 0
        && isUsable (face);
    FT_Done_FreeType (library); // and the face with it
    return isGood;
}

} // namespace

juce::Typeface::Ptr createBoundedTypeface (const void* data, size_t numBytes)
{
    return canBeRead (data, numBytes) ? juce::Typeface::createSystemTypefaceFor (data, numBytes) : nullptr;
}

} // namespace K7R
