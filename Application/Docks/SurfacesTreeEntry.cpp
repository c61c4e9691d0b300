#include "Docks/SurfacesTreeEntry.h"

#include <tuple>

namespace
{

auto getShape(const moxtexture::CMOXTextureHeader& header)
{
    return std::make_tuple(header.getWidth(), header.getHeight(), header.getNumMIPLevels(), header.getNumArrayMembers(),
                           header.getNumFaces());
}

} // namespace

SurfacesTreeEntry::SurfacesTreeEntry(const QString& strShownName, const QString& strDocumentName,
                                     const moxtexture::CMOXTextureHeader& header)
    : strName(strShownName),
      strFullName(strDocumentName),
      shape(header.getPixelFormat(), header.getHeight(), header.getWidth(), header.getDepth(), header.getNumMIPLevels(),
            header.getNumArrayMembers(), header.getNumFaces(), header.getColourSpace(), header.getChannelType(), false),
      strCubeMapOrder(header.getCubeMapOrder())
{
}

bool SurfacesTreeEntry::hasSurfaces() const
{
    return shape.getNumMIPLevels() > 1 || hasMembers();
}

bool SurfacesTreeEntry::hasMembers() const
{
    return shape.getNumArrayMembers() > 1 || shape.getNumFaces() > 1;
}

bool SurfacesTreeEntry::hasSurfacesOf(const SurfacesTreeEntry& other) const
{
    return getShape(shape) == getShape(other.shape) && strCubeMapOrder == other.strCubeMapOrder;
}

bool operator==(const SurfacesTreeEntry& a, const SurfacesTreeEntry& b)
{
    return a.strName == b.strName && a.strFullName == b.strFullName && a.hasSurfacesOf(b);
}
