#pragma once

namespace moxtexture
{

/// What receives the library's diagnostics: remarks of its code about odd data, which change no result. It may be called on any
/// thread, and on several at once.
/// @param pszText  one remark with its line end, to be copied if it is kept
using DiagnosticsHook = void (*)(const char* pszText);

/// Sends the library's diagnostics of the whole process to a function from now on. At the start there is none, and the library is
/// silent: it never writes to the standard streams itself.
/// @param pHook  null for none
void setDiagnosticsHook(DiagnosticsHook pHook);

/// Hands a remark to the hook, if there is one. Any thread may call it.
/// @param pszText  one remark with its line end
void writeDiagnostic(const char* pszText);

} // namespace moxtexture
