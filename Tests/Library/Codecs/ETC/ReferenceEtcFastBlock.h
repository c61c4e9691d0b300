#pragma once

#include "Codecs/ETC/EtcDecodeBlock.h"
#include "Codecs/ETC/EtcErrors.h"
#include "Codecs/ETC/EtcFastBlock.h"
#include "ReferenceEtcQuantise.h"

// The fast search as one would tell it: both searches in full, each block decoded and measured.
namespace etcreference
{

using moxtexture::EtcBlockWords;

/// What the plain and the perceptual search do differently.
struct PlainSearch
{
    using Error = uint32_t;
    static constexpr auto tryTables = tryAllTables;
    static constexpr auto combined444 = quantiseCombined444;
    static constexpr auto combined555 = quantiseCombined555;
    static constexpr auto measure = moxtexture::blockErrorRGB;
};

struct PerceptualSearch
{
    using Error = float;
    static constexpr auto tryTables = tryAllTablesPerceptual;
    static constexpr auto combined444 = quantiseCombined444Perceptual;
    static constexpr auto combined555 = quantiseCombined555Perceptual;
    static constexpr auto measure = moxtexture::blockErrorPerceptual;
};

template <typename E>
struct SplitFit
{
    EtcBlockWords words;
    E error;
};

using Quantiser = EtcQuantised (*)(const EtcMean&);

inline bool isWithinReach(const EtcColour& levels0, const EtcColour& levels1)
{
    for (size_t c = 0; c < 3; ++c)
        if (levels1[c] - levels0[c] < -4 || levels1[c] - levels0[c] > 3)
            return false;
    return true;
}

template <typename Search>
SplitFit<typename Search::Error> searchSplit(const EtcPixels& pixels, bool bFlip, Quantiser quantise555, Quantiser quantise444)
{
    const EEtcHalf eFirst = bFlip ? moxtexture::eEtcTop : moxtexture::eEtcLeft;
    const EEtcHalf eSecond = bFlip ? moxtexture::eEtcBottom : moxtexture::eEtcRight;
    const EtcMean mean0 = halfMean(pixels, eFirst);
    const EtcMean mean1 = halfMean(pixels, eSecond);
    EtcQuantised base0 = quantise555(mean0);
    EtcQuantised base1 = quantise555(mean1);
    const bool bDifferential = isWithinReach(base0.levels, base1.levels);
    if (!bDifferential)
    {
        base0 = quantise444(mean0);
        base1 = quantise444(mean1);
    }
    const auto fit0 = Search::tryTables(pixels, eFirst, base0.bytes);
    const auto fit1 = Search::tryTables(pixels, eSecond, base1.bytes);
    const auto pack = bDifferential ? moxtexture::packDifferential : moxtexture::packIndividual;
    return {pack(base0.levels, base1.levels, bFlip, fit0.uiTable, fit1.uiTable, fit0.ui32Indices | fit1.ui32Indices),
            fit0.error + fit1.error};
}

template <typename Search>
EtcBlockWords searchSplits(const EtcPixels& pixels, Quantiser quantise555, Quantiser quantise444)
{
    const auto upright = searchSplit<Search>(pixels, false, quantise555, quantise444);
    const auto flipped = searchSplit<Search>(pixels, true, quantise555, quantise444);
    return upright.error > flipped.error ? flipped.words : upright.words;
}

template <typename Search>
double fastBlock(const EtcPixels& pixels, EtcBlockWords& words)
{
    words = searchSplits<Search>(pixels, quantiseNearest555, quantiseNearest444);
    const double fFirst = Search::measure(pixels, moxtexture::decodeEtcPixelsETC1(words));
    const EtcBlockWords second = searchSplits<Search>(pixels, Search::combined555, Search::combined444);
    const double fSecond = Search::measure(pixels, moxtexture::decodeEtcPixelsETC1(second));
    if (fSecond < fFirst)
    {
        words = second;
        return fSecond;
    }
    return fFirst;
}

inline double etcFastBlockETC1(const EtcPixels& pixels, EtcBlockWords& words)
{
    return fastBlock<PlainSearch>(pixels, words);
}

inline double etcFastBlockETC1Perceptual(const EtcPixels& pixels, EtcBlockWords& words)
{
    return fastBlock<PerceptualSearch>(pixels, words);
}

} // namespace etcreference
