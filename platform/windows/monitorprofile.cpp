// SPDX-License-Identifier: Apache-2.0
#include <platform/monitorprofile.h>

#include <windows.h>

#include <icm.h>

#include <utility>

using Platform::MaxProfileBytes;
using Platform::MonitorProfile;
using Platform::MonitorProfileStep;

namespace {

/// The device context of this thread's active window, or of the screen when no window is active.
class DeviceContext
{
public:
    DeviceContext() : m_window(GetActiveWindow()), m_context(GetDC(m_window)) {}
    ~DeviceContext()
    {
        if (m_context)
            ReleaseDC(m_window, m_context);
    }
    DeviceContext(const DeviceContext&) = delete;
    DeviceContext& operator=(const DeviceContext&) = delete;

    HDC get() const { return m_context; }

private:
    HWND m_window;
    HDC m_context;
};

/// A colour profile opened from its file.
class ColorProfile
{
public:
    /// `fileName` ends with a null character, which is part of its length.
    explicit ColorProfile(std::wstring& fileName)
    {
        PROFILE profile = {PROFILE_FILENAME, fileName.data(),
                           DWORD(fileName.size() * sizeof(wchar_t))};
        m_handle = OpenColorProfileW(&profile, PROFILE_READ, FILE_SHARE_READ, OPEN_EXISTING);
    }
    ~ColorProfile()
    {
        if (m_handle)
            CloseColorProfile(m_handle);
    }
    ColorProfile(const ColorProfile&) = delete;
    ColorProfile& operator=(const ColorProfile&) = delete;

    bool isOpen() const { return m_handle != nullptr; }

    bool hasHeader() const
    {
        PROFILEHEADER header = {};
        header.phSize = 128;
        return GetColorProfileHeader(m_handle, &header);
    }

    /// The whole profile; empty when it is too long. The first call fails, but stores the size.
    std::vector<unsigned char> bytes() const
    {
        DWORD size = 0;
        GetColorProfileFromHandle(m_handle, nullptr, &size);
        std::vector<unsigned char> bytes(size <= MaxProfileBytes ? size : 0);
        GetColorProfileFromHandle(m_handle, bytes.data(), &size);
        return bytes;
    }

private:
    HPROFILE m_handle = nullptr;
};

/// The file of the context's profile, its terminator included; empty when it has none.
std::wstring profileFileName(HDC context)
{
    DWORD length = 0;
    GetICMProfileW(context, &length, nullptr); // fails, but stores the length
    std::wstring name(length, L'\0');
    if (!GetICMProfileW(context, &length, name.data()))
        return {};
    return name;
}

} // namespace

MonitorProfile Platform::monitorProfile(const std::string&, std::chrono::milliseconds)
{
    const DeviceContext context;
    if (!context.get())
        return {MonitorProfileStep::NoContext, {}};
    std::wstring fileName = profileFileName(context.get());
    if (fileName.empty())
        return {MonitorProfileStep::NoProfile, {}};
    const ColorProfile profile(fileName);
    if (!profile.isOpen())
        return {MonitorProfileStep::CannotOpen, {}};
    if (!profile.hasHeader())
        return {MonitorProfileStep::NoHeader, {}};
    std::vector<unsigned char> bytes = profile.bytes();
    if (bytes.empty())
        return {MonitorProfileStep::NoProfile, {}};
    return {MonitorProfileStep::Read, std::move(bytes)};
}
