#include "CommandLine/Outcome.h"

#include <new>

#include "CommandLine/Names.h"

namespace moxtexture
{

std::string getErrorLine(const std::string& strText)
{
    return "halvane-cli: error: " + toOneLine(strText);
}

Outcome runGuarded(const std::function<Outcome()>& work)
{
    try
    {
        return work();
    }
    catch (const std::bad_alloc&)
    {
        return failed("Not enough memory");
    }
}

} // namespace moxtexture
