#pragma once

#include <vector>

#include "Codecs/MOXTC/BlockRecords.h"
#include "Codecs/MOXTC/CompressorImages.h"
#include "Codecs/MOXTC/OptimiseColours.h"
#include "Codecs/MOXTC/OptimiseModulation.h"
#include "Codecs/MOXTC/RefinementPasses.h"
#include "Codecs/MOXTC/StartingColours.h"
#include "Codecs/MOXTC/UpscaleColours.h"
#include "Codecs/MOXTC/WriteBlocks.h"

namespace moxtexture
{

/// What of a record goes into the block, by its current mode.
[[nodiscard]] inline ChosenModulation getChosenModulation(const BlockRecord2bpp& record)
{
    const auto& codes = record.ui8Mode == 0 ? record.aui8DirectCodes : record.aui8InterpolatedCodes;
    return {codes.data(), record.ui8Mode};
}

[[nodiscard]] inline ChosenModulation getChosenModulation(const BlockRecord4bpp& record)
{
    const auto& codes = record.uiMode == 0 ? record.aui8StandardCodes : record.aui8PunchThroughCodes;
    return {codes.data(), record.uiMode};
}

/// The steps that the compressors of one rate share, for both generations.
///
/// @tparam Base    MOXTCCompressor or MOXTCIICompressor
/// @tparam Record  what is kept of a block: BlockRecord2bpp or BlockRecord4bpp
template <typename Base, typename Record>
class CCompressorSteps : public Base
{
public:
    void Compress() override
    {
        runRefinementPasses(*this, [this](const auto& step) { step(this->m_Images.getWholeRegion()); });
    }

    void UpscaleColours() override { upscaleColours(this->m_Images); }

    void OptimiseModulation(uint32_t uiX0, uint32_t uiX1, uint32_t uiY0, uint32_t uiY1) override
    {
        optimiseModulation(this->m_Images, m_BlockData, {uiX0, uiX1, uiY0, uiY1});
    }

    void OptimiseColours(uint32_t uiX0, uint32_t uiX1, uint32_t uiY0, uint32_t uiY1) override
    {
        optimiseColours(this->m_Images, m_BlockData, {uiX0, uiX1, uiY0, uiY1});
    }

    /// One record a block, in rows.
    [[nodiscard]] const std::vector<Record>& getBlockData() const { return m_BlockData; }

protected:
    CCompressorSteps(const uint8_t* pSource, uint32_t uiWidth, uint32_t uiHeight)
        : Base(pSource, uiWidth, uiHeight, Record::k_uiBlockWidth), m_BlockData(this->m_Images.getBlockCount())
    {
    }

    /// The end of Initialise: all that follows from the starting colours.
    void upscaleAndOptimiseModulation()
    {
        UpscaleColours();
        const BlockRegion whole = this->m_Images.getWholeRegion();
        OptimiseModulation(whole.uiX0, whole.uiX1, whole.uiY0, whole.uiY1);
    }

    /// @param pui8HardFlags  one byte a block for MOXTCII, null for MOXTC1
    void writeAllBlocks(uint8_t* pTarget, const uint8_t* pui8HardFlags, bool bMorton) const
    {
        writeBlocks(this->m_Images, pui8HardFlags, bMorton, pTarget,
                    [this](size_t uiBlock) { return getChosenModulation(m_BlockData[uiBlock]); });
    }

    std::vector<Record> m_BlockData;
};

} // namespace moxtexture
