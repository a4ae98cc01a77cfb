// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <aiengine/aiengine_export.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace aiutils {

/// One graphics device.
struct DeviceInfo
{
    /// For people, in UTF-8, as its driver calls it.
    std::string name;
    /// "discrete", "integrated", "virtual" or "other".
    std::string kind;
    /// The video memory in GiB: the largest part that belongs to the device alone; 0 when it has
    /// none of its own.
    float vram = 0;
    /// The maker's number on the PCI bus.
    std::uint32_t vendorId = 0;
    /// The maker's number for this product.
    std::uint32_t deviceId = 0;
};

/// The facts of this machine, asked of the system when they are first needed and remembered.
///
/// Texts are UTF-8. There is no lock: one thread at a time.
class AIENGINE_EXPORT SystemInfo
{
public:
    /// The one object of the process. The facts are there once it was called with
    /// `createWhenNeeded`; before that the object knows nothing.
    static SystemInfo& GetInstance(bool createWhenNeeded);

    /// A copy keeps what is known at this moment.
    SystemInfo(const SystemInfo& other);
    SystemInfo& operator=(const SystemInfo& other);
    ~SystemInfo();

    /// The processor's name, or that of its architecture where the system knows no more.
    std::string cpuName();

    /// The graphics devices, those that are only the processor in disguise left out; empty when
    /// there are none or no driver tells. Asked once (0.1 to 0.3 s), and anew with `askAgain`; the
    /// list returned is valid until then.
    const std::vector<DeviceInfo>& getGPUList(bool askAgain);

    /// The machine's memory in GiB: all of it, and what was available when the system was asked,
    /// which happens once, and anew with `askAgain`. Both are 0 where the system does not tell.
    std::pair<double, double> cpuMemory(bool askAgain);

    /// 64 hexadecimal digits that stay the same on this machine and from which the system's own
    /// identifier cannot be found: its SHA-256 with our name. Empty where the system has none.
    std::string getMachineId();

    /// Whether the machine is one of Apple's, whatever its processor.
    bool isApple() const;
    /// Whether the processor is one of Intel's.
    bool isIntel() const;
    /// Whether the processor is one of AMD's.
    bool isAmd() const;

    /// Writes what is known to the log, a line per fact.
    void logSystemInfo();

private:
    SystemInfo();
    void ask();

    std::string m_cpuName;
    std::vector<DeviceInfo> m_gpus;
    std::pair<double, double> m_memory;
    bool m_created = false;
    bool m_gpusAsked = false;
    bool m_isApple = false;
    bool m_isIntel = false;
    bool m_isAmd = false;
};

} // namespace aiutils
