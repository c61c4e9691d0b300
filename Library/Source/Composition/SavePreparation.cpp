#include "Composition/SavePreparation.h"

#include <new>

#include "Composition/DdsLayouts.h"
#include "Composition/KtxLayouts.h"
#include "Files/FileExtension.h"
#include "Files/SaveTexture.h"

namespace moxtexture
{
namespace
{

enum class EPreparation : uint8_t
{
    eNone,
    eDds,
    eKtx,
};

EPreparation getPreparation(const CMOXTextureHeader& header, const std::string& strExtension)
{
    if (strExtension == "dds" && needsDdsPreparation(header))
        return EPreparation::eDds;
    if (strExtension == "ktx" && findKtxEncoding(header.getEncoding()) != header.getEncoding())
        return EPreparation::eKtx;
    return EPreparation::eNone;
}

} // namespace

bool hasPlaceForEncoding(const CMOXTextureHeader& header, const std::string& strPath)
{
    const std::string strExtension = getFileExtension(strPath);
    if (strExtension == "dds")
        return hasDdsFormat(header);
    return strExtension != "ktx" || findKtxEncoding(header.getEncoding()).has_value();
}

bool saveForOthers(const CMOXTexture& texture, const std::string& strPath)
try
{
    if (!hasPlaceForEncoding(texture, strPath))
        return false;
    const EPreparation ePreparation = getPreparation(texture, getFileExtension(strPath));
    if (ePreparation == EPreparation::eNone)
        return saveTexture(texture, strPath);

    CMOXTexture prepared = texture;
    const bool bPrepared = ePreparation == EPreparation::eDds ? prepareForDds(prepared) : prepareForKtx(prepared);
    return bPrepared && saveTexture(prepared, strPath);
}
catch (const std::bad_alloc&)
{
    return false;
}

} // namespace moxtexture
