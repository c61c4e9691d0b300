#pragma once

#include <vector>

#include "Codecs/MOXTC/CompressorImages.h"
#include "Codecs/MOXTC/OptimiseColours.h"
#include "Codecs/MOXTC/OptimiseModulation.h"
#include "Codecs/MOXTC/RefinementPasses.h"
#include "Codecs/MOXTC/UpscaleColours.h"

namespace moxtexture
{

/// The steps that the compressors of one rate share, for both generations.
///
/// @tparam Base    MOXTCCompressor or MOXTCIICompressor
/// @tparam Record  what is kept of a block: BlockRecord2bpp or BlockRecord4bpp
template <typename Base, typename Record>
class CompressorSteps : public Base
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
    CompressorSteps(const uint8_t* pSource, uint32_t uiWidth, uint32_t uiHeight)
        : Base(pSource, uiWidth, uiHeight, Record::k_uiBlockWidth), m_BlockData(this->m_Images.getBlockCount())
    {
    }

    std::vector<Record> m_BlockData;
};

} // namespace moxtexture
