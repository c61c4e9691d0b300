#pragma once

#include <cstdint>

#include "Texture/CMOXTexture.h"

class QWidget;

/// Where the questions go, and what the textures shall be like.
struct ConformContext
{
    QWidget* pParent = nullptr;
    const moxtexture::CMOXTextureHeader* pReference = nullptr;
};

/// Makes textures like a reference: sizes first, then MIP levels, then faces and array members. Each step that some texture needs
/// is asked for once, by a message box, before it is done.
///
/// @param pTextures  uiCount textures in a working form, changed in place; null or a count of 0 is a success
/// @param bSilent    no questions and no messages: everything is agreed to
/// @return false without a reference, where the user did not agree, or where a step failed; what was done until then stays
[[nodiscard]] bool conformTextures(const ConformContext& context, moxtexture::CMOXTexture* pTextures, uint32_t uiCount, bool bSilent,
                                   bool bMatchSize, bool bMatchMIPs, bool bMatchFaces, bool bMatchArrays);
