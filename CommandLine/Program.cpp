#include "CommandLine/Program.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "CommandLine/ErrorStream.h"
#include "CommandLine/Names.h"
#include "CommandLine/Outcome.h"
#include "CommandLine/Verb.h"
#include "CommandLine/WordOptions.h"
#include "Core/Workers.h"

namespace moxtexture
{
namespace
{

constexpr size_t k_uiHelpColumn = 36; ///< where explanations begin
constexpr size_t k_uiHelpWidth = 64;  ///< of explanations, in characters
constexpr uint32_t k_uiMaxProcessors = 1024;

struct VerbRow
{
    const char* strName;
    const char* strUsage; ///< what stands behind the name, a line a form
    const char* strHelp;
    VerbRun (*pDescribe)(CLI::App& verb);
    const char* strExamples;
};

constexpr VerbRow k_aVerbs[] = {
    {"info", "FILE [--json]", "Show a texture's header and every metadata block.", describeInfo, "  halvane-cli info wall.mox --json"},
    {"convert",
     "INPUT -o OUTPUT [operations] [target] [--pad N | --legacy API] [--as-stored]\n"
     "INPUT... --out-dir DIR --ext mox|ktx|dds|h [operations] [target] [--pad N | --legacy API] [--as-stored] [--jobs N] [--quiet]",
     "Load a texture or an image, edit it, encode it, save it.", describeConvert,
     "  halvane-cli convert photo.png --assume-space srgb -o photo.mox --mips all --format bc1\n"
     "  halvane-cli convert a.mox -o b.mox --resize 256x256 --filter cubic --mips all --colour-mips\n"
     "  halvane-cli convert textures/*.png --out-dir built --ext mox --mips all --format bc3"},
    {"extract", "INPUT -o IMAGE [--level L] [--member M] [--face F]", "Save one surface of a texture as an ordinary image.",
     describeExtract, "  halvane-cli extract photo.mox -o level2.png --level 2"},
    {"formats", "[--json]", "List the formats that textures are encoded to, a row each.", describeFormats,
     "  halvane-cli formats\n"
     "  halvane-cli formats --json | jq '.[] | select(.bitsPerPixel <= 2) | .name'"},
};

/// The words in lines of at most uiWidth characters.
std::string wrapWords(const std::string& strText, size_t uiWidth)
{
    std::istringstream words(strText);
    std::string strResult;
    size_t uiColumn = 0;
    for (std::string strWord; words >> strWord; uiColumn += strWord.size())
    {
        const bool bFits = uiColumn + 1 + strWord.size() <= uiWidth;
        if (!strResult.empty())
            strResult += bFits ? ' ' : '\n';
        uiColumn = bFits ? uiColumn + 1 : 0;
        strResult += strWord;
    }
    return strResult;
}

/// CLI11's help with our usage lines, which tell a verb's forms, and with long explanations wrapped.
class CHelp : public CLI::Formatter
{
public:
    CHelp()
    {
        column_width(k_uiHelpColumn);
        label("Positionals", "Files");
        label("REQUIRED", "(required)");
    }

    std::string make_option_desc(const CLI::Option* pOption) const override { return wrapWords(pOption->get_description(), k_uiHelpWidth); }

    std::string make_help(const CLI::App* pApp, std::string strName, CLI::AppFormatMode eMode) const override
    {
        return CLI::detail::find_and_replace(CLI::Formatter::make_help(pApp, std::move(strName), eMode), "\n\n\n", "\n\n");
    }

