#include "CommandLine/ConvertFile.h"

#include "CommandLine/Names.h"
#include "Composition/SavePadding.h"
#include "Composition/WorkingForm.h"
#include "Conversion/Transcode.h"
#include "Files/SaveTexture.h"
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

} // namespace

Outcome convertFile(const Conversion& conversion, const std::string& strInput, const std::string& strOutput, COutputsInFlight& outputs)
{
    CMOXTexture texture;
    LoadStatus status;
    loadTextureFile(status, texture, strInput);
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
    if (!outcome.isDone())
        return outcome;

    setSavePadding(texture, conversion.uiPadding);
    if (!outputs.write(
            strOutput, [&](const std::string& strPath) { return saveTexture(texture, strPath); }, strReason))
        return failed(strReason.empty() ? "Cannot save this texture as " + strOutput : strReason);
    return done();
}

} // namespace moxtexture
