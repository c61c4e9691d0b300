#pragma once

#include "CommandLine/OutputsInFlight.h"

namespace moxtexture
{

/// The whole program but for its signals: parses the words, runs the verb, writes to standard output and standard error.
///
/// @param apArguments  uiCount words, the program's name first
/// @return the exit status
int runProgram(int iCount, const char* const* apArguments, COutputsInFlight& outputs);

} // namespace moxtexture
