#pragma once

#include <cctype>
#include <cstdint>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "Core/FileHandle.h"

namespace fuzzsupport
{

/// The folder that a seed corpus is written to.
class CCorpusFolder
{
public:
    /// @param strEnding  of all its files, with the point
    CCorpusFolder(std::string strFolder, std::string strEnding) : m_strFolder(std::move(strFolder)), m_strEnding(std::move(strEnding)) {}

    void write(const std::string& strName, const std::vector<uint8_t>& bytes)
    {
        moxtexture::CFileHandle file = moxtexture::CFileHandle::openForWriting(m_strFolder + "/" + strName + m_strEnding);
        m_bGood = file.isOpen() && std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size() && file.close() && m_bGood;
    }

    /// False once a file could not be written.
    bool isGood() const { return m_bGood; }

private:
    std::string m_strFolder;
    std::string m_strEnding;
    bool m_bGood = true;
};

/// "RGBA 8 8 8 8 " becomes "rgba-8-8-8-8"
inline std::string toFileName(const std::string& strFormatName)
{
    std::string strName;
    for (const char c : strFormatName)
        strName += c == ' ' ? '-' : static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return strName.substr(0, strName.find_last_not_of('-') + 1);
}

} // namespace fuzzsupport
