// Tells how much of a picture a family of formats keeps: a table of PSNR by format and quality.
//   measure-encoding moxtc|etc [PICTURE...]
// Generated pictures come first, then those that are named, which are 512 by 512 or larger. The figures are the same on every machine.

#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "Core/Workers.h"
#include "Formats/FormatNames.h"
#include "PictureQuality.h"

using namespace moxtexture;

namespace
{

constexpr uint32_t k_uiSide = 512;     ///< of squares for what is encoded fast
constexpr uint32_t k_uiSlowSide = 128; ///< and at the slow qualities of ETC

constexpr ChannelWeights k_RGB = {1.0, 1.0, 1.0, 0.0}, k_alpha = {0.0, 0.0, 0.0, 1.0};
constexpr ChannelWeights k_luminance = {0.299, 0.587, 0.114, 0.0}; ///< those of the perceptual qualities of ETC

void printName(const Picture& picture, EMOXTPixelFormat eFormat)
{
    std::printf("| %s %u x %u | %s |", picture.strName.c_str(), picture.uiWidth, picture.uiHeight, getFormatName(eFormat).c_str());
}

bool printMOXTCRow(const Picture& picture, EMOXTPixelFormat eFormat)
{
    printName(picture, eFormat);
    for (const uint32_t uiQuality : {0u, 1u})
    {
        const std::vector<uint8_t> decoded = throughFormat(picture, eFormat, uiQuality);
        if (decoded.empty())
            return false;
        std::printf(" %.2f | %.2f |", getPSNR(picture, decoded, k_RGB), getPSNR(picture, decoded, k_alpha));
    }
    std::printf("\n");
    return true;
}

/// The first generation takes powers of two alone, so it gets the middle of a picture; the second gets all of it.
bool printMOXTC(const Picture& picture)
{
    const Picture middle = cutMiddle(picture, k_uiSide);
    return printMOXTCRow(middle, ePF_MOXTC_2bpp_RGBA) && printMOXTCRow(middle, ePF_MOXTC_4bpp_RGBA) &&
           printMOXTCRow(picture, ePF_MOXTCII_2bpp) && printMOXTCRow(picture, ePF_MOXTCII_4bpp);
}

/// How a format of the ETC family is measured.
struct EtcRow
{
    EMOXTPixelFormat eFormat;
    ChannelWeights weights, perceptual;
    uint8_t ui8LeastAlpha; ///< punch-through keeps no colour where it is transparent
    uint32_t uiQualities;
};

constexpr EtcRow k_aEtcRows[] = {
    {ePF_ETC1, k_RGB, k_luminance, 0, 4},
    {ePF_ETC2_RGB, k_RGB, k_luminance, 0, 4},
    {ePF_ETC2_RGBA, k_RGB, k_luminance, 0, 4},
    {ePF_ETC2_RGBA, k_alpha, k_alpha, 0, 4},
    {ePF_ETC2_RGB_A1, k_RGB, k_luminance, 128, 1},
    {ePF_EAC_R11, {1.0, 0.0, 0.0, 0.0}, {1.0, 0.0, 0.0, 0.0}, 0, 1},
    {ePF_EAC_RG11, {1.0, 1.0, 0.0, 0.0}, {1.0, 1.0, 0.0, 0.0}, 0, 1},
};

/// At each quality the plain PSNR and, in brackets, the weighted one. Formats with one quality stand in the first column.
bool printEtcRows(const Picture& picture, uint32_t uiQualities)
{
    for (const EtcRow& row : k_aEtcRows)
    {
        printName(picture, row.eFormat);
        std::printf(" %s |",
                    row.weights == k_alpha ? "A" : (row.eFormat == ePF_EAC_R11 ? "R" : (row.eFormat == ePF_EAC_RG11 ? "RG" : "RGB")));
        for (uint32_t uiQuality = 0; uiQuality < 4; ++uiQuality)
        {
            if (uiQuality >= uiQualities || uiQuality >= row.uiQualities)
            {
                std::printf(" |");
                continue;
            }
            const std::vector<uint8_t> decoded = throughFormat(picture, row.eFormat, uiQuality);
            if (decoded.empty())
                return false;
            std::printf(" %.2f", getPSNR(picture, decoded, row.weights, row.ui8LeastAlpha));
            if (row.perceptual != row.weights)
                std::printf(" (%.2f)", getPSNR(picture, decoded, row.perceptual, row.ui8LeastAlpha));
            std::printf(" |");
        }
        std::printf("\n");
        std::fflush(stdout); // the slow ones take their time
    }
    return true;
}

bool printEtc(const Picture& picture)
{
    return printEtcRows(cutMiddle(picture, k_uiSide), 2) && printEtcRows(cutMiddle(picture, k_uiSlowSide), 4);
}

struct Family
{
    const char* pcName;
    const char* pcHead;
    bool (*print)(const Picture&);
};

constexpr Family k_aFamilies[] = {
    {"moxtc", "| picture | format | RGB at 0 | alpha at 0 | RGB at 1 | alpha at 1 |\n|---|---|---|---|---|---|\n", printMOXTC},
    {"etc",
     "| picture | format | channels | Fast | Fast Perceptual | Slow | Slow Perceptual |\n"
     "|---|---|---|---|---|---|---|\n",
     printEtc},
};

const Family* findFamily(int iCount, char** apArguments)
{
    if (iCount >= 2)
        for (const Family& family : k_aFamilies)
            if (std::strcmp(family.pcName, apArguments[1]) == 0)
                return &family;
    return nullptr;
}

} // namespace

int main(int argc, char** argv)
{
    const Family* pFamily = findFamily(argc, argv);
    if (pFamily == nullptr)
    {
        std::fputs("usage: measure-encoding moxtc|etc [PICTURE...]\n", stderr);
        return 2;
    }
    setProcessorCount(1); // one tile of MOXTC: others leave blocks that no pass is for
    std::fputs(pFamily->pcHead, stdout);
    bool bGood = true;
    for (const uint64_t ui64Seed : {1u, 2u, 3u})
        bGood = pFamily->print(makeGenerated(k_uiSide, ui64Seed)) && bGood;
    for (int i = 2; i < argc; ++i)
    {
        const std::optional<Picture> picture = readPicture(argv[i]);
        if (!picture || picture->uiWidth < k_uiSide || picture->uiHeight < k_uiSide || !pFamily->print(*picture))
        {
            std::fprintf(stderr, "measure-encoding: %s is no picture of %u by %u or more\n", argv[i], k_uiSide, k_uiSide);
            bGood = false;
        }
    }
    return bGood ? 0 : 1;
}
