#include "Composition/FaceNames.h"

#include "Formats/FormatNames.h"

namespace moxtexture
{

std::string getFaceName(const CMOXTextureHeader& header, uint32_t uiFace)
{
    return getCubeFaceName(uiFace, header.getCubeMapOrder());
}

} // namespace moxtexture
