#pragma once

#include <cstdint>
#include <string>

#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// What an encode is asked for.
struct EncodeRequest
{
    PixelEncoding target;          ///< bPreMultiplied plays no part
    uint32_t uiQuality = 0;        ///< on the scale of the target's codec
    bool bDither = false;          ///< diffuse the error of targets below 32 bits a pixel
    bool bVerticalFlip = false;    ///< store it bottom row first, with the orientation record that says so
    bool bGenerateMIPMaps = false; ///< down to one pixel, by the linear filter
};

/// The step that failed.
enum EEncodeResult
{
    eEncodeDone,
    eEncodeFlipFailed,
    eEncodeMIPMapsFailed,
    eEncodeFailed, ///< the conversion itself, or the copy that is made of its result
};

struct EncodedTexture
{
    EEncodeResult eResult = eEncodeFailed;
    CMOXTexture stored;  ///< in the target encoding
    CMOXTexture working; ///< the same picture, as it is displayed and edited: linear 8-bit RGBA, orientation undone
};

/// Encodes a copy of a texture: flips it if asked, makes MIP maps if asked, converts it, and converts a copy of that back for display.
///
/// @param working  in one of the working forms that edits take. One whose orientation record speaks of the Y axis already is not
///                 flipped again
/// @return empty textures where eResult is not eEncodeDone. Memory refused fails the step at hand
[[nodiscard]] EncodedTexture encodeTexture(const CMOXTexture& working, const EncodeRequest& request);

/// What a document encoded from another is called: "photo.png * (Encoded:BC1)".
/// @param strSourceTitle  full title of the document encoded from, with its mark of unsaved changes
[[nodiscard]] std::string getEncodedName(const std::string& strSourceTitle, MOXPixelWord pixelFormat);

} // namespace moxtexture
