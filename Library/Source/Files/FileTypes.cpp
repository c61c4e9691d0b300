#include "Files/FileTypes.h"

#include <algorithm>
#include <iterator>

#include "Files/NativeFile.h"

namespace moxtexture
{
namespace
{

// clang-format off
constexpr FileType k_aFileTypes[] = {
//    extension  readHandle   readStream  write        appends
    { "ktx",     nullptr,     nullptr,    nullptr,     false },
    { "dds",     nullptr,     nullptr,    nullptr,     false },
    { "astc",    nullptr,     nullptr,    writeNative, true },  // read only: such a file comes from an encoder
    { "h",       readNative,  nullptr,    nullptr,     false }, // written only
    { "mox",     readNative,  nullptr,    writeNative, false },
    { nullptr,   readNative,  nullptr,    writeNative, true },
};
// clang-format on

} // namespace

const FileType& getFileType(const std::string& strExtension)
{
    const auto isIt = [&](const FileType& row) { return row.strExtension == nullptr || strExtension == row.strExtension; };
    return *std::find_if(std::begin(k_aFileTypes), std::end(k_aFileTypes), isIt);
}

} // namespace moxtexture
