#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "Pixels/ColourStep.h"
#include "Pixels/ConversionRoute.h"
#include "Pixels/PixelBlock.h"

namespace moxtexture
{
namespace
{

constexpr size_t k_uiWords = CMOXPixelAccessor::k_uiRawBytes / sizeof(uint64_t);

/// One look-up of a pixel: the code in source bits, the result in target bits.
struct Lookup
{
    const uint32_t* pTable;
    unsigned int uiSourceShift;
    uint64_t ui64SourceMask;
    size_t uiTargetWord;
    unsigned int uiTargetShift;
};

class CTableRoute : public CConversionRoute
{
public:
    explicit CTableRoute(const ConversionPlan& plan) : m_uiSourceBytes(plan.source.getBytes()), m_uiTargetBytes(plan.target.getBytes()) {}

    /// False where a code reaches into its neighbours, so that channels cannot be had one by one.
    [[nodiscard]] bool makeTables(const ConversionPlan& plan)
    {
        for (unsigned int i = 0; i < plan.target.getChannelCount(); ++i)
        {
            const ChannelPlace& place = plan.target.getPlace(i);
            if (place.eWriteRule == EValueRule::eNothing)
                continue;
            const TargetValue& value = plan.aValues[i];
            const unsigned int uiLowestBit = getLowestBit(place);
            if (value.eFrom == EValueSource::eChannel)
            {
                const ChannelPlace& from = plan.source.getPlace(value.uiSourcePosition);
                const bool bRead = from.eReadRule != EValueRule::eNothing;
                const uint32_t* pTable = findOrMakeTable(plan, value.uiSourcePosition, i);
                if (pTable == nullptr)
                    return false;
                m_aLookups[m_uiLookupCount++] = {pTable, bRead ? getLowestBit(from) : 0, bRead ? getLowMask(from.uiBits) : 0,
                                                 uiLowestBit / 64, uiLowestBit % 64};
                continue;
            }
            uint64_t ui64Code;
            if (!convertValue(plan, i, value.eFrom == EValueSource::eOne ? 1.0f : 0.0f, ui64Code))
                return false;
            m_aui64Constant[uiLowestBit / 64] |= ui64Code << (uiLowestBit % 64);
        }
        return true;
    }

    void convert(const uint8_t* pSource, uint8_t* pTarget, size_t uiCount) override
    {
        while (uiCount != 0)
        {
            const size_t uiBlock = std::min(uiCount, k_uiBlockPixels);
            convertBlock(pSource, pTarget, uiBlock);
            pSource += uiBlock * m_uiSourceBytes;
            pTarget += uiBlock * m_uiTargetBytes;
            uiCount -= uiBlock;
        }
    }

private:
    void convertBlock(const uint8_t* pSource, uint8_t* pTarget, size_t uiCount)
    {
        loadPixelWords(pSource, m_uiSourceBytes, uiCount, m_aui64Source);
        const size_t uiWordCount = m_uiTargetBytes > sizeof(uint64_t) ? k_uiWords : 1;
        for (size_t uiWord = 0; uiWord < uiWordCount; ++uiWord)
            std::fill_n(m_aui64Target[uiWord], uiCount, m_aui64Constant[uiWord]);

        for (unsigned int uiLookup = 0; uiLookup < m_uiLookupCount; ++uiLookup)
        {
            const Lookup lookup = m_aLookups[uiLookup];
            uint64_t* pTargetWords = m_aui64Target[lookup.uiTargetWord];
            for (size_t i = 0; i < uiCount; ++i)
                pTargetWords[i] |= uint64_t{lookup.pTable[(m_aui64Source[i] >> lookup.uiSourceShift) & lookup.ui64SourceMask]}
                                   << lookup.uiTargetShift;
        }

        if (uiWordCount == 1)
        {
            storePixelWords(m_aui64Target[0], m_uiTargetBytes, uiCount, pTarget);
            return;
        }
        for (size_t i = 0; i < uiCount; ++i)
        {
            uint8_t* pPixel = pTarget + i * m_uiTargetBytes;
            std::memcpy(pPixel, &m_aui64Target[0][i], sizeof(uint64_t));
            std::memcpy(pPixel + sizeof(uint64_t), &m_aui64Target[1][i], m_uiTargetBytes - sizeof(uint64_t));
        }
    }

