#pragma once

#include <string>

#include <QtCore/QString>

#include "Texture/CMOXTextureHeader.h"

/// One open texture as the tree of surfaces knows it: names, and the shape without the metadata.
struct SurfacesTreeEntry
{
    QString strName;     ///< what is shown
    QString strFullName; ///< the document's own name
    moxtexture::CMOXTextureHeader shape;
    std::string strCubeMapOrder;

    SurfacesTreeEntry(const QString& strShownName, const QString& strDocumentName, const moxtexture::CMOXTextureHeader& header);

    /// True for a texture that has more than one surface, and so items below its own.
    [[nodiscard]] bool hasSurfaces() const;
    /// True where the levels have items below their own.
    [[nodiscard]] bool hasMembers() const;
    /// True where the items below the texture's own are the same, texts included.
    [[nodiscard]] bool hasSurfacesOf(const SurfacesTreeEntry& other) const;

    friend bool operator==(const SurfacesTreeEntry& a, const SurfacesTreeEntry& b);
    friend bool operator!=(const SurfacesTreeEntry& a, const SurfacesTreeEntry& b) { return !(a == b); }
};