    std::string make_usage(const CLI::App* pApp, std::string) const override
    {
        std::string strUsage;
        for (const VerbRow& row : k_aVerbs)
            if (pApp->get_name() == row.strName)
                appendForms(strUsage, row);
        return "\nUsage:\n" + (strUsage.empty() ? "  halvane-cli [--version] [--help] VERB ...\n" : strUsage);
    }

private:
    static void appendForms(std::string& strUsage, const VerbRow& row)
    {
        std::istringstream forms(row.strUsage);
        for (std::string strForm; std::getline(forms, strForm);)
            strUsage += "  halvane-cli " + std::string(row.strName) + " " + strForm + "\n";
    }
};

/// Writes all of a text to standard output, also what the stream still holds.
Outcome print(const std::string& strText)
{
    const bool bWritten = std::fwrite(strText.data(), 1, strText.size(), stdout) == strText.size();
    return std::fflush(stdout) == 0 && bWritten ? done() : failed("Cannot write to standard output");
}

/// A word in brackets is a list to CLI11, but can be nothing here but a file's name.
std::string protectBrackets(const std::string& strWord)
{
    return strWord.size() >= 2 && strWord.front() == '[' && strWord.back() == ']' ? "./" + strWord : strWord;
}

class CProgram
{
public:
    CProgram() : m_App("The Halvane texture library from a shell.", "halvane-cli")
    {
        m_App.formatter(m_pHelp);
        m_App.set_help_flag("-h,--help", "This help, or a verb's, and end");
        m_App.set_version_flag("--version", "halvane-cli " HALVANE_VERSION, "The version, and end");
        m_App.require_subcommand(0, 1);
        m_App.footer("halvane-cli VERB --help tells a verb's options.\n"
                     "Exit status: 0 done, 1 the work failed, 2 the words were wrong.");
        for (const VerbRow& row : k_aVerbs)
        {
            CLI::App* pVerb = m_App.add_subcommand(row.strName, row.strHelp)->group("Verbs");
            pVerb->set_help_flag("-h,--help", "This help, and end");
            pVerb->footer(std::string("Examples:\n") + row.strExamples);
            m_Runs.push_back(row.pDescribe(*pVerb));
            addWordOption(*pVerb, "--processors", m_uiProcessors, parseWithin<1, k_uiMaxProcessors>, "N",
                          "number of processors from 1 to 1024",
                          "Divide work as for N processors, not for the machine's own. MOXTC at quality 1 gives other bytes for another "
                          "number");
        }
    }

    Outcome run(std::vector<std::string> words, COutputsInFlight& outputs)
    {
        try
        {
            std::transform(words.begin(), words.end(), words.begin(), protectBrackets);
            std::reverse(words.begin(), words.end()); // CLI11 takes them from the back
            m_App.parse(words);
        }
        catch (const CLI::CallForHelp&)
        {
            return done(getVerb().help());
        }
        catch (const CLI::CallForVersion& version)
        {
            return done(std::string(version.what()) + "\n");
        }
        catch (const CLI::ExtrasError&)
        {
            // The library's own message names them in reverse.
            const std::vector<std::string> unexpected = m_App.remaining(true);
            if (m_App.get_subcommands().empty() && unexpected.front().rfind('-', 0) != 0)
                return wrongWords("'" + unexpected.front() + "' is no verb (" + listVerbs() + ")");
            return wrongWords("Not expected: " + CLI::detail::join(unexpected, " "));
        }
        catch (const CLI::ParseError& error)
        {
            return wrongWords(error.what());
        }
        if (m_uiProcessors)
            setProcessorCount(*m_uiProcessors);
        for (size_t i = 0; i < m_Runs.size(); ++i)
            if (m_App.got_subcommand(k_aVerbs[i].strName))
                return m_Runs[i](outputs);
        return wrongWords("A verb is required");
    }

    /// What to print behind a message about wrong words.
    [[nodiscard]] std::string getUsage() const { return m_pHelp->make_usage(&getVerb(), {}) + "\nRun with --help for more information.\n"; }

private:
    static std::string listVerbs()
    {
        std::string strVerbs;
        for (const VerbRow& row : k_aVerbs)
            strVerbs += (strVerbs.empty() ? "" : ", ") + std::string(row.strName);
        return strVerbs;
    }

    /// The verb that the words begin with, or the program itself.
    [[nodiscard]] const CLI::App& getVerb() const
    {
        const std::vector<CLI::App*> verbs = m_App.get_subcommands();
        return verbs.empty() ? m_App : *verbs.front();
    }

    std::shared_ptr<CHelp> m_pHelp = std::make_shared<CHelp>();
    CLI::App m_App;
    std::vector<VerbRun> m_Runs; // as k_aVerbs
    std::optional<uint32_t> m_uiProcessors;
};

} // namespace

int runProgram(int iCount, const char* const* apArguments, COutputsInFlight& outputs)
{
    CProgram program;
    Outcome outcome =
        runGuarded([&] { return program.run(std::vector<std::string>(apArguments + std::min(iCount, 1), apArguments + iCount), outputs); });
    if (outcome.isDone() && !outcome.strText.empty())
        outcome = print(outcome.strText);

    if (outcome.eStatus == EExitStatus::eFailed && !outcome.strText.empty())
        std::fprintf(getErrorStream(), "%s\n", getErrorLine(outcome.strText).c_str());
    if (outcome.eStatus == EExitStatus::eWrongWords)
        std::fprintf(getErrorStream(), "%s\n%s", toOneLine(outcome.strText).c_str(), program.getUsage().c_str());
    return static_cast<int>(outcome.eStatus);
}

} // namespace moxtexture
