// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Keeps other runs of this program from giving names to files in a folder while it lives. A run
/// that does not give the lock back within some seconds, as one that was stopped, is not waited
/// for, and where the system cannot lock a folder nothing is locked: two runs may then write one
/// picture each.
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
