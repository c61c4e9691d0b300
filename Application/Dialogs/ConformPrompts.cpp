#include "Dialogs/ConformPrompts.h"

#include <QtWidgets/QMessageBox>

#include "Composition/ConformTextures.h"

namespace
{

struct ConformTexts
{
    const char* strQuestionTitle;
    const char* strQuestion;
    QMessageBox::StandardButton eRefusal;
    const char* strErrorTitle; ///< null for a step that fails without a message
    const char* strError;
};

constexpr ConformTexts k_SizeTexts = {
    "Size Mis-match",
    "One or more textures have different dimensions.\n\nTo proceed, these will be resized with a linear filter.\n",
    QMessageBox::Cancel,
    "Resize Error",
    "Unable to resize the given texture.\n\nIf this problem persists, please contact Bluedesk for further support.",
};

constexpr ConformTexts k_MIPTexts = {
    "MIP-Map Mis-match",
    "One or more textures have a different number of MIP Maps.\n\nThese will be regenerated with a linear filter.\n",
    QMessageBox::Abort,
    "MIP Mapping Error",
    "Unable to produce MIP Maps for the given texture.\nIf this problem persists, please contact Bluedesk for further support.",
};

constexpr ConformTexts k_SurfaceTexts = {
    "Array/Face Mis-match",
    "One or more textures have a different number of surfaces.\n\nThese will be copied in succession until the numbers match.\n",
    QMessageBox::Cancel,
    nullptr,
    nullptr,
};

bool isAgreedTo(QWidget* pParent, const ConformTexts& texts)
{
    return QMessageBox::warning(pParent, texts.strQuestionTitle, texts.strQuestion, QMessageBox::Ok | texts.eRefusal, QMessageBox::Ok) ==
           QMessageBox::Ok;
}

/// Asks, works, and tells of a failure; nothing of this is shown where bSilent is set.
template <typename Step>
bool runStep(QWidget* pParent, bool bSilent, const ConformTexts& texts, Step step)
{
    if (!bSilent && !isAgreedTo(pParent, texts))
        return false;
    if (step())
        return true;
    if (!bSilent && texts.strErrorTitle != nullptr)
        QMessageBox::critical(pParent, texts.strErrorTitle, texts.strError);
    return false;
}

} // namespace

bool conformTextures(const ConformContext& context, moxtexture::CMOXTexture* pTextures, uint32_t uiCount, bool bSilent, bool bMatchSize,
                     bool bMatchMIPs, bool bMatchFaces, bool bMatchArrays)
{
    if (context.pReference == nullptr)
        return false;
    if (pTextures == nullptr || uiCount == 0)
        return true;

    const moxtexture::CMOXTextureHeader& reference = *context.pReference;
    const moxtexture::ConformDifferences differences = moxtexture::findDifferences(reference, pTextures, uiCount);
    const auto run = [&](const ConformTexts& texts, auto step) { return runStep(context.pParent, bSilent, texts, step); };

    if (bMatchSize && differences.anySizes() &&
        !run(k_SizeTexts, [&] { return moxtexture::conformSizes(reference, pTextures, uiCount, differences); }))
        return false;
    if (bMatchMIPs && differences.anyMIPs() &&
        !run(k_MIPTexts, [&] { return moxtexture::conformMIPMaps(reference, pTextures, uiCount, differences); }))
        return false;
    return !(bMatchFaces || bMatchArrays) || !differences.anySurfaces() ||
           run(k_SurfaceTexts,
               [&] { return moxtexture::conformSurfaces(reference, pTextures, uiCount, differences, bMatchFaces, bMatchArrays); });
}
