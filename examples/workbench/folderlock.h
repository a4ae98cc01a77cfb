// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <filesystem>

/// A lock on a folder: while it is held, other runs of this program do not name files there.
/// Waiting for it ends after some seconds, because the run that holds the lock may have been
/// stopped. The thread that takes the lock also gives it back. Where the system cannot lock a
/// folder there is no lock, and two runs may each write a picture of their own.
class FolderLock
{
public:
    explicit FolderLock(const std::filesystem::path& folder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

private:
    std::intptr_t m_lock; ///< a descriptor or handle of the system
};
