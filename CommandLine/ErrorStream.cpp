#include "CommandLine/ErrorStream.h"

namespace moxtexture
{
namespace
{

std::FILE* s_pOurs = nullptr;

} // namespace

std::FILE* getErrorStream()
{
    return s_pOurs != nullptr ? s_pOurs : stderr;
}

void dropErrorsOfLibraries()
{
    std::FILE* pNowhere = std::fopen("/dev/null", "we");
    if (s_pOurs != nullptr || pNowhere == nullptr)
        return;
    s_pOurs = stderr;
    stderr = pNowhere;
}

} // namespace moxtexture
