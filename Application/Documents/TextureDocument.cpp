#include "Documents/TextureDocument.h"

#include <cstring>
#include <new>
#include <utility>

#include "Composition/SavePadding.h"
#include "Composition/SavePreparation.h"
#include "Conversion/Transcode.h"
#include "Core/OutputFile.h"
#include "Documents/SurfaceHeader.h"
#include "Files/LegacyFile.h"
#include "Files/SaveTexture.h"
#include "Images/SaveSurfaceAsImage.h"

using namespace moxtexture;

namespace
{

constexpr uint32_t k_uiDefaultQuality = 2;
/// So that a document that was never on disk shows as changed, also after an undo.
constexpr int32_t k_i32ChangesAtBirth = 2;

/// Copies a texture over another, into the other's own block where that has the size: two of a document's textures are never in
/// memory in three copies.
void copyTexture(CMOXTexture& target, const CMOXTexture& source)
{
    const uint8_t* pSource = source.getDataPtr();
    if (pSource == nullptr || target.getBlockSize() != source.getBlockSize() || target.getDataPtr() == nullptr)
    {
        target = CMOXTexture();
        target = source;
        return;
    }
    CMOXTextureHeader header = source;
    static_cast<CMOXTextureHeader&>(target) = std::move(header);
    std::memcpy(target.getDataPtr(), pSource, source.getBlockSize());
}

/// Runs a step that may ask for memory.
/// @return what it gives; false where memory was refused
template <typename Step>
bool withinMemory(Step step)
{
    try
    {
        return step();
    }
    catch (const std::bad_alloc&)
    {
        return false;
    }
}

bool toRGBA8(CMOXTexture& texture)
{
    return Transcode(texture, k_RGBA8, eCT_UnsignedNormalisedByte, eCS_Linear, k_uiDefaultQuality, false);
}

/// @return a texture of that surface alone, in 8-bit RGBA; without data where that failed
CMOXTexture makePicture(const CMOXTexture& texture, uint32_t uiMIPLevel, uint32_t uiArrayMember, uint32_t uiFace)
{
    const uint8_t* pSurface = texture.getDataPtr(uiMIPLevel, uiArrayMember, uiFace);
    if (pSurface == nullptr)
        return {};
    CMOXTexture picture(makeSurfaceHeader(texture, uiMIPLevel), pSurface);
    return toRGBA8(picture) ? std::move(picture) : CMOXTexture();
}

} // namespace

CTextureDocument::CTextureDocument(CMOXTexture stored, CMOXTexture working, uint32_t ui32Kind)
    : m_Working(std::move(working)), m_Stored(std::move(stored)), m_eSavedColourSpace(m_Stored.getColourSpace()), m_ui32SourceKind(ui32Kind)
{
    if (ui32Kind == eDocumentFile)
        return;
    m_i32ChangeCount = k_i32ChangesAtBirth;
    m_bNeverSaved = true;
}

bool CTextureDocument::beginEdit()
{
    const bool bKept = withinMemory(
        [this]
        {
            copyTexture(m_Undo, m_Working);
            return true;
        });
    if (!bKept)
        m_Undo = CMOXTexture();
    m_ui64UndoState = m_ui64WorkingState;
    m_bCanUndo = bKept;
    m_bCanRedo = false;
    return bKept;
}

bool CTextureDocument::endEdit()
{
    m_ui64WorkingState = ++m_ui64LastState;
    ++m_i32ChangeCount;
    m_bModified = true;
    return rebuildDisplay();
}

bool CTextureDocument::undo()
{
    if (!m_bCanUndo)
        return false;
    if (isEditKept())
    {
        if (m_i32ChangeCount > 0)
            --m_i32ChangeCount;
        if (m_i32ChangeCount == 0)
            m_bModified = false;
    }
    exchange();
    return true;
}

bool CTextureDocument::redo()
{
    if (!m_bCanRedo)
        return false;
    if (isEditKept())
    {
        ++m_i32ChangeCount;
        m_bModified = true;
    }
    exchange();
    return true;
}

void CTextureDocument::exchange()
{
    std::swap(m_Working, m_Undo);
    std::swap(m_ui64WorkingState, m_ui64UndoState);
    std::swap(m_bCanUndo, m_bCanRedo);
    rebuildDisplay();
}

bool CTextureDocument::rebuildDisplay()
{
    const bool bBuilt = withinMemory(
        [this]
        {
            // On purpose: other channel types and colour spaces of this layout are shown as they are.
            if (m_Working.getPixelFormat() == k_RGBA8)
            {
                copyTexture(m_Display, m_Working);
                return true;
            }
            m_Display = CMOXTexture();
            m_Display = m_Working;
            return toRGBA8(m_Display);
        });
    if (!bBuilt)
        m_Display = CMOXTexture();
    return bBuilt;
}

bool CTextureDocument::encodeStored()
{
    return withinMemory(
        [this]
        {
            CMOXTexture encoded = m_Working;
            if (!Transcode(encoded, m_Stored.getPixelFormat(), m_Stored.getChannelType(), m_Stored.getColourSpace(), k_uiDefaultQuality,
                           false))
                return false;
            m_Stored = std::move(encoded);
            m_ui64StoredState = m_ui64WorkingState;
            m_bCanUndo = false;
            m_bCanRedo = false;
            m_Undo = CMOXTexture();
            return true;
        });
}

bool CTextureDocument::write(const std::string& strPath, uint32_t ui32Padding)
{
    return withinMemory(
        [&]
        {
            setSavePadding(m_Stored, ui32Padding);
            setSavePadding(m_Working, ui32Padding);
            return COutputFile(getSavedPath(strPath))
                .writeBy([this](const std::string& strWritePath) { return saveForOthers(m_Stored, strWritePath); });
        });
}

bool CTextureDocument::writeLegacy(const std::string& strPath, uint32_t ui32Api) const
{
    return withinMemory(
        [&] {
            return COutputFile(strPath).writeBy([&](const std::string& strWritePath)
                                                { return saveLegacy(m_Stored, strWritePath, ui32Api); });
        });
}

bool CTextureDocument::writeImage(const std::string& strPath, uint32_t uiMIPLevel, uint32_t uiArrayMember, uint32_t uiFace) const
{
    return withinMemory(
        [&]
        {
            COutputFile file(strPath);
            if (m_Working.getPixelFormat() == k_RGBA8)
                return file.writeBy([&](const std::string& strWritePath)
                                    { return saveSurfaceAsImage(m_Working, strWritePath, uiMIPLevel, uiArrayMember, uiFace); });
            const CMOXTexture picture = makePicture(m_Working, uiMIPLevel, uiArrayMember, uiFace);
            return file.writeBy([&](const std::string& strWritePath) { return saveSurfaceAsImage(picture, strWritePath, 0, 0, 0); });
        });
}

void CTextureDocument::markSaved()
{
    m_bModified = false;
    m_i32ChangeCount = 0;
    m_bNeverSaved = false;
    m_eSavedColourSpace = m_Stored.getColourSpace();
}
