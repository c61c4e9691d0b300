#pragma once

#include <cstdint>
#include <vector>

#include "Catalogue/EncodeCatalogue.h"
#include "Formats/PixelEncoding.h"

namespace moxtexture
{

/// What is asked of a target format, as places in the lists that a user chooses from; 0 asks for nothing.
struct EncodeFilter
{
    uint32_t uiAPI = 0;          ///< 1 and above: offered for k_aApiGroups[uiAPI - 1]
    uint32_t uiBitsPerPixel = 0; ///< 1: compressed; 2 and above: of k_aBitsPerPixel[uiBitsPerPixel - 2]
    uint32_t uiChannelCount = 0; ///< 1 to 4: listed under so many channels
    uint32_t uiTypeGroup = 0;    ///< 1 and above: an ETypeGroup + 1
    uint32_t uiHasAlpha = 0;     ///< 1: with alpha, 2: without
    uint32_t uiColourSpace = 0;  ///< 1 and above: an EMOXTColourSpace + 1
};

/// Channel types that one short name stands for, in the order in which they are offered.
enum ETypeGroup : uint32_t
{
    eTypeGroupUNorm,
    eTypeGroupSNorm,
    eTypeGroupUInt,
    eTypeGroupSInt,
    eTypeGroupUFloat,
    eTypeGroupFloat,
    eTypeGroupOther,
};

[[nodiscard]] ETypeGroup getTypeGroup(EMOXTChannelType eType);

/// True where a record meets every part of a filter. A place past the end of its list is met by no record.
[[nodiscard]] bool passesFilter(const CMOXSearchObject& record, const EncodeFilter& filter);

/// The encodings of the records that pass, in the order of the catalogue.
[[nodiscard]] std::vector<PixelEncoding> filterCatalogue(const EncodeFilter& filter);

/// What a record encodes to.
[[nodiscard]] PixelEncoding getEncoding(const CMOXSearchObject& record);

/// The record that encodes so, or null.
[[nodiscard]] const CMOXSearchObject* findInCatalogue(const PixelEncoding& encoding);

} // namespace moxtexture
