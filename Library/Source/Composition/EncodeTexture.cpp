#include "Composition/EncodeTexture.h"

#include <new>

#include "Composition/CanonicalForm.h"
#include "Conversion/Transcode.h"
#include "Formats/FormatNames.h"
#include "Operations/Flip.h"
#include "Operations/MIPMaps.h"

namespace moxtexture
{
namespace
{

constexpr uint32_t k_uiXMirrored = 1, k_uiYMirrored = 2, k_uiZMirrored = 4;

/// Turns the rows round and says so in the orientation record, where that tells nothing of the Y axis yet.
bool flipVertically(CMOXTexture& texture)
{
    if (texture.getOrientation(eAxisY) != 0)
        return true;
    if (!Flip(texture, eAxisY))
        return false;
    const uint32_t uiX = texture.getOrientation(eAxisX) == k_uiXMirrored ? k_uiXMirrored : 0;
    const uint32_t uiZ = texture.getOrientation(eAxisZ) == k_uiZMirrored ? k_uiZMirrored : 0;
    texture.setOrientation(uiX | k_uiYMirrored | uiZ);
    return true;
}

/// Runs the steps on what starts as a copy of the working texture.
///
/// @param eStep  the step at hand, also where memory is refused on the way
bool runSteps(EncodedTexture& encoded, const CMOXTexture& working, const EncodeRequest& request, EEncodeResult& eStep)
{
    eStep = eEncodeFailed;
    encoded.stored = working;

    eStep = eEncodeFlipFailed;
    if (request.bVerticalFlip && !flipVertically(encoded.stored))
        return false;

    eStep = eEncodeMIPMapsFailed;
    if (request.bGenerateMIPMaps && !GenerateMIPMaps(encoded.stored, eResizeLinear, k_uiFullMIPChain))
        return false;

    eStep = eEncodeFailed;
    if (!Transcode(encoded.stored, request.target.pixelFormat, request.target.eChannelType, request.target.eColourSpace, request.uiQuality,
                   request.bDither))
        return false;
    encoded.working = encoded.stored;
    return toRGBA8Canonical(encoded.working);
}

} // namespace

EncodedTexture encodeTexture(const CMOXTexture& working, const EncodeRequest& request)
{
    EncodedTexture encoded;
    EEncodeResult eStep = eEncodeFailed;
    try
    {
        if (runSteps(encoded, working, request, eStep))
        {
            encoded.eResult = eEncodeDone;
            return encoded;
        }
    }
    catch (const std::bad_alloc&)
    {
        // As any other failure of that step.
    }
    EncodedTexture failed;
    failed.eResult = eStep;
    return failed;
}

std::string getEncodedName(const std::string& strSourceTitle, MOXPixelWord pixelFormat)
{
    return strSourceTitle + " (Encoded:" + getFormatName(pixelFormat) + ")";
}

} // namespace moxtexture
