#pragma once

#include "Codecs/MOXTC/CompressorImages.h"

namespace moxtexture
{

/// Makes upscaledA from colourA and upscaledB from colourB: ramps between the centres of blocks, wrapping at the picture's edges.
///
/// It is what a decoder interpolates, but for the bits that the colours still have and for hard blocks, which ramp here as well.
/// The fast form gives the same pixels as the reference.
void upscaleColoursReference(CompressorImages& images);
void upscaleColours(CompressorImages& images);

} // namespace moxtexture
