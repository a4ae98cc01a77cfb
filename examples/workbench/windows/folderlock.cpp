// SPDX-License-Identifier: Apache-2.0
#include "../folderlock.h"

FolderLock::FolderLock(const char*) : m_folder(-1) {}

FolderLock::~FolderLock() = default;
