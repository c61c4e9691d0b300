#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <vector>

#include "Codecs/MOXTC/CompressorState.h"
#include "Codecs/MOXTC/CompressorSteps.h"
#include "Codecs/MOXTC/HardFlags.h"
#include "Codecs/MOXTC/MOXTCThreadDriver.h"

namespace compressortest
{

/// The fast compressors as they are with the plain form of every step, for the thread driver and for both generations.
template <typename Record>
class CReferenceCompressor final : public moxtexture::CCompressorState
{
public:
    CReferenceCompressor(const uint8_t* pSource, uint32_t uiWidth, uint32_t uiHeight)
        : CCompressorState(pSource, uiWidth, uiHeight, Record::k_uiBlockWidth), m_BlockData(m_Images.getBlockCount())
    {
    }

    void Initialise()
    {
        moxtexture::findStartingColoursReference(m_Images, std::is_same_v<Record, moxtexture::BlockRecord4bpp>);
        m_HardFlags = moxtexture::findHardFlags(m_Images);
        UpscaleColours();
        moxtexture::optimiseModulationReference(m_Images, m_BlockData, m_Images.getWholeRegion());
    }

    void UpscaleColours() { moxtexture::upscaleColoursReference(m_Images); }

    void OptimiseModulation(uint32_t uiX0, uint32_t uiX1, uint32_t uiY0, uint32_t uiY1)
    {
        moxtexture::optimiseModulationReference(m_Images, m_BlockData, {uiX0, uiX1, uiY0, uiY1});
    }

    void OptimiseColours(uint32_t uiX0, uint32_t uiX1, uint32_t uiY0, uint32_t uiY1)
    {
        moxtexture::optimiseColoursReference(m_Images, m_BlockData, {uiX0, uiX1, uiY0, uiY1});
    }

    [[nodiscard]] std::vector<uint8_t> makeOutput(bool bII) const
    {
        std::vector<uint8_t> blocks(m_Images.getBlockCount() * moxtexture::k_uiBlockBytes);
        moxtexture::writeBlocks(m_Images, bII ? m_HardFlags.data() : nullptr, !bII, blocks.data(),
                                [this](size_t uiBlock) { return moxtexture::getChosenModulation(m_BlockData[uiBlock]); });
        return blocks;
    }

private:
    std::vector<Record> m_BlockData;
    std::vector<uint8_t> m_HardFlags;
};

/// The blocks of a picture of four-byte pixels after some passes of the plain steps, in the order that the format has.
template <typename Record>
[[nodiscard]] std::vector<uint8_t> compressByReference(const std::vector<uint8_t>& picture, uint32_t uiWidth, uint32_t uiHeight, bool bII,
                                                       uint32_t uiPasses)
{
    CReferenceCompressor<Record> compressor(picture.data(), uiWidth, uiHeight);
    compressor.setIterations(uiPasses);
    moxtexture::CMOXTCThreadDriver driver(compressor);
    compressor.Initialise();
    driver.run();
    return compressor.makeOutput(bII);
}

} // namespace compressortest
