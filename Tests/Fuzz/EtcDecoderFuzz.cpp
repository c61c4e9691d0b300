#include <cstddef>
#include <cstdint>
#include <vector>

#include "Codecs/ETC/EtcDecompressImage.h"
#include "Formats/PixelFormats.h"
#include "Fuzz/LoadedTexture.h"

using namespace moxtexture;

namespace
{

constexpr size_t k_uiHead = 4; ///< format, sign, width, height

/// Blocks of ETC1, ETC2 and EAC in 4 by 4 pixels; 0 for any other format.
uint32_t getBlockBytes(uint32_t uiFormat)
{
    switch (uiFormat)
    {
    case ePF_ETC1:
    case ePF_ETC2_RGB:
    case ePF_ETC2_RGB_A1:
    case ePF_EAC_R11:
        return 8;
    case ePF_ETC2_RGBA:
    case ePF_EAC_RG11:
        return 16;
    default:
        return 0;
    }
}

} // namespace

/// Any bytes as blocks of any of the formats and of sizes up to 32 by 32: both decoders write the same, and neither leaves its buffers,
/// which are as large as they have to be. Bytes that are missing come from the beginning again.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pBytes, size_t uiSize)
{
    if (uiSize <= k_uiHead)
        return 0;
    const uint32_t uiFormat = pBytes[0];
    const bool bSigned = (pBytes[1] & 1) != 0;
    const uint32_t uiWidth = 1 + pBytes[2] % 32, uiHeight = 1 + pBytes[3] % 32;
    const uint32_t uiBlockBytes = getBlockBytes(uiFormat);

    const uint32_t uiPixelsSize = etcDecompressImage(nullptr, nullptr, uiWidth, uiHeight, uiFormat, bSigned);
    fuzzsupport::require((uiPixelsSize == 0) == (uiBlockBytes == 0));
    if (uiBlockBytes == 0)
        return 0;

    std::vector<uint8_t> blocks(size_t{(uiWidth + 3) / 4} * ((uiHeight + 3) / 4) * uiBlockBytes);
    for (size_t i = 0; i < blocks.size(); ++i)
        blocks[i] = pBytes[k_uiHead + i % (uiSize - k_uiHead)];
    std::vector<uint8_t> pixels(uiPixelsSize, 0xA5), plain(uiPixelsSize, 0x5A);
    fuzzsupport::require(etcDecompressImage(blocks.data(), pixels.data(), uiWidth, uiHeight, uiFormat, bSigned) == uiPixelsSize);
    fuzzsupport::require(etcDecompressImageReference(blocks.data(), plain.data(), uiWidth, uiHeight, uiFormat, bSigned) == uiPixelsSize);
    fuzzsupport::require(pixels == plain);
    return 0;
}
