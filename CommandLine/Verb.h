#pragma once

#include <functional>

#include "CommandLine/Outcome.h"
#include "CommandLine/OutputsInFlight.h"

namespace CLI
{
class App;
}

namespace moxtexture
{

/// Does what the words ask for, once they are parsed.
using VerbRun = std::function<Outcome(COutputsInFlight&)>;

/// Each gives a verb its options and returns what to run after parsing. A new verb is a file with such a function, a line here,
/// and a row in Program.cpp.
VerbRun describeInfo(CLI::App& verb);
VerbRun describeConvert(CLI::App& verb);
VerbRun describeExtract(CLI::App& verb);
VerbRun describeFormats(CLI::App& verb);

} // namespace moxtexture
