#pragma once

#include <string>

#include "Texture/CMOXTexture.h"

namespace fuzzsupport
{

/// Ends the program, which the fuzzer takes for a find.
void require(bool bTrue);

/// Requires what every reader promises, however the load ended: the texture holds what its header measures.
void requireSound(const moxtexture::CMOXTexture& texture);

/// Touches both ends of every surface.
void lookAtSurfaces(const moxtexture::CMOXTexture& texture);

/// Does with a texture from a file what programs do with one: looks at all that the header tells and at every surface, brings it to
/// 8-bit RGBA, encodes it, and saves it in every container, as it is and as other programs want it. The native file must give it back
/// as it is, and so must a KTX or DDS file with layouts put right.
///
/// Large textures are cut down first, and only small ones are encoded and saved.
void useLoaded(const moxtexture::CMOXTexture& texture);

/// Requires that a writer gives true and that its file holds the same data when it is read again. Large textures are left out.
///
/// @param strExtension  tells the reader, see readTexture()
template <typename Write>
void requireSavedAsItIs(const moxtexture::CMOXTexture& texture, const std::string& strExtension, Write write);

/// A texture of the same encoding and kind of shape that is quick to convert. Nothing is lost by it: a short file's data fills no
/// more than the start of a large block, and the rest is zeros.
moxtexture::CMOXTexture cutToSize(const moxtexture::CMOXTexture& texture);

/// True for a texture that is quick to save.
bool isSmall(const moxtexture::CMOXTexture& texture);

/// True for a prepared texture that a DDS file gives back.
bool isKeptByDds(const moxtexture::CMOXTextureHeader& header);

/// A file that is nowhere but in memory, with a path for whoever writes it.
class CMemoryPath
{
public:
    CMemoryPath();
    CMemoryPath(const CMemoryPath&) = delete;
    CMemoryPath& operator=(const CMemoryPath&) = delete;
    ~CMemoryPath();

    const std::string& get() const { return m_strPath; }
    /// What the reader of an extension makes of it.
    /// @return what the reader says
    bool load(const std::string& strExtension, moxtexture::CMOXTexture& texture) const;

private:
    int m_iDescriptor;
    std::string m_strPath;
};

/// @param strExtension  tells the reader, see readTexture()
void requireSameData(const moxtexture::CMOXTexture& texture, const CMemoryPath& path, const std::string& strExtension);

template <typename Write>
void requireSavedAsItIs(const moxtexture::CMOXTexture& texture, const std::string& strExtension, Write write)
{
    if (!isSmall(texture))
        return;
    const CMemoryPath path;
    require(write(texture, path.get()));
    requireSameData(texture, path, strExtension);
}

} // namespace fuzzsupport
