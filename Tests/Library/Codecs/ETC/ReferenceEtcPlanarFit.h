#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcPixels.h"

/// The planar fit as two products of whole matrices.
namespace etcreference
{

using Matrix = std::vector<std::vector<double>>;

inline Matrix multiply(const Matrix& left, const Matrix& right)
{
    Matrix product(left.size(), std::vector<double>(right[0].size(), 0.0));
    for (size_t y = 0; y < left.size(); ++y)
        for (size_t x = 0; x < right[0].size(); ++x)
            for (size_t k = 0; k < right.size(); ++k)
                product[y][x] = product[y][x] + left[y][k] * right[k][x];
    return product;
}

/// Origin, horizontal and vertical level of one channel.
inline std::array<uint32_t, 3> planarFitOfChannel(const std::array<uint8_t, 16>& values, double fBytesOfLevel)
{
    Matrix transposed(3, std::vector<double>(16));
    Matrix column(16, std::vector<double>(1));
    for (size_t y = 0; y < 4; ++y)
        for (size_t x = 0; x < 4; ++x)
        {
            transposed[0][y * 4 + x] = 1.0 - static_cast<double>(x) / 4.0 - static_cast<double>(y) / 4.0;
            transposed[1][y * 4 + x] = static_cast<double>(x) / 4.0;
            transposed[2][y * 4 + x] = static_cast<double>(y) / 4.0;
            column[y * 4 + x][0] = static_cast<double>(values[y * 4 + x]);
        }
    const Matrix inverse = {{0.2875, -0.0125, -0.0125}, {-0.0125, 0.4875, -0.3125}, {-0.0125, -0.3125, 0.4875}};
    const Matrix solution = multiply(inverse, multiply(transposed, column));
    std::array<uint32_t, 3> levels{};
    for (size_t i = 0; i < 3; ++i)
    {
        double f = solution[i][0];
        if (f < 0.0)
            f = 0.0;
        if (f > 255.0)
            f = 255.0;
        levels[i] = static_cast<uint32_t>(f / fBytesOfLevel + 0.5);
    }
    return levels;
}

/// 57 bits one after the other from the most significant bit of the high word on.
inline moxtexture::EtcBlockWords packPlanarLevels(const std::array<uint32_t, 3>& red, const std::array<uint32_t, 3>& green,
                                                  const std::array<uint32_t, 3>& blue)
{
    uint64_t ui64Bits = 0;
    for (size_t i = 0; i < 3; ++i)
    {
        ui64Bits = ui64Bits << 6 | red[i];
        ui64Bits = ui64Bits << 7 | green[i];
        ui64Bits = ui64Bits << 6 | blue[i];
    }
    ui64Bits <<= 7;
    return {static_cast<uint32_t>(ui64Bits >> 32), static_cast<uint32_t>(ui64Bits)};
}

inline moxtexture::EtcBlockWords planarFit(const moxtexture::EtcPixels& pixels)
{
    return packPlanarLevels(planarFitOfChannel(pixels.aui8Red, 4.0476190476190474),
                            planarFitOfChannel(pixels.aui8Green, 2.0078740157480315),
                            planarFitOfChannel(pixels.aui8Blue, 4.0476190476190474));
}

} // namespace etcreference
