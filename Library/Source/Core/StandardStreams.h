#pragma once

namespace moxtexture
{

/// Sees to it that descriptors 0 to 2 are taken, by a /dev/null that cannot be written to where a process was started without one of
/// them. The next file that is opened would get that number otherwise, and whatever is written to standard output or standard error.
///
/// To be called before anything else opens a file. What is already open stays as it is; writing to a stream that was missing still
/// fails.
void openMissingStreams();

} // namespace moxtexture
