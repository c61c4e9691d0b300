#include "CommandLine/ConvertFile.h"

#include "CommandLine/Names.h"
#include "Composition/DdsLayouts.h"
#include "Composition/SavePadding.h"
#include "Composition/SavePreparation.h"
#include "Composition/WorkingForm.h"
#include "Conversion/Transcode.h"
#include "Files/FileExtension.h"
#include "Files/LegacyFile.h"
#include "Files/SaveTexture.h"
#include "Formats/FormatNames.h"
#include "Formats/LegacyTypeTable.h"
#include "Images/LoadTextureFile.h"

namespace moxtexture
{
namespace
{

Outcome edit(const Conversion& conversion, CMOXTexture& texture)
{
    if (conversion.operations.isEmpty())
        return done();
    if (!toWorkingForm(texture))
        return failed("Cannot decode " + getTidyName(texture.getPixelFormat()) + " for editing");
    std::string strFailed;
    if (!conversion.operations.apply(texture, strFailed))
        return failed("Cannot apply " + strFailed + " to this texture");
    return done();
}

Outcome encode(const TargetEncoding& target, CMOXTexture& texture)
{
    if (hasEncoding(texture, target) ||
        Transcode(texture, target.pixelFormat, target.eChannelType, target.eColourSpace, target.uiQuality, target.bDither))
        return done();
    return failed("Cannot encode this texture as " + getTidyName(target.pixelFormat));
}

bool writeFile(const Conversion& conversion, const CMOXTexture& texture, const std::string& strPath)
{
    if (conversion.save.uiLegacyApi)
        return saveLegacy(texture, strPath, *conversion.save.uiLegacyApi);
    return conversion.bAsStored ? saveTexture(texture, strPath) : saveForOthers(texture, strPath);
}

/// Why a writer that gave no reason has failed, and what to do about it.
std::string findReason(const Conversion& conversion, const CMOXTextureHeader& header, const std::string& strOutput)
{
    const std::string strEncoding = getTidyName(header.getPixelFormat()) + " of type " + getChannelTypeName(header.getChannelType(), false);
    if (conversion.save.uiLegacyApi)
    {
        if (header.getDepth() > 1)
            return "A version 2 file cannot hold a texture that is deeper than 1; leave out --legacy";
        const uint32_t uiApi = *conversion.save.uiLegacyApi;
        if (formatToLegacyType(header.getEncoding(), uiApi) < 0)
            return "A version 2 file for API " + std::to_string(uiApi) + " cannot hold " + strEncoding +
                   "; choose another --legacy, --format or --type";
    }
    else if (!hasPlaceForEncoding(header, strOutput))
    {
        return "A ." + getFileExtension(strOutput) + " file cannot hold " + strEncoding + "; choose another --format, --type or output";
    }
    else if (conversion.bAsStored && getFileExtension(strOutput) == "dds" && needsDdsPreparation(header))
    {
        return "A .dds file cannot hold " + strEncoding + " as it stands; leave out --as-stored";
    }
    return "Cannot save this texture as " + strOutput;
}

Outcome save(const Conversion& conversion, CMOXTexture& texture, const std::string& strOutput, COutputsInFlight& outputs)
{
    setSavePadding(texture, conversion.save.uiPadding);
    std::string strReason;
    const auto write = [&](const std::string& strPath) { return writeFile(conversion, texture, strPath); };
    if (outputs.write(strOutput, write, strReason))
        return done();
    return failed(strReason.empty() ? findReason(conversion, texture, strOutput) : strReason);
}

} // namespace

Outcome convertFile(const Conversion& conversion, const std::string& strInput, const std::string& strOutput, COutputsInFlight& outputs)
{
    CMOXTexture texture;
    LoadStatus status;
    loadTextureFile(status, texture, strInput, conversion.bAsStored);
    if (status.bFailed)
        return failed(status.strError);

    if (conversion.eAssumedSpace)
        texture.setColourSpace(*conversion.eAssumedSpace);
    std::string strReason;
    const std::optional<TargetEncoding> target = conversion.target.resolve(texture, strReason);
    if (!target)
        return failed(strReason);

    Outcome outcome = edit(conversion, texture);
    if (outcome.isDone())
        outcome = encode(*target, texture);
    return outcome.isDone() ? save(conversion, texture, strOutput, outputs) : outcome;
}

} // namespace moxtexture
