#pragma once

#include <cstdint>
#include <vector>

#include "Files/KtxReader.h"
#include "Files/KtxWriter.h"
#include "Files/LoadTexture.h"
#include "Support/KtxFileBuilder.h"
#include "Support/MemoryFile.h"
#include "Support/TemporaryFolder.h"

namespace testsupport
{

struct KtxLoad
{
    bool bGood = false;
    moxtexture::CMOXTexture texture;
};

/// What the KTX reader makes of some bytes.
inline KtxLoad loadKtx(const std::vector<uint8_t>& bytes)
{
    const CMemoryFile file(bytes);
    KtxLoad result;
    result.bGood = moxtexture::readThroughStream(file.get(), moxtexture::readKtx, result.texture);
    return result;
}

inline KtxLoad loadKtx(const CKtxFileBuilder& builder)
{
    return loadKtx(builder.bytes());
}

/// The file of a texture; empty if the writer gives false.
inline std::vector<uint8_t> saveKtx(const moxtexture::CMOXTexture& texture)
{
    const CTemporaryFolder folder;
    const std::string strPath = folder.path("a.ktx");
    return moxtexture::writeKtx(texture, strPath) ? readBytes(strPath) : std::vector<uint8_t>();
}

} // namespace testsupport
