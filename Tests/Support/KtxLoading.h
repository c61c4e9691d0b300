#pragma once

#include <cstdint>
#include <cstdio>
#include <vector>

#include "Files/KtxReader.h"
#include "Files/KtxWriter.h"
#include "Files/LoadTexture.h"
#include "Support/FileLoading.h"
#include "Support/KtxFileBuilder.h"
#include "Support/TemporaryFolder.h"

namespace testsupport
{

using KtxLoad = FileLoad;

/// What the KTX reader makes of some bytes.
inline KtxLoad loadKtx(const std::vector<uint8_t>& bytes)
{
    return loadFile(bytes, [](std::FILE* pFile, moxtexture::CMOXTexture& texture)
                    { return moxtexture::readThroughStream(pFile, moxtexture::readKtx, texture); });
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
