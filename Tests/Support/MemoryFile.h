#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

namespace testsupport
{

/// A range of memory, which must outlive it, as a file open for reading.
class CMemoryFile
{
public:
    CMemoryFile(const uint8_t* pBytes, size_t uiSize)
        : m_pFile(::fmemopen(uiSize != 0 ? const_cast<uint8_t*>(pBytes) : &m_ui8Nothing, uiSize, "rb"))
    {
        if (!m_pFile)
            std::abort();
        std::setvbuf(m_pFile.get(), nullptr, _IONBF, 0); // a reader that trusts a length shows at once
    }
    explicit CMemoryFile(const std::vector<uint8_t>& bytes) : CMemoryFile(bytes.data(), bytes.size()) {}

    std::FILE* get() const { return m_pFile.get(); }

private:
    struct Close
    {
        void operator()(std::FILE* pFile) const { std::fclose(pFile); }
    };

    uint8_t m_ui8Nothing = 0;
    std::unique_ptr<std::FILE, Close> m_pFile;
};

} // namespace testsupport
