// SPDX-License-Identifier: Apache-2.0
#include <aiengine/machine.h>

#include <windows.h>

#include <iterator>

namespace {

constexpr double bytesPerGiB = 1024.0 * 1024.0 * 1024.0;
constexpr wchar_t processorKey[] = L"HARDWARE\\DESCRIPTION\\System\\CentralProcessor\\0";
constexpr wchar_t firmwareKey[] = L"HARDWARE\\DESCRIPTION\\System\\BIOS";

std::string toUtf8(const wchar_t* text)
{
    const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    if (size <= 1) // the size counts the zero at the end
        return {};
    std::string result(std::size_t(size - 1), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, result.data(), size, nullptr, nullptr);
    return result;
}

/// A text of the registry without blanks at its ends; empty when there is none or it has more than
/// 255 characters.
std::string machineText(const wchar_t* key, const wchar_t* name)
{
    wchar_t text[256];
    DWORD size = sizeof text;
    if (RegGetValueW(HKEY_LOCAL_MACHINE, key, name, RRF_RT_REG_SZ, nullptr, text, &size) !=
        ERROR_SUCCESS)
        return {};
    const std::string filled = toUtf8(text);
    const std::size_t begin = filled.find_first_not_of(' ');
    if (begin == std::string::npos)
        return {};
    return filled.substr(begin, filled.find_last_not_of(' ') + 1 - begin);
}

} // namespace

aiengine::Processor aiengine::processor()
{
    return {machineText(processorKey, L"ProcessorNameString"),
            machineText(processorKey, L"VendorIdentifier")};
}

bool aiengine::isAppleMachine()
{
    return machineText(firmwareKey, L"SystemManufacturer").starts_with("Apple");
}

std::pair<double, double> aiengine::memoryGiB()
{
    MEMORYSTATUSEX memory = {};
    memory.dwLength = sizeof memory;
    if (!GlobalMemoryStatusEx(&memory))
        return {};
    return {double(memory.ullTotalPhys) / bytesPerGiB, double(memory.ullAvailPhys) / bytesPerGiB};
}
