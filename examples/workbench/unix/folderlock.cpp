// SPDX-License-Identifier: Apache-2.0
#include "../folderlock.h"

#include <chrono>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

FolderLock::FolderLock(const std::filesystem::path& folder)
    : m_lock(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    using namespace std::chrono_literals;
    for (int i = 0; i < 1000 && m_lock >= 0 && flock(int(m_lock), LOCK_EX | LOCK_NB) != 0; ++i)
        std::this_thread::sleep_for(5ms);
}

FolderLock::~FolderLock()
{
    if (m_lock >= 0)
        close(int(m_lock));
}
