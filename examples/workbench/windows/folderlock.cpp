// SPDX-License-Identifier: Apache-2.0
#include "../folderlock.h"

#include <windows.h>

#include <string>

namespace {

/// A name that only this folder has, by whichever path it is reached; empty when it cannot be
/// opened.
std::wstring nameOf(const std::filesystem::path& folder)
{
    const HANDLE opened = CreateFileW(folder.c_str(), FILE_READ_ATTRIBUTES,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    BY_HANDLE_FILE_INFORMATION file = {};
    const bool isKnown =
        opened != INVALID_HANDLE_VALUE && GetFileInformationByHandle(opened, &file);
    if (opened != INVALID_HANDLE_VALUE)
        CloseHandle(opened);
    if (!isKnown)
        return {};
    return L"imageutils-workbench-" + std::to_wstring(file.dwVolumeSerialNumber) + L'-' +
           std::to_wstring(file.nFileIndexHigh) + L'-' + std::to_wstring(file.nFileIndexLow);
}

/// The mutex `name`, held by this thread; null when there is none within five seconds. A mutex,
/// because a folder that is opened exclusively could not be listed by any other program.
HANDLE lockedMutex(const std::wstring& name)
{
    const HANDLE mutex = name.empty() ? nullptr : CreateMutexW(nullptr, FALSE, name.c_str());
    if (!mutex)
        return nullptr;
    const DWORD result = WaitForSingleObject(mutex, 5000);
    if (result == WAIT_OBJECT_0 || result == WAIT_ABANDONED) // by a run that was ended
        return mutex;
    CloseHandle(mutex);
    return nullptr;
}

} // namespace

FolderLock::FolderLock(const std::filesystem::path& folder)
    : m_lock(reinterpret_cast<std::intptr_t>(lockedMutex(nameOf(folder))))
{}

FolderLock::~FolderLock()
{
    const auto mutex = reinterpret_cast<HANDLE>(m_lock);
    if (!mutex)
        return;
    ReleaseMutex(mutex);
    CloseHandle(mutex);
}
