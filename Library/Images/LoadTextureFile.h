#pragma once

#include <string>

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// How a load went.
struct LoadStatus
{
    bool bFailed = false;
    std::string strError;   ///< for the user, where bFailed
    bool bWasImage = false; ///< an ordinary image, not a texture file
};

/// Loads a texture file or, where it is none, an ordinary image of any kind that Qt reads (PNG, BMP, JPEG, TGA and more; told by
/// content where the name does not fit). An image becomes 8-bit RGBA, linear, one surface, alpha 255 where it has none.
///
/// @param status   set anew
/// @param texture  the result; a default texture where the file cannot be opened; what the texture reader left, with a data size
///                 of 0, where it is neither
/// @param bAsStored  leave the layouts of a DDS file as the tables name them; otherwise they are put right (correctLoadedDds())
///
/// An image is refused whose RGBA form does not fit 32 bits, or takes more than 1 GiB and also more than 65,536 times the
/// length of the file, which only an empty picture would.
///
/// Needs no application object. PNG, BMP, PPM, XBM and XPM are part of Qt's Gui library; JPEG, TGA, GIF and others come from
/// plug-ins in the "imageformats" folder of the Qt installation, which are found without an application object, too. (Only plug-ins
/// beside the program itself would need one.)
void loadTextureFile(LoadStatus& status, CMOXTexture& texture, const std::string& strPath, bool bAsStored = false);

} // namespace moxtexture