    /// The code that a value ends as in a target channel, the colour space step included.
    /// @return false where it does not stay within the channel
    static bool convertValue(const ConversionPlan& plan, unsigned int uiTargetPosition, float fValue, uint64_t& ui64Code)
    {
        const ChannelPlace& place = plan.target.getPlace(uiTargetPosition);
        const uint64_t ui64Mask = getLowMask(place.uiBits);
        ui64Code = writeValueByRule(place.eWriteRule, fValue, place.uiBits);
        if (!place.bWhole && ui64Code > ui64Mask)
            return false;
        ui64Code &= ui64Mask;
        if (!plan.isMapped(uiTargetPosition))
            return true;
        ui64Code = mapCode(plan.eMapping, place, ui64Code);
        if (!place.bWhole && ui64Code > ui64Mask)
            return false;
        ui64Code &= ui64Mask;
        return true;
    }

    /// @return null where a code does not stay within the channel
    const uint32_t* findOrMakeTable(const ConversionPlan& plan, unsigned int uiSourcePosition, unsigned int uiTargetPosition)
    {
        const ChannelPlace& from = plan.source.getPlace(uiSourcePosition);
        const ChannelPlace& to = plan.target.getPlace(uiTargetPosition);
        const TableKind kind = {from.eReadRule, to.eWriteRule, from.uiBits, to.uiBits, plan.isMapped(uiTargetPosition)};
        for (unsigned int i = 0; i < m_uiTableCount; ++i)
            if (m_aKinds[i] == kind)
                return m_aTables[i].data();

        std::vector<uint32_t> table(from.eReadRule == EValueRule::eNothing ? 1 : size_t{1} << from.uiBits);
        for (size_t i = 0; i < table.size(); ++i)
        {
            uint64_t ui64Code;
            if (!convertValue(plan, uiTargetPosition, readValueByRule(from.eReadRule, i, from.uiBits), ui64Code))
                return nullptr;
            table[i] = static_cast<uint32_t>(ui64Code);
        }
        m_aKinds[m_uiTableCount] = kind;
        m_aTables[m_uiTableCount] = std::move(table);
        return m_aTables[m_uiTableCount++].data();
    }

    struct TableKind
    {
        EValueRule eFrom;
        EValueRule eTo;
        unsigned int uiFromBits;
        unsigned int uiToBits;
        bool bMapped;

        bool operator==(const TableKind& other) const
        {
            return eFrom == other.eFrom && eTo == other.eTo && uiFromBits == other.uiFromBits && uiToBits == other.uiToBits &&
                   bMapped == other.bMapped;
        }
    };

    size_t m_uiSourceBytes;
    size_t m_uiTargetBytes;
    unsigned int m_uiLookupCount = 0;
    unsigned int m_uiTableCount = 0;
    std::array<Lookup, CMOXPixelAccessor::k_uiPositions> m_aLookups = {};
    std::array<TableKind, CMOXPixelAccessor::k_uiPositions> m_aKinds = {};
    std::array<std::vector<uint32_t>, CMOXPixelAccessor::k_uiPositions> m_aTables;
    uint64_t m_aui64Constant[k_uiWords] = {};
    uint64_t m_aui64Source[k_uiBlockPixels];
    uint64_t m_aui64Target[k_uiWords][k_uiBlockPixels];
};

/// All channels elements of one size, or all fields of one word: then no channel lies over another.
bool haveChannelsApart(const CMOXPixelAccessor& accessor)
{
    for (unsigned int i = 1; i < accessor.getChannelCount(); ++i)
    {
        const ChannelPlace& place = accessor.getPlace(i);
        if (place.bWhole != accessor.getPlace(0).bWhole || (place.bWhole && place.uiBits != accessor.getPlace(0).uiBits))
            return false;
    }
    return true;
}

} // namespace

std::unique_ptr<CConversionRoute> makeTableRoute(const ConversionPlan& plan, uint64_t ui64Pixels)
{
    if (!plan.isByChannel() || !CPixelBlock::isFor(plan.source) || !CPixelBlock::isFor(plan.target) ||
        plan.source.getBytes() > sizeof(uint64_t) || !haveChannelsApart(plan.target))
        return nullptr;
    uint64_t ui64Entries = 0;
    for (unsigned int i = 0; i < plan.target.getChannelCount(); ++i)
    {
        const TargetValue& value = plan.aValues[i];
        if (value.eFrom != EValueSource::eChannel)
            continue;
        const ChannelPlace& from = plan.source.getPlace(value.uiSourcePosition);
        if (from.uiBits > k_uiLargestTableBits)
            return nullptr;
        ui64Entries = std::max(ui64Entries, uint64_t{1} << from.uiBits);
    }
    if (ui64Entries > ui64Pixels)
        return nullptr;

    auto pRoute = std::make_unique<CTableRoute>(plan);
    if (!pRoute->makeTables(plan))
        return nullptr;
    return pRoute;
}

} // namespace moxtexture
