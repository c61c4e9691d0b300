#pragma once

#include <filesystem>
#include <string>

#include <sys/ipc.h>
#include <sys/sem.h>
#include <sys/shm.h>

/// Takes away the memory and the semaphores of instance markers whose files stand in a folder: the system keeps those of programs
/// that were killed until somebody asks for them again.
inline void removeInstanceMarkers(const std::string& strFolder)
{
    constexpr int iProject = 'Q'; // with which Qt makes a number of a file
    for (const auto& entry : std::filesystem::directory_iterator(strFolder))
    {
        if (entry.path().filename().string().rfind("qipc_", 0) != 0)
            continue;
        const key_t key = ::ftok(entry.path().c_str(), iProject);
        const int iMemory = ::shmget(key, 0, 0);
        if (iMemory >= 0)
            ::shmctl(iMemory, IPC_RMID, nullptr);
        const int iSemaphore = ::semget(key, 0, 0);
        if (iSemaphore >= 0)
            ::semctl(iSemaphore, 0, IPC_RMID);
    }
}
