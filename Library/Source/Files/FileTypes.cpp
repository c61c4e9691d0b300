#include "Files/FileTypes.h"

#include <algorithm>
#include <iterator>

#include "Files/AstcFile.h"
#include "Files/CHeaderFile.h"
#include "Files/DdsReader.h"
#include "Files/DdsWriter.h"
#include "Files/KtxReader.h"
#include "Files/KtxWriter.h"
#include "Files/NativeFile.h"

namespace moxtexture
{
namespace
{

// clang-format off
constexpr FileType k_aFileTypes[] = {
//    extension  readHandle   readStream  write         appends
    { "ktx",     nullptr,     readKtx,    writeKtx,     false },
    { "dds",     readDds,     nullptr,    writeDds,     false },
    { "astc",    nullptr,     readASTC,   writeNative,  true },  // read only: such a file comes from an encoder
    { "h",       readNative,  nullptr,    saveCHeader,  false }, // written only
    { "mox",     readNative,  nullptr,    writeNative,  false },
    { nullptr,   readNative,  nullptr,    writeNative,  true },
};
// clang-format on

} // namespace

const FileType& getFileType(const std::string& strExtension)
{
    const auto isIt = [&](const FileType& row) { return row.strExtension == nullptr || strExtension == row.strExtension; };
    return *std::find_if(std::begin(k_aFileTypes), std::end(k_aFileTypes), isIt);
}

} // namespace moxtexture
