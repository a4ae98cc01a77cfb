// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <aiengine/aiengine_export.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// The facts of the machine.
///
/// @since 1.0
namespace aiutils {

/// One graphics device.
///
/// @ingroup machine
/// @par Thread safety
/// A value without shared state.
/// @par Ownership
/// Copies are independent of each other.
/// @par Failure
/// Unknown facts are 0 or empty.
/// @since 1.0
struct DeviceInfo
{
    /// The driver's name of the device, for people, in UTF-8.
    std::string name;
    /// "discrete", "integrated", "virtual" or "other".
    std::string kind;
    /// The video memory in GiB: the largest heap that belongs to the device alone; 0 when the
    /// device has no memory of its own.
    float vram = 0;
    /// The maker's number on the PCI bus.
    std::uint32_t vendorId = 0;
    /// The maker's number for this product.
    std::uint32_t deviceId = 0;
};

/// The facts of this machine. They are queried when they are first needed and then kept. CMake
/// target `imageutils::aiengine`.
///
/// @ingroup machine
/// @par Thread safety
/// There is no lock: one thread at a time may use the object.
/// @par Ownership
/// The object of `GetInstance` belongs to the library and lives until the program ends.
/// @par Units
/// Memory is in GiB; texts are UTF-8.
/// @par Failure
/// Unknown facts are 0, empty or `false`. Nothing is thrown.
/// @since 1.0
class AIENGINE_EXPORT SystemInfo
{
public:
    /// The only object of the process. The first call with `createWhenNeeded` queries the facts;
    /// before that call all facts are unknown.
    static SystemInfo& GetInstance(bool createWhenNeeded);

    /// A copy with the facts that are known at this moment.
    SystemInfo(const SystemInfo& other);
    /// Takes over the facts that `other` knows at this moment.
    SystemInfo& operator=(const SystemInfo& other);
    /// Releases the facts.
    ~SystemInfo();

    /// The processor's name, or the name of its architecture if the system tells no more.
    std::string cpuName();

    /// The graphics devices without software renderers, which run on the processor; empty when
    /// there are none or no driver answers. Queried once (0.1 to 0.3 s), and again with
    /// `askAgain`; the returned list is valid until then. The drivers are asked in a process of
    /// their own; one that crashes, or does not answer within 5 s, is a warning in the log.
    const std::vector<DeviceInfo>& getGPUList(bool askAgain);

    /// The machine's memory in GiB: the total, and the amount that was available at the query. The
    /// query happens once, and again with `askAgain`. Both are 0 if the system does not tell.
    std::pair<double, double> cpuMemory(bool askAgain);

    /// 64 hexadecimal digits that stay the same on this machine and from which the system's own
    /// identifier cannot be found: its SHA-256 with our name. Empty if the system has none.
    std::string getMachineId();

    /// Whether the machine is one of Apple's, whatever its processor.
    bool isApple() const;
    /// Whether the processor is one of Intel's.
    bool isIntel() const;
    /// Whether the processor is one of AMD's.
    bool isAmd() const;

    /// Writes the known facts to the log, one line each.
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
