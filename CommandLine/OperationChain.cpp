#include "CommandLine/OperationChain.h"

#include <algorithm>
#include <optional>

#include <CLI/CLI.hpp>

#include "CommandLine/Names.h"
#include "CommandLine/NumberScanner.h"
#include "Operations/Border.h"
#include "Operations/ColourMIPMaps.h"
#include "Operations/Flip.h"
#include "Operations/MIPMaps.h"
#include "Operations/Resize.h"
#include "Operations/ResizeCanvas.h"
#include "Operations/Rotate.h"

namespace moxtexture
{
namespace
{

/// More levels than a file may hold are of no use, and no texture has more: 2^31 pixels wide is 32 levels.
constexpr uint32_t k_uiMaxLevels = 32;

struct Size
{
    uint32_t uiWidth = 0, uiHeight = 0;
    std::optional<uint32_t> uiDepth; ///< left out: that of the texture

    [[nodiscard]] uint32_t getDepthFor(const CMOXTexture& texture) const { return uiDepth.value_or(texture.getDepth()); }
};

/// WxH[xD], each 1 or more.
bool readSize(CNumberScanner& scanner, Size& size)
{
    if (!scanner.read(size.uiWidth) || !scanner.skip('x') || !scanner.read(size.uiHeight))
        return false;
    uint32_t uiDepth = 0;
    if (scanner.skip('x'))
    {
        if (!scanner.read(uiDepth))
            return false;
        size.uiDepth = uiDepth;
    }
    return size.uiWidth != 0 && size.uiHeight != 0 && size.uiDepth != 0u;
}

OperationStep parseResize(const std::string& strWord)
{
    CNumberScanner scanner(strWord);
    Size size;
    if (!readSize(scanner, size) || !scanner.isAtEnd())
        return {};
    return [size](CMOXTexture& texture, ChainState& state)
    { return Resize(texture, size.uiWidth, size.uiHeight, size.getDepthFor(texture), state.eFilter); };
}

OperationStep parseCanvas(const std::string& strWord)
{
    CNumberScanner scanner(strWord);
    Size size;
    int32_t x = 0, y = 0, z = 0;
    if (!readSize(scanner, size))
        return {};
    if (scanner.skip('+') && (!scanner.read(x) || !scanner.skip('+') || !scanner.read(y)))
        return {};
    if (scanner.skip('+') && !scanner.read(z))
        return {};
    if (!scanner.isAtEnd())
        return {};
    return [=](CMOXTexture& texture, ChainState&)
    { return ResizeCanvas(texture, size.uiWidth, size.uiHeight, size.getDepthFor(texture), x, y, z); };
}

OperationStep parseFlip(const std::string& strWord)
{
    const size_t uiAxis = std::string("xyz").find(strWord);
    if (strWord.size() != 1 || uiAxis == std::string::npos)
        return {};
    return [uiAxis](CMOXTexture& texture, ChainState&) { return Flip(texture, static_cast<uint32_t>(uiAxis)); };
}

OperationStep parseRotate(const std::string& strWord)
{
    if (strWord != "cw" && strWord != "ccw")
        return {};
    return [bForward = strWord == "cw"](CMOXTexture& texture, ChainState&) { return Rotate(texture, eAxisZ, bForward); };
}

OperationStep parseBorder(const std::string& strWord)
{
    CNumberScanner scanner(strWord);
    uint32_t x = 0, y = 0, z = 0;
    if (!scanner.read(x) || !scanner.skip(',') || !scanner.read(y))
        return {};
    if (scanner.skip(',') && !scanner.read(z))
        return {};
    if (!scanner.isAtEnd())
        return {};
    return [=](CMOXTexture& texture, ChainState&) { return Border(texture, x, y, z); };
}

OperationStep parseMIPMaps(const std::string& strWord)
{
    const std::optional<uint32_t> uiCount = strWord == "all" ? CMOXTextureHeader::k_uiAllLevels : parseUnsigned(strWord);
    if (!uiCount || *uiCount == 0 || (*uiCount > k_uiMaxLevels && strWord != "all"))
        return {};
    return [uiCount](CMOXTexture& texture, ChainState& state) { return GenerateMIPMaps(texture, state.eFilter, *uiCount); };
}

OperationStep parseColourMIPMaps(const std::string&)
{
    return [](CMOXTexture& texture, ChainState&) { return ColourMIPMaps(texture); };
}

OperationStep parseFilterChoice(const std::string& strWord)
{
    const std::optional<EResizeMode> eMode = parseFilter(strWord);
    if (!eMode)
        return {};
    return [eMode](CMOXTexture&, ChainState& state)
    {
        state.eFilter = *eMode;
        return true;
    };
}

struct OperationRow
{
    const char* strOption;
    const char* strValue;                                ///< what stands behind the option, null for nothing
    bool bEdits;                                         ///< changes the texture, not only how those after it do
    OperationStep (*pParse)(const std::string& strWord); ///< gives an empty function for a word that it does not understand
    const char* strHelp;
    const char* strLimits = ""; ///< what strValue leaves out, for the message about a word that is not understood
};

constexpr OperationRow k_aOperations[] = {
    // clang-format off
    { "--resize",      "WxH[xD]",              true,  parseResize,        "Resample the top level to this size; the other levels go" },
    { "--canvas",      "WxH[xD][+X+Y[+Z]]",    true,  parseCanvas,        "Cut or widen to this size, the old picture's corner at X, Y, Z, which may be negative: 64x64+-4+0. New pixels are zero; the other levels go" },
    { "--flip",        "x|y|z",                true,  parseFlip,          "Mirror along an axis" },
    { "--rotate",      "cw|ccw",               true,  parseRotate,        "Turn a quarter clockwise or counterclockwise" },
    { "--border",      "X,Y[,Z]",              true,  parseBorder,        "Add a mirrored frame that many pixels wide on each side; the other levels go" },
    { "--mips",        "N|all",                true,  parseMIPMaps,       "Make N levels, the top one counted (1 to 32), or all down to one pixel", ", N being 1 to 32" },
    { "--colour-mips", nullptr,                true,  parseColourMIPMaps, "Tint every level below the top, to see which one is on screen" },
    { "--filter",      "nearest|linear|cubic", false, parseFilterChoice,  "For --resize and --mips behind it; linear at first" },
    // clang-format on
};

} // namespace

void COperationChain::addOptions(CLI::App& verb)
{
    for (const OperationRow& row : k_aOperations)
    {
        const auto take = [this, &row](const std::string& strWord)
        {
            OperationStep step = row.pParse(strWord);
            if (!step)
                throw CLI::ValidationError(row.strOption, "'" + strWord + "' is not " + row.strValue + row.strLimits);
            const std::string strBehind = row.strValue != nullptr ? " " + strWord : std::string();
            m_Operations.push_back({row.strOption + strBehind, std::move(step), row.bEdits});
        };
        // The callback runs as the option is read, not at the end of all, so the chain keeps the order of the words.
        CLI::Option* pOption = row.strValue != nullptr
                                   ? verb.add_option_function<std::string>(row.strOption, take, row.strHelp)->type_name(row.strValue)
                                   : verb.add_flag_callback(
                                             row.strOption, [take] { take({}); }, row.strHelp)
                                         ->disable_flag_override();
        pOption->trigger_on_parse()->group("Operations, applied in the order written");
    }
}

bool COperationChain::isEmpty() const
{
    return std::none_of(m_Operations.begin(), m_Operations.end(), [](const Operation& operation) { return operation.bEdits; });
}

bool COperationChain::apply(CMOXTexture& texture, std::string& strFailed) const
{
    ChainState state;
    for (const Operation& operation : m_Operations)
    {
        if (!operation.step(texture, state))
        {
            strFailed = operation.strWords;
            return false;
        }
    }
    return true;
}

} // namespace moxtexture
