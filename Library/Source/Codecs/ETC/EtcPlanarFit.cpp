#include "Codecs/ETC/EtcPlanarFit.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "Codecs/ETC/EtcMatrix.h"

namespace moxtexture
{

namespace
{

/// The inverse of the normal matrix of the sixteen pixels' coefficients (1 - x/4 - y/4, x/4, y/4).
constexpr EtcMatrix k_inverseNormalMatrix = {3, 3, {0.2875, -0.0125, -0.0125, -0.0125, 0.4875, -0.3125, -0.0125, -0.3125, 0.4875}};

constexpr double k_fBytesOfLevel6 = 4.0476190476190474; ///< 255 / 63
constexpr double k_fBytesOfLevel7 = 2.0078740157480315; ///< 255 / 127

/// The sums over the pixels of coefficient times value, three rows of one channel each column. They are exact in doubles in any
/// order, as all terms are quarters of whole numbers.
void sumChannel(const std::array<uint8_t, 16>& aui8Values, size_t uiChannel, EtcMatrix& sums)
{
    int32_t iSum = 0;
    int32_t iAcross = 0;
    int32_t iDown = 0;
    for (int32_t y = 0; y < 4; ++y)
    {
        const uint8_t* const pui8Row = aui8Values.data() + y * 4;
        const int32_t iRow = pui8Row[0] + pui8Row[1] + pui8Row[2] + pui8Row[3];
        iSum += iRow;
        iAcross += pui8Row[1] + 2 * pui8Row[2] + 3 * pui8Row[3];
        iDown += y * iRow;
    }
    sums.afValues[uiChannel] = (4 * iSum - iAcross - iDown) * 0.25;
    sums.afValues[3 + uiChannel] = iAcross * 0.25;
    sums.afValues[6 + uiChannel] = iDown * 0.25;
}

uint8_t quantise(double fValue, double fBytesOfLevel)
{
    const double fHalfUp = std::clamp(fValue, 0.0, 255.0) / fBytesOfLevel + 0.5;
    return static_cast<uint8_t>(fHalfUp);
}

} // namespace

EtcBlockWords packPlanar(const EtcPlanarLevels& levels)
{
    const auto& [origin, horizontal, vertical] = levels;
    return {uint32_t{origin[0]} << 26 | uint32_t{origin[1]} << 19 | uint32_t{origin[2]} << 13 | uint32_t{horizontal[0]} << 7 |
                uint32_t{horizontal[1]},
            uint32_t{horizontal[2]} << 26 | uint32_t{vertical[0]} << 20 | uint32_t{vertical[1]} << 13 | uint32_t{vertical[2]} << 7};
}

EtcBlockWords planarFit(const EtcPixels& pixels)
{
    EtcMatrix sums;
    sums.uiRows = 3;
    sums.uiColumns = 3;
    sumChannel(pixels.aui8Red, 0, sums);
    sumChannel(pixels.aui8Green, 1, sums);
    sumChannel(pixels.aui8Blue, 2, sums);
    EtcMatrix corners;
    if (!multiplyMatrices(k_inverseNormalMatrix, sums, corners))
        return {};
    std::array<EtcColour, 3> aLevels;
    for (size_t i = 0; i < 3; ++i)
        aLevels[i] = {quantise(corners.at(i, 0), k_fBytesOfLevel6), quantise(corners.at(i, 1), k_fBytesOfLevel7),
                      quantise(corners.at(i, 2), k_fBytesOfLevel6)};
    return packPlanar({aLevels[0], aLevels[1], aLevels[2]});
}

} // namespace moxtexture
