#pragma once

#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

namespace packedtest
{

using Bytes = std::vector<uint8_t>;

/// What an encoder or decoder writes of a surface into room that holds 7 in every byte; its count has to be that of the bits.
///
/// @param format  the format's number, for entries that take one
template <typename Entry, typename... Format>
Bytes convert(Entry entry, const Bytes& source, size_t uiRoom, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiBitsPerPixel,
              Format... format)
{
    Bytes target(uiRoom, 7);
    EXPECT_EQ(uiWidth * uiHeight * uiBitsPerPixel / 8, entry(source.data(), target.data(), uiWidth, uiHeight, format...));
    return target;
}

} // namespace packedtest
