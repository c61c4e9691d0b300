#pragma once

#include "Formats/ChannelTypes.h"
#include "Texture/CMOXTexture.h"

namespace moxtexture
{

/// Copies channels of every surface of a texture into channels of another, or of the same one, which then changes places between
/// them: all channels of a pixel are read before any is written. The two may be of different kinds; ChannelCopies.h tells how
/// values are converted.
///
/// @param uiNumChannelCopies          pairs in the two arrays, which may be null for 0
/// @param eChannels, eChannelsSource  where each copy goes and what it takes. Luminance and intensity go to red, green and blue, the
///                                    unspecified channel stands for alpha; pairs with any other value are skipped, and of two
///                                    copies into one channel the later stays
/// @return false for a texture outside the working form (ChannelKind.h) and for two that differ in a size or in the number of
///         levels, members or faces, with nothing changed; also at the first surface that one of them lacks
[[nodiscard]] bool CopyChannels(CMOXTexture& destination, const CMOXTexture& source, uint32_t uiNumChannelCopies,
                                const EChannelName* eChannels, const EChannelName* eChannelsSource);

} // namespace moxtexture
