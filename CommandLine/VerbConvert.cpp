#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>

#include <CLI/CLI.hpp>

#include "CommandLine/Batch.h"
#include "CommandLine/ConvertFile.h"
#include "CommandLine/Names.h"
#include "CommandLine/ProgressLine.h"
#include "CommandLine/Verb.h"
#include "CommandLine/WordOptions.h"
#include "Core/Workers.h"
#include "Files/FileExtension.h"

namespace moxtexture
{
namespace
{

constexpr std::array<std::string_view, 4> k_aTextureExtensions = {"mox", "ktx", "dds", "h"};
constexpr uint32_t k_uiMaxJobs = 1024;
constexpr uint32_t k_uiMaxPadding = 65536;
constexpr uint32_t k_uiMaxLegacyApi = 7;

struct ConvertWords
{
    Conversion conversion;
    std::vector<std::string> inputs;
    std::string strOutput;
    std::string strFolder;
    std::optional<std::string> strExtension;
    std::optional<uint32_t> uiJobs;
    uint32_t uiMachineJobs = 1; ///< that the machine has processors for
    std::optional<uint32_t> uiPadding;
    bool bQuiet = false;

    [[nodiscard]] bool isBatch() const { return !strFolder.empty(); }
};

bool isTextureExtension(const std::string& strExtension)
{
    return std::find(k_aTextureExtensions.begin(), k_aTextureExtensions.end(), strExtension) != k_aTextureExtensions.end();
}

std::optional<std::string> parseExtension(const std::string& strWord)
{
    return isTextureExtension(strWord) ? std::optional<std::string>(strWord) : std::nullopt;
}

std::optional<uint32_t> parsePadding(const std::string& strWord)
{
    const std::optional<uint32_t> uiValue = parseWithin<0, k_uiMaxPadding>(strWord);
    return uiValue && (*uiValue & (*uiValue - 1)) == 0 ? uiValue : std::nullopt;
}

/// Of an output that has an extension to be written.
std::string findSaveFault(const ConvertWords& words)
{
    if (!words.conversion.save.uiLegacyApi)
        return {};
    if (words.isBatch() ? *words.strExtension != "mox" : getFileExtension(words.strOutput) != "mox")
        return words.isBatch() ? "--legacy requires --ext mox" : "--legacy: '" + words.strOutput + "' must end in .mox";
    if (words.uiPadding.value_or(0) > 1)
        return "--legacy and --pad exclude each other: a version 2 file has no metadata";
    return {};
}

std::string findFault(const ConvertWords& words)
{
    if (words.isBatch())
    {
        if (!words.strOutput.empty())
            return "--output and --out-dir exclude each other";
        if (!words.strExtension)
            return "--out-dir requires --ext";
    }
    else
    {
        if (words.strOutput.empty())
            return "--output, or --out-dir and --ext, is required";
        if (words.inputs.size() != 1)
            return "--output takes one input; several go to --out-dir";
        if (words.strExtension || words.uiJobs)
            return "--ext and --jobs require --out-dir";
        if (!isTextureExtension(getFileExtension(words.strOutput)))
            return "--output: '" + words.strOutput + "' must end in .mox, .ktx, .dds or .h";
    }
    const std::string strFault = findSaveFault(words);
    return strFault.empty() ? words.conversion.target.findFault() : strFault;
}

Outcome runMany(const ConvertWords& words, COutputsInFlight& outputs)
{
    const std::vector<BatchFile> files = planBatch(words.inputs, words.strFolder, *words.strExtension);
    const std::string strClash = findClash(files);
    if (!strClash.empty())
        return wrongWords(strClash);

    std::error_code error;
    std::filesystem::create_directories(words.strFolder, error);
    if (error)
        return failed("Cannot make the folder " + words.strFolder + ": " + error.message());
    // A count of processors told for the sake of the bytes is no reason to work on more files than the machine has processors for.
    const uint32_t uiJobs = words.uiJobs.value_or(std::min(words.uiMachineJobs, getProcessorCount()));
    return runBatch(files, uiJobs, !words.bQuiet && isTerminal(),
                    [&](const BatchFile& file) { return convertFile(words.conversion, file.strInput, file.strOutput, outputs); });
}

Outcome runConvert(ConvertWords& words, COutputsInFlight& outputs)
{
    const std::string strFault = findFault(words);
    if (!strFault.empty())
        return wrongWords(strFault);
    words.conversion.save.uiPadding = words.uiPadding.value_or(0);
    if (words.isBatch())
        return runMany(words, outputs);
    return convertFile(words.conversion, words.inputs.front(), words.strOutput, outputs);
}

} // namespace

VerbRun describeConvert(CLI::App& verb)
{
    auto pWords = std::make_shared<ConvertWords>();
    pWords->uiMachineJobs = getProcessorCount();
    verb.add_option("INPUT", pWords->inputs, "Textures (.mox, .ktx, .dds, .astc) or ordinary images (.png, .bmp, .jpg, .tga ...)")
        ->required()
        ->type_name("");
    refuseOptions(verb, verb.add_option("-o,--output", pWords->strOutput, "The texture to write: .mox, .ktx, .dds or .h"))
        ->type_name("OUTPUT");
    addWordOption(verb, "--assume-space", pWords->conversion.eAssumedSpace, parseColourSpace, "lrgb|srgb", "colour space",
                  "Take the loaded pixels to be in this space, before anything else. Ordinary images load as lrgb; a photo is srgb");

    pWords->conversion.operations.addOptions(verb);
    pWords->conversion.target.addOptions(verb);

    const std::string strSaving = "Saving";
    addWordOption(verb, "--pad", pWords->uiPadding, parsePadding, "N", "alignment: 0, or a power of two up to 65536",
                  "Let the data of a .mox or .h file start at a multiple of N bytes, a power of two")
        ->group(strSaving);
    addWordOption(verb, "--legacy", pWords->conversion.save.uiLegacyApi, parseWithin<1, k_uiMaxLegacyApi>, "API", "API from 1 to 7",
                  "Write version 2 of the .mox format, with the pixel types of OpenGL ES 1, 2 or 3 (1, 2, 3), OpenGL (4), or DirectX 11 "
                  "at level 9_3, 10_1 or 11_1 (5, 6, 7)")
        ->group(strSaving);
    addFlag(verb, "--as-stored", pWords->conversion.bAsStored,
            "Take layouts from and to .dds and .ktx files as they stand, where otherwise they are put right so that colours are the same "
            "in other programs")
        ->group(strSaving);

    const std::string strMany = "Many files";
    refuseOptions(verb,
                  verb.add_option("--out-dir", pWords->strFolder, "Write every input's texture into this folder, which is made if missing"))
        ->type_name("DIR")
        ->group(strMany);
    addWordOption(verb, "--ext", pWords->strExtension, parseExtension, "mox|ktx|dds|h", "extension of a texture file",
                  "The kind of texture file, with --out-dir")
        ->group(strMany);
    addWordOption(verb, "--jobs", pWords->uiJobs, parseWithin<1, k_uiMaxJobs>, "N", "number of jobs from 1 to 1024",
                  "Files at once; as many as there are processors, or --processors if fewer, where left out. The results are the "
                  "same")
        ->group(strMany);
    addFlag(verb, "--quiet", pWords->bQuiet, "No progress line")->group(strMany);
    return [pWords](COutputsInFlight& outputs) { return runConvert(*pWords, outputs); };
}

} // namespace moxtexture
