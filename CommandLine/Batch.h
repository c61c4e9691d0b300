#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "CommandLine/Outcome.h"

namespace moxtexture
{

struct BatchFile
{
    std::string strInput;
    std::string strOutput;
};

/// Each input's name with the extension in place of its own, in the folder.
/// @param strExtension  without the point
[[nodiscard]] std::vector<BatchFile> planBatch(const std::vector<std::string>& inputs, const std::string& strFolder,
                                               const std::string& strExtension);

/// A sentence that names two inputs with the same output, or nothing. An output that is its own input is no clash: the file is
/// replaced when the new one is whole. It cannot be another's input without being that one's output, too.
[[nodiscard]] std::string findClash(const std::vector<BatchFile>& files);

/// Does the work on every file, up to uiJobs at once, whatever becomes of the others. Failures are told on standard error in the
/// order of the files, each as soon as all before it have ended.
///
/// @param bProgress  keep a progress line on standard error meanwhile
/// @return done, or failed without a text
[[nodiscard]] Outcome runBatch(const std::vector<BatchFile>& files, uint32_t uiJobs, bool bProgress,
                               const std::function<Outcome(const BatchFile&)>& work);

} // namespace moxtexture
