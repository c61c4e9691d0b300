#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "CommandLine/OperationChain.h"
#include "CommandLine/Outcome.h"
#include "CommandLine/OutputsInFlight.h"
#include "CommandLine/Target.h"

namespace moxtexture
{

/// How a texture goes into its file.
struct SaveOptions
{
    uint32_t uiPadding = 0;              ///< alignment of the data in a native file; 0 or 1 for none
    std::optional<uint32_t> uiLegacyApi; ///< write the native format's version 2, with the pixel types of that API
};

/// What to do with a texture between its file and the new one.
struct Conversion
{
    std::optional<EMOXTColourSpace> eAssumedSpace; ///< label of the loaded pixels, before anything else
    COperationChain operations;
    CTargetWords target;
    SaveOptions save;
    bool bAsStored = false; ///< layouts go from and to DDS and KTX files as they are, whatever others take them for
};

/// Loads, edits, encodes and saves one file. The output's extension chooses the container.
///
/// Without an operation the loaded texture is encoded as it is, or saved again where it has the target's encoding already; with
/// one it goes through the working form. The layouts of DDS and KTX files are put right on the way in and out.
[[nodiscard]] Outcome convertFile(const Conversion& conversion, const std::string& strInput, const std::string& strOutput,
                                  COutputsInFlight& outputs);

} // namespace moxtexture
