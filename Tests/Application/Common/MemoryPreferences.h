#pragma once

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>

#include "Common/MOXPreferencesImpl.h"

/// What a preferences file holds, and what is done to it.
struct MemoryPreferencesFile
{
    std::string strContent;
    uint32_t ui32Time = 1; ///< to be raised with each change of the content
    bool bMissing = false; ///< nothing can be opened, and there is no time
    bool bFull = false;    ///< what is written cannot be put in place
    bool bFaulty = false;  ///< it can be opened, and has a size, but its bytes can't be read
    int iOpened = 0;       ///< times that it was read
    int iWritten = 0;      ///< times that it was replaced

    void replace(std::string strNewContent)
    {
        strContent = std::move(strNewContent);
        ++ui32Time;
    }
};

/// A file layer without a disk: one file of any name, which the test keeps.
class CMemoryPreferences : public MOXPreferencesImpl
{
public:
    explicit CMemoryPreferences(MemoryPreferencesFile& file) : m_File(file) {}

    bool getPathToFile(std::string&, uint32_t) override { return false; }

    std::unique_ptr<MOXPreferencesFile> openFile(const std::string&, bool bForWrite, uint32_t, bool, std::string& strError) override
    {
        if (m_File.bMissing)
        {
            strError = "There is no file.";
            return nullptr;
        }
        auto pFile = std::make_unique<Handle>();
        pFile->ui32Time = m_File.ui32Time;
        pFile->bForWrite = bForWrite;
        if (bForWrite)
            pFile->pFile = ::open_memstream(&pFile->pWritten, &pFile->uiWritten);
        else
            pFile->pFile = m_File.bFaulty ? openFaulty(m_File) : ::fmemopen(m_File.strContent.data(), m_File.strContent.size(), "rb");
        m_File.iOpened += bForWrite ? 0 : 1;
        return pFile;
    }

    bool closeFile(MOXPreferencesFile& file, bool) override
    {
        auto& handle = static_cast<Handle&>(file);
        handle.close();
        if (!handle.bForWrite)
            return true;
        if (m_File.bFull)
            return false;
        m_File.replace(std::string(handle.pWritten, handle.uiWritten));
        ++m_File.iWritten;
        handle.ui32Time = m_File.ui32Time;
        return true;
    }

    bool getModificationTime(const std::string&, uint32_t, uint32_t& ui32Time) override
    {
        if (m_File.bMissing)
            return false;
        ui32Time = m_File.ui32Time;
        return true;
    }

private:
    struct Handle : MOXPreferencesFile
    {
        ~Handle() override
        {
            close();
            std::free(pWritten);
        }
        void close()
        {
            if (pFile != nullptr)
                std::fclose(pFile);
            pFile = nullptr;
        }

        bool bForWrite = false;
        char* pWritten = nullptr;
        size_t uiWritten = 0;
    };

    struct FaultyPosition
    {
        off64_t i64Size;
        off64_t i64Now = 0;
    };

    /// As a broken disk gives it.
    static std::FILE* openFaulty(const MemoryPreferencesFile& file)
    {
        cookie_io_functions_t functions = {};
        functions.read = [](void*, char*, size_t) -> ssize_t
        {
            errno = EIO;
            return -1;
        };
        functions.seek = [](void* pCookie, off64_t* pOffset, int iFrom)
        {
            auto& position = *static_cast<FaultyPosition*>(pCookie);
            if (iFrom == SEEK_END)
                *pOffset += position.i64Size;
            else if (iFrom == SEEK_CUR)
                *pOffset += position.i64Now;
            position.i64Now = *pOffset;
            return 0;
        };
        functions.close = [](void* pCookie)
        {
            delete static_cast<FaultyPosition*>(pCookie);
            return 0;
        };
        return ::fopencookie(new FaultyPosition{static_cast<off64_t>(file.strContent.size())}, "rb", functions);
    }

    MemoryPreferencesFile& m_File;
};
