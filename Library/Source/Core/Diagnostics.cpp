#include "Core/Diagnostics.h"

#include <atomic>

namespace moxtexture
{

namespace
{

std::atomic<DiagnosticsHook> g_pHook{nullptr};

} // namespace

void setDiagnosticsHook(DiagnosticsHook pHook)
{
    g_pHook.store(pHook);
}

void writeDiagnostic(const char* pszText)
{
    if (const DiagnosticsHook pHook = g_pHook.load())
        pHook(pszText);
}

} // namespace moxtexture
