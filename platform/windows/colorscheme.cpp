// SPDX-License-Identifier: Apache-2.0
#include <platform/colorscheme.h>

#include <windows.h>

// A value of the registry, which is read without waiting.
Platform::ColorScheme Platform::preferredColorScheme(std::chrono::milliseconds)
{
    DWORD light = 0;
    DWORD size = sizeof light;
    const LSTATUS status = RegGetValueW(
        HKEY_CURRENT_USER, L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize",
        L"AppsUseLightTheme", RRF_RT_REG_DWORD, nullptr, &light, &size);
    if (status != ERROR_SUCCESS)
        return ColorScheme::NoAnswer;
    return light ? ColorScheme::Light : ColorScheme::Dark;
}
