#include <algorithm>

#include "Codecs/ETC/EtcExhaustiveHalves.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Codecs/ETC/EtcExhaustiveIndividualSimd.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "Codecs/ETC/EtcExhaustiveTermsSimd.h"

// Colours are gone through in the order of the plain search, but those that can change nothing are passed over: only an error
// strictly below a half's least has an effect, and what one or two channels cost a half is never above what all three do. Which
// colours the bound leaves out depends on sums that are formed here as there; the plain search's test of red alone follows from
// that of red and green, as its sums are smaller and the bound never grows.

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{

constexpr size_t k_uiLevels4 = 16;

/// The errors of the halves for one red and one green level, by blue level. Those that are not below what the half has may be too
/// high, but stay so.
template <typename Lane>
struct ColumnErrors
{
    alignas(64) Lane a[k_uiHalves][k_uiLevels4];
};

template <typename Lane>
HWY_INLINE void findErrors(const RowSums<Lane, k_uiLevels4>& sums, const LevelTerms<Lane>& green, size_t uiGreen,
                           const ChannelTerms<Lane, k_uiLevels4>& blue, const HalfErrors& auiLimits, ColumnErrors<Lane>& errors)
{
    std::fill_n(&errors.a[0][0], k_uiHalves * k_uiLevels4, std::numeric_limits<Lane>::max());
    for (size_t uiTable = 0; uiTable < k_uiTables; ++uiTable)
    {
        const uint32_t uiHalfMask = findPromisingHalves(sums, uiGreen, blue, uiTable, auiLimits);
        if (uiHalfMask != 0)
            sweepBlues(sums.red, green, blue, uiTable, uiHalfMask, &errors.a[0][0], k_uiLevels4);
    }
}

/// Takes a column's errors over, where they are below what the halves have.
/// @return whether any is
template <typename Lane>
HWY_INLINE bool takeColumn(const ColumnErrors<Lane>& errors, size_t uiRed, size_t uiGreen, EtcBestHalves& best)
{
    bool bImproved = false;
    for (size_t uiHalf = 0; uiHalf < k_uiHalves; ++uiHalf)
        for (size_t uiBlue = 0; uiBlue < k_uiLevels4; ++uiBlue)
            if (errors.a[uiHalf][uiBlue] < best.auiErrors[uiHalf])
            {
                best.auiErrors[uiHalf] = errors.a[uiHalf][uiBlue];
                best.levels[uiHalf] = {static_cast<uint8_t>(uiRed), static_cast<uint8_t>(uiGreen), static_cast<uint8_t>(uiBlue)};
                bImproved = true;
            }
    return bImproved;
}

template <typename Lane>
HWY_NOINLINE void goThroughHalves(const EtcPixels& pixels, const std::array<uint32_t, 3>& auiWeights, uint32_t uiBound, EtcBestHalves& best)
{
    ChannelTerms<Lane, k_uiLevels4> red, green, blue;
    fillTerms(pixels.aui8Red, auiWeights[0], red);
    fillTerms(pixels.aui8Green, auiWeights[1], green);
    fillTerms(pixels.aui8Blue, auiWeights[2], blue);
    RowSums<Lane, k_uiLevels4> sums;
    LevelTerms<Lane> aGreens[k_uiLevels4];
    uint32_t uiFilledGreens = 0; // by bit
    ColumnErrors<Lane> errors;
    for (size_t uiRed = 0; uiRed < k_uiLevels4; ++uiRed)
    {
        if (red.aLeast[uiRed] >= uiBound || !isPromisingRed(red, uiRed, green, blue, best.auiErrors))
            continue;
        fillLevel<k_uiLevels4>(pixels.aui8Red, auiWeights[0], uiRed, sums.red);
        sumRow(green, sums);
        const uint32_t uiGreens = findPromisingGreens(sums, blue, best.auiErrors);
        for (size_t uiGreen = 0; uiGreen < k_uiLevels4; ++uiGreen)
        {
            if ((uiGreens >> uiGreen & 1) == 0 || sums.aLeast[uiGreen] >= uiBound)
                continue;
            if ((uiFilledGreens >> uiGreen & 1) == 0)
                fillLevel<k_uiLevels4>(pixels.aui8Green, auiWeights[1], uiGreen, aGreens[uiGreen]);
            uiFilledGreens |= 1u << uiGreen;
            findErrors(sums, aGreens[uiGreen], uiGreen, blue, best.auiErrors, errors);
            if (takeColumn(errors, uiRed, uiGreen, best))
                uiBound = std::min({uiBound, best.rowsError(), best.columnsError()});
        }
    }
}

void goThroughHalvesNarrow(const EtcPixels& pixels, const std::array<uint32_t, 3>& auiWeights, uint32_t uiBound, EtcBestHalves& best)
{
    goThroughHalves<uint16_t>(pixels, auiWeights, uiBound, best);
}

void goThroughHalvesWide(const EtcPixels& pixels, const std::array<uint32_t, 3>& auiWeights, uint32_t uiBound, EtcBestHalves& best)
{
    goThroughHalves<uint32_t>(pixels, auiWeights, uiBound, best);
}

} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace moxtexture
{

HWY_EXPORT(goThroughHalvesNarrow);
HWY_EXPORT(goThroughHalvesWide);

template <>
void improveHalves<EEtcMeasure::ePlain>(const EtcPixels& pixels, uint32_t uiBound, EtcBestHalves& best)
{
    constexpr std::array<uint32_t, 3> auiWeights = EtcMeasure<EEtcMeasure::ePlain>::k_auiWeights;
    constexpr uint32_t uiNarrow = 65535;
    if (std::min(best.columnsError(), best.rowsError()) >= uiNarrow)
    {
        HWY_DYNAMIC_DISPATCH(goThroughHalvesWide)(pixels, auiWeights, uiBound, best);
        return;
    }
    // A half of 65535 or more belongs to the split that costs more. Only if it comes below that can its split win, and it then
    // has the colour that it would have had without the limit.
    for (uint32_t& uiError : best.auiErrors)
        uiError = std::min(uiError, uiNarrow);
    HWY_DYNAMIC_DISPATCH(goThroughHalvesNarrow)(pixels, auiWeights, uiBound, best);
}

template <>
void improveHalves<EEtcMeasure::ePerceptual>(const EtcPixels& pixels, uint32_t uiBound, EtcBestHalves& best)
{
    HWY_DYNAMIC_DISPATCH(goThroughHalvesWide)(pixels, EtcMeasure<EEtcMeasure::ePerceptual>::k_auiWeights, uiBound, best);
}

} // namespace moxtexture
#endif
