#include "Catalogue/QualityNames.h"

#include <cstddef>

namespace moxtexture
{
namespace
{

constexpr std::string_view k_aMOXTC[] = {"Fastest (Development Quality)", "Fast (Lower Quality)", "Normal (Good Quality)",
                                         "High (Better Quality)", "Very High (Best Quality)"};
constexpr std::string_view k_aETC[] = {"Fast", "Fast Perceptual", "Slow", "Slow Perceptual"};
constexpr std::string_view k_aASTC[] = {"Very Fast", "Fast", "Medium", "Thorough", "Exhaustive"};

template <size_t uiCount>
constexpr QualityNames list(const std::string_view (&aTexts)[uiCount], uint32_t uiDefaultIndex)
{
    return {aTexts, static_cast<uint32_t>(uiCount), uiDefaultIndex};
}

struct FamilyRow
{
    EMOXTPixelFormat eFirst, eLast; ///< a run of numbers; a family may have several
    EQualityFamily eFamily;
};

constexpr FamilyRow k_aFamilies[] = {
    {ePF_MOXTC_2bpp_RGB, ePF_MOXTCII_4bpp, eQualityMOXTC},
    {ePF_ETC1, ePF_ETC1, eQualityETC},
    {ePF_ETC2_RGB, ePF_ETC2_RGBA, eQualityETC},
    {ePF_ASTC_4x4, ePF_ASTC_6x6x6, eQualityASTC},
};

} // namespace

EQualityFamily getQualityFamily(MOXPixelWord pixelFormat)
{
    if (pixelFormat.isCompressed())
        for (const FamilyRow& row : k_aFamilies)
            if (pixelFormat.getFormat() >= row.eFirst && pixelFormat.getFormat() <= row.eLast)
                return row.eFamily;
    return eQualityNone;
}

QualityNames getQualityNames(EQualityFamily eFamily)
{
    switch (eFamily)
    {
    case eQualityMOXTC:
        return list(k_aMOXTC, 2);
    case eQualityETC:
        return list(k_aETC, 0);
    case eQualityASTC:
        return list(k_aASTC, 2);
    case eQualityNone:
        break;
    }
    return {};
}

QualityNames getQualityNames(MOXPixelWord pixelFormat)
{
    return getQualityNames(getQualityFamily(pixelFormat));
}

} // namespace moxtexture
