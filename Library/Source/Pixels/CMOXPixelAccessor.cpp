#include "Pixels/CMOXPixelAccessor.h"

#include <algorithm>
#include <cstring>

#include "Core/ByteOrder.h"
#include "Pixels/ColourSpaceMapping.h"
#include "Pixels/Greys.h"

namespace moxtexture
{
namespace
{

/// True where a channel of that many bits is a storage element of its type and not a field.
bool isWholeElement(EMOXTChannelType eType, unsigned int uiBits)
{
    if (eType == eCT_SignedFloatingPoint || eType == eCT_UnsignedFloatingPoint)
        return uiBits == 16 || uiBits == 32;
    return uiBits != 0 && uiBits == getStorageBits(eType);
}

} // namespace

CMOXPixelAccessor::CMOXPixelAccessor(MOXPixelWord pixelFormat, EMOXTChannelType eChannelType) : m_eChannelType(eChannelType)
{
    const auto noteFault = [this](ELayoutFault eFault, bool bIsSo)
    {
        if (bIsSo)
            m_ui32Flags |= eFault;
    };

    m_ai8Position.fill(-1);
    bool bGap = false;
    for (unsigned int i = 0; i < k_uiPositions; ++i)
    {
        ChannelPlace& place = m_aPlaces[i];
        place.eName = getChannelName(pixelFormat.getChannelLetter(i));
        place.uiBits = pixelFormat.getChannelBits(i);
        m_uiTotalBits += place.uiBits;

        if (place.eName == eChannelNone)
        {
            bGap = true;
            noteFault(eFaultBitsWithoutName, place.uiBits != 0);
            continue;
        }
        ++m_uiChannelCount;
        noteFault(eFaultNameWithoutBits, place.uiBits == 0);
        noteFault(eFaultNameAfterGap, bGap);
        noteFault(eFaultNameTwice, hasChannel(place.eName));
        if (!hasChannel(place.eName))
            m_ai8Position[place.eName] = static_cast<int8_t>(i);
    }
    noteFault(eFaultPartOfAByte, m_uiTotalBits % 8 != 0);
    noteFault(eFaultTooWide, m_uiTotalBits > 8 * k_uiRawBytes);

    unsigned int uiBitsLeft = m_uiTotalBits;
    for (unsigned int i = 0; i < k_uiPositions; ++i)
    {
        ChannelPlace& place = m_aPlaces[i];
        uiBitsLeft -= place.uiBits;
        place.uiShift = uiBitsLeft;
        place.bWhole = isWholeElement(eChannelType, place.uiBits);

        bool bReached;
        if (place.bWhole)
        {
            place.ui64Access = i;
            place.uiOffset = i * place.uiBits / 8;
            bReached = place.uiOffset + place.uiBits / 8 <= std::min(getBytes(), k_uiRawBytes);
        }
        else
        {
            bReached = place.uiShift < 64;
            place.ui64Access = bReached ? getLowMask(place.uiBits) << place.uiShift : 0;
        }
        if (bReached && place.eName != eChannelNone)
        {
            place.eReadRule = getReadRule(eChannelType, place.uiBits, place.bWhole);
            place.eWriteRule = getWriteRule(eChannelType, place.uiBits, place.bWhole);
        }
    }
}

unsigned int CMOXPixelAccessor::getColourCount() const
{
    return (hasChannel(eChannelRed) ? 1u : 0u) + (hasChannel(eChannelGreen) ? 1u : 0u) + (hasChannel(eChannelBlue) ? 1u : 0u);
}

float CMOXPixelAccessor::readPlace(const ChannelPlace& place) const
{
    if (place.eReadRule == EValueRule::eNothing)
        return 0.0f;
    uint64_t ui64Code = 0;
    if (place.bWhole)
        std::memcpy(&ui64Code, m_aui8Raw.data() + place.uiOffset, place.uiBits / 8);
    else
        ui64Code = (loadLE<uint64_t>(m_aui8Raw.data()) & place.ui64Access) >> place.uiShift;
    return readValueByRule(place.eReadRule, ui64Code, place.uiBits);
}

void CMOXPixelAccessor::writePlace(const ChannelPlace& place, float fValue)
{
    if (place.eWriteRule == EValueRule::eNothing)
        return;
    const uint64_t ui64Code = writeValueByRule(place.eWriteRule, fValue, place.uiBits);
    if (place.bWhole)
    {
        std::memcpy(m_aui8Raw.data() + place.uiOffset, &ui64Code, place.uiBits / 8);
        return;
    }
    // On purpose: the code is not cut to its field, only to the pixel.
    const uint64_t ui64Word = (loadLE<uint64_t>(m_aui8Raw.data()) & ~place.ui64Access) | ui64Code << place.uiShift;
    storeLE(m_aui8Raw.data(), ui64Word & getLowMask(8 * getBytes()));
}

float CMOXPixelAccessor::readChannel(EChannelName eName) const
{
    const int iPosition = getPosition(eName);
    if (iPosition < 0)
        return eName == eChannelAlpha || eName == eChannelUnspecified ? 1.0f : 0.0f;
    return readPlace(m_aPlaces[static_cast<unsigned int>(iPosition)]);
}

void CMOXPixelAccessor::writeChannel(EChannelName eName, float fValue)
{
    const int iPosition = getPosition(eName);
    if (iPosition >= 0)
        writePlace(m_aPlaces[static_cast<unsigned int>(iPosition)], fValue);
}

void CMOXPixelAccessor::setPixel(const uint8_t* pBytes)
{
    std::copy_n(pBytes, std::min(getBytes(), k_uiRawBytes), m_aui8Raw.begin());
}

bool CMOXPixelAccessor::convertFrom(const CMOXPixelAccessor& source)
{
    if (m_ui32Flags != 0 || source.m_ui32Flags != 0)
        return false;

    m_aui8Raw.fill(0);
    float fLuminance = 0.0f;
    float fIntensity = 0.0f;
    float fFill = 0.0f; // for the colours that the source has not

    const bool bLuminance = hasChannel(eChannelLuminance);
    const bool bIntensity = hasChannel(eChannelIntensity);
    const bool bSourceLuminance = source.hasChannel(eChannelLuminance);
    const bool bSourceIntensity = source.hasChannel(eChannelIntensity);
    if (bLuminance && bSourceLuminance)
        fLuminance = fFill = source.readChannel(eChannelLuminance);
    else if (!bIntensity && bSourceIntensity)
        fLuminance = fFill = source.readChannel(eChannelIntensity);
    else if (bSourceIntensity)
        fIntensity = fFill = source.readChannel(eChannelIntensity);
    else if (bSourceLuminance)
        fIntensity = fFill = source.readChannel(eChannelLuminance);
    else if (bLuminance)
        fLuminance = getLuminanceOf(source.readChannel(eChannelRed), source.readChannel(eChannelGreen), source.readChannel(eChannelBlue));
    else if (bIntensity)
        fIntensity = getMeanOf(source.readChannel(eChannelRed), source.readChannel(eChannelGreen), source.readChannel(eChannelBlue),
                               static_cast<float>(source.getColourCount()));

    for (const ChannelPlace& place : m_aPlaces)
    {
        float fValue = 0.0f;
        switch (place.eName)
        {
        case eChannelNone:
            continue;
        case eChannelRed:
        case eChannelGreen:
        case eChannelBlue:
            fValue = source.hasChannel(place.eName) ? source.readChannel(place.eName) : fFill;
            break;
        case eChannelAlpha:
            fValue = source.readChannel(source.hasChannel(eChannelAlpha) ? eChannelAlpha : eChannelUnspecified);
            break;
        case eChannelUnspecified:
            fValue = source.readChannel(source.hasChannel(eChannelUnspecified) ? eChannelUnspecified : eChannelAlpha);
            break;
        case eChannelLuminance:
            fValue = fLuminance;
            break;
        case eChannelIntensity:
            fValue = fIntensity;
            break;
        }
        writePlace(place, fValue);
    }
    return true;
}

void CMOXPixelAccessor::applyColourSpace(EMOXTColourSpace eNewSpace, EMOXTColourSpace eOldSpace)
{
    const EColourMapping eMapping = getColourMapping(eNewSpace, eOldSpace);
    if (eMapping == EColourMapping::eNone || m_ui32Flags != 0)
        return;
    for (const EChannelName eName : {eChannelRed, eChannelGreen, eChannelBlue, eChannelLuminance, eChannelIntensity})
        if (hasChannel(eName))
            writeChannel(eName, mapColour(eMapping, readChannel(eName)));
}

} // namespace moxtexture
