#include "CommandLine/Batch.h"

#include <filesystem>
#include <map>
#include <mutex>
#include <optional>
#include <system_error>

#include "CommandLine/ProgressLine.h"
#include "Core/Workers.h"

namespace moxtexture
{
namespace
{

/// The outcomes as they come in, told in the order of the files.
class CReport
{
public:
    CReport(const std::vector<BatchFile>& files, bool bProgress) : m_Files(files), m_Outcomes(files.size()), m_Line(files.size(), bProgress)
    {
    }

    void begin(size_t uiIndex)
    {
        const std::lock_guard<std::mutex> lock(m_Mutex);
        m_Line.begin(m_Files[uiIndex].strInput);
    }

    void finish(size_t uiIndex, Outcome outcome)
    {
        const std::lock_guard<std::mutex> lock(m_Mutex);
        m_Outcomes[uiIndex] = std::move(outcome);
        m_Line.finishOne();
        for (; m_uiNext < m_Files.size() && m_Outcomes[m_uiNext]; ++m_uiNext)
        {
            if (m_Outcomes[m_uiNext]->isDone())
                continue;
            m_bFailed = true;
            m_Line.printAbove(getErrorLine(m_Files[m_uiNext].strInput + ": " + m_Outcomes[m_uiNext]->strText));
        }
    }

    [[nodiscard]] bool hasFailed() const { return m_bFailed; }

private:
    const std::vector<BatchFile>& m_Files;
    std::vector<std::optional<Outcome>> m_Outcomes;
    size_t m_uiNext = 0;
    bool m_bFailed = false;
    std::mutex m_Mutex;
    CProgressLine m_Line;
};

/// One spelling for all that lead to the same file, which need not be there.
std::string resolve(const std::string& strPath)
{
    std::error_code error;
    const std::filesystem::path path = std::filesystem::weakly_canonical(strPath, error);
    return error ? strPath : path.string();
}

} // namespace

std::vector<BatchFile> planBatch(const std::vector<std::string>& inputs, const std::string& strFolder, const std::string& strExtension)
{
    std::vector<BatchFile> files;
    for (const std::string& strInput : inputs)
    {
        const std::filesystem::path name = std::filesystem::path(strInput).stem();
        files.push_back({strInput, (std::filesystem::path(strFolder) / name).string() + "." + strExtension});
    }
    return files;
}

std::string findClash(const std::vector<BatchFile>& files)
{
    std::map<std::string, std::string> inputOf;
    for (const BatchFile& file : files)
    {
        const auto [place, bNew] = inputOf.emplace(resolve(file.strOutput), file.strInput);
        if (!bNew)
            return "'" + place->second + "' and '" + file.strInput + "' would both be written to '" + file.strOutput + "'";
    }
    return {};
}

Outcome runBatch(const std::vector<BatchFile>& files, uint32_t uiJobs, bool bProgress, const std::function<Outcome(const BatchFile&)>& work)
{
    CReport report(files, bProgress);
    runTasks(files.size(), uiJobs,
             [&](size_t uiIndex)
             {
                 report.begin(uiIndex);
                 report.finish(uiIndex, runGuarded([&] { return work(files[uiIndex]); }));
             });
    return report.hasFailed() ? failed({}) : done();
}

} // namespace moxtexture
