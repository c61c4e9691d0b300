#include "MainWindow/OpenedTexture.h"

#include <QtCore/QFileInfo>

#include "Composition/CanonicalForm.h"
#include "Formats/PixelFormats.h"
#include "Images/LoadTextureFile.h"
#include "MainWindow/MemoryGuard.h"
#include "Operations/Flip.h"

using namespace moxtexture;

namespace
{

constexpr int k_iMaxLinks = 256;

bool isFloat(const CMOXTextureHeader& header)
{
    return header.getChannelType() == eCT_SignedFloatingPoint || header.getChannelType() == eCT_UnsignedFloatingPoint;
}

/// On purpose: by the text of the path alone, in lower case, whatever the file holds.
bool isNamedASTC(const std::string& strPath)
{
    const size_t uiPoint = strPath.rfind('.');
    return uiPoint != std::string::npos && strPath.compare(uiPoint + 1, std::string::npos, "astc") == 0;
}

bool makeDisplayForm(CMOXTexture& display, const std::string& strPath, EDisplayRoute eRoute)
{
    if (eRoute == EDisplayRoute::ePlain)
        return toRGBA8Canonical(display);
    if (!(isFloat(display) ? toRGBAFloatCanonical(display) : toRGBA8Canonical(display)))
        return false;
    return !isNamedASTC(strPath) || Flip(display, eAxisY);
}

void open(OpenedTexture& opened, const std::string& strPath, EDisplayRoute eRoute)
{
    LoadStatus status;
    loadTextureFile(status, opened.stored, strPath);
    if (status.bFailed)
    {
        opened.strError = status.strError;
        return;
    }
    const MOXPixelWord format = opened.stored.getPixelFormat();
    opened.bIsASTC = format.isCompressed() && isASTC(format.getFormat());
    opened.display = opened.stored;
    opened.eEnd = makeDisplayForm(opened.display, strPath, eRoute) ? EOpenEnd::eDone : EOpenEnd::eNotConverted;
}

} // namespace

OpenedTexture openTexture(const std::string& strPath, EDisplayRoute eRoute)
{
    OpenedTexture opened;
    if (!runWithinMemory([&] { open(opened, strPath, eRoute); }))
        opened.eEnd = EOpenEnd::eNoMemory;
    return opened;
}

std::string resolveLinks(const std::string& strPath)
{
    QString strTarget = QString::fromStdString(strPath);
    for (int i = 0; i < k_iMaxLinks; ++i)
    {
        const QFileInfo info(strTarget);
        if (!info.isSymLink())
            break;
        strTarget = info.symLinkTarget();
    }
    return strTarget.toStdString();
}
