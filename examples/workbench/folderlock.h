// SPDX-License-Identifier: Apache-2.0
#pragma once

/// A lock on a folder: while it is held, other runs of this program do not name files there.
/// Waiting for it ends after some seconds, because the run that holds the lock may have been
/// stopped. Where the system cannot lock a folder there is no lock, and two runs may each write a
/// picture of their own.
class FolderLock
{
public:
    explicit FolderLock(const char* folder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

private:
    int m_folder;
};
