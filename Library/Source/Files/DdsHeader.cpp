#include "Files/DdsHeader.h"

#include <algorithm>
#include <iterator>

#include "Core/ByteOrder.h"

namespace moxtexture
{
namespace
{

constexpr uint32_t k_ui32Magic = makeFourCC("DDS ");
constexpr size_t k_uiMasksOffset = 92;

} // namespace

bool DdsHeader::isExtended() const
{
    return (pixelFormat.ui32Flags & eD3DPixelsFourCC) != 0 && pixelFormat.ui32FourCC == k_ui32FourCCExtended;
}

bool DdsHeader::readRecord(const uint8_t (&aui8Record)[k_uiRecordSize])
{
    const auto word = [&](size_t uiOffset) { return loadLE<uint32_t>(aui8Record + uiOffset); };
    if (word(0) != k_ui32Magic || word(4) != eDdsHeaderSize)
        return false;
    ui32Flags = word(8);
    ui32Height = word(12);
    ui32Width = word(16);
    ui32PitchOrLinearSize = word(20);
    ui32Depth = word(24);
    ui32MIPCount = word(28);
    pixelFormat.ui32Flags = word(80);
    pixelFormat.ui32FourCC = word(84);
    pixelFormat.ui32BitCount = word(88);
    for (size_t i = 0; i < pixelFormat.aui32Masks.size(); ++i)
        pixelFormat.aui32Masks[i] = word(k_uiMasksOffset + 4 * i);
    ui32Caps = word(108);
    ui32Caps2 = word(112);
    return true;
}

void DdsHeader::writeRecord(uint8_t (&aui8Record)[k_uiRecordSize]) const
{
    std::fill(std::begin(aui8Record), std::end(aui8Record), uint8_t{0});
    const auto setWord = [&](size_t uiOffset, uint32_t ui32Value) { storeLE(aui8Record + uiOffset, ui32Value); };
    setWord(0, k_ui32Magic);
    setWord(4, eDdsHeaderSize);
    setWord(8, ui32Flags);
    setWord(12, ui32Height);
    setWord(16, ui32Width);
    setWord(20, ui32PitchOrLinearSize);
    setWord(24, ui32Depth);
    setWord(28, ui32MIPCount);
    setWord(76, eDdsPixelFormatSize);
    setWord(80, pixelFormat.ui32Flags);
    setWord(84, pixelFormat.ui32FourCC);
    setWord(88, pixelFormat.ui32BitCount);
    for (size_t i = 0; i < pixelFormat.aui32Masks.size(); ++i)
        setWord(k_uiMasksOffset + 4 * i, pixelFormat.aui32Masks[i]);
    setWord(108, ui32Caps);
    setWord(112, ui32Caps2);
}

void DdsExtendedHeader::readRecord(const uint8_t (&aui8Record)[k_uiRecordSize])
{
    ui32Format = loadLE<uint32_t>(aui8Record);
    ui32Dimension = loadLE<uint32_t>(aui8Record + 4);
    ui32MiscFlags = loadLE<uint32_t>(aui8Record + 8);
    ui32ArraySize = loadLE<uint32_t>(aui8Record + 12);
}

void DdsExtendedHeader::writeRecord(uint8_t (&aui8Record)[k_uiRecordSize]) const
{
    storeLE<uint32_t>(aui8Record, ui32Format);
    storeLE<uint32_t>(aui8Record + 4, ui32Dimension);
    storeLE<uint32_t>(aui8Record + 8, ui32MiscFlags);
    storeLE<uint32_t>(aui8Record + 12, ui32ArraySize);
    storeLE<uint32_t>(aui8Record + 16, 0);
}

} // namespace moxtexture
