// SPDX-License-Identifier: Apache-2.0
#include "../folderlock.h"

#include <chrono>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

FolderLock::FolderLock(const char* folder)
    : m_folder(open(folder, O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    using namespace std::chrono_literals;
    for (int i = 0; i < 1000 && m_folder >= 0 && flock(m_folder, LOCK_EX | LOCK_NB) != 0; ++i)
        std::this_thread::sleep_for(5ms);
}

FolderLock::~FolderLock()
{
    if (m_folder >= 0)
        close(m_folder);
}
