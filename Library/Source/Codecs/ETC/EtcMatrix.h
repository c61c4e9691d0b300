#pragma once

#include <array>
#include <cstddef>

namespace moxtexture
{

/// A small matrix of doubles, row after row, kept on the stack.
struct EtcMatrix
{
    static constexpr size_t k_uiMostValues = 9;

    size_t uiRows = 0; ///< uiRows * uiColumns is k_uiMostValues at most
    size_t uiColumns = 0;
    std::array<double, k_uiMostValues> afValues{};

    double at(size_t uiRow, size_t uiColumn) const { return afValues[uiRow * uiColumns + uiColumn]; }
};

/// product = left times right; every sum runs over ascending numbers.
/// @return false, after a remark to the diagnostics, if the columns of the left one are not as many as the rows of the right one;
///         product stays as it was. False too if the product has more values than a matrix holds.
[[nodiscard]] bool multiplyMatrices(const EtcMatrix& left, const EtcMatrix& right, EtcMatrix& product);

} // namespace moxtexture
