#pragma once

#include <string>

#include "Texture/CMOXTexture.h"

/// How a file is brought into the form that is displayed and edited.
enum class EDisplayRoute
{
    eOpen, ///< float channels stay floats; a file named ".astc" is turned upside down
    ePlain ///< 8-bit RGBA for everything
};

/// Where opening a file ended.
enum class EOpenEnd
{
    eDone,
    eNotLoaded,    ///< strError tells the user why
    eNotConverted, ///< loaded, but not to be displayed; see isAstc
    eNoMemory
};

/// A file as a window takes it.
struct OpenedTexture
{
    EOpenEnd eEnd = EOpenEnd::eNotLoaded;
    std::string strError;
    bool bIsASTC = false;            ///< of eNotConverted: of a format that only another program decodes
    moxtexture::CMOXTexture stored;  ///< as the file has it
    moxtexture::CMOXTexture display; ///< linear RGBA with its orientation undone
};

/// Loads a texture file or an image, and makes the one copy of it that is displayed.
/// @param strPath  UTF-8, links resolved
[[nodiscard]] OpenedTexture openTexture(const std::string& strPath, EDisplayRoute eRoute);

/// What stands behind a link, which may be a link again: follows 256 links at most.
[[nodiscard]] std::string resolveLinks(const std::string& strPath);
