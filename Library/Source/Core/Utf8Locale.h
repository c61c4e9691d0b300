#pragma once

namespace moxtexture
{

/// Sees to it that file names are UTF-8 to everything in this process: where the environment names no locale for characters, or the
/// "C" one, or a UTF-8 locale that is not installed, a plain UTF-8 one is set, for this process and its children. Other locales, and
/// all that is not about characters, stay as the user chose them.
///
/// To be called before Qt starts and before threads do, as it changes the environment and the locale.
void useUtf8Locale();

} // namespace moxtexture
