#pragma once

#include "Formats/PixelWord.h"
#include "Texture/CMOXTextureHeader.h"

namespace moxtexture
{

/// What a user is shown once a target format is chosen.
enum EEncodePage
{
    eEncodePageMOXTC,       ///< quality of MOXTC, with room for a warning
    eEncodePageETC,         ///< quality of ETC, with room for a warning
    eEncodePageASTC,        ///< quality of ASTC
    eEncodePageASTCError,   ///< there is no encoder for ASTC
    eEncodePageNPOTError,   ///< the format takes powers of two alone
    eEncodePageSizeError,   ///< the size is no multiple of the format's block
    eEncodePageNoSelection, ///< no format is chosen yet
    eEncodePageEmpty,
    eEncodePageUnchanged, ///< whatever page is shown stays
};

struct EncodeCheck
{
    EEncodePage ePage = eEncodePageNoSelection;
    bool bValid = false;
    bool bWarning = false; ///< show the page's warning; the encode works all the same
};

/// May a texture of that shape be encoded to that format, and what is to be shown about it?
///
/// @param bASTCEncoderFound  the external program that encodes ASTC is at hand
[[nodiscard]] EncodeCheck checkEncode(const CMOXTextureHeader& header, MOXPixelWord pixelFormat, bool bASTCEncoderFound);

} // namespace moxtexture
