// SPDX-License-Identifier: Apache-2.0
#include <platform/windows/widestring.h>

#include <windows.h>

std::wstring Platform::wideString(const std::string& text)
{
    const int bytes = int(text.size());
    std::wstring wide(std::size_t(MultiByteToWideChar(CP_UTF8, 0, text.data(), bytes, nullptr, 0)),
                      L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), bytes, wide.data(), int(wide.size()));
    return wide;
}
