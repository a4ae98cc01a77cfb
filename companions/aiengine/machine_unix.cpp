// SPDX-License-Identifier: Apache-2.0
#include <aiengine/machine_unix.h>

#include <aiengine/machine.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <string_view>
#include <sys/sysinfo.h>

namespace {

constexpr std::string_view blanks = " \t";
constexpr double bytesPerGiB = 1024.0 * 1024.0 * 1024.0;

/// `text` without blanks at its ends, and one blank in place of several: some processors fill up
/// their names.
std::string tidied(std::string_view text)
{
    std::string result;
    while (true) {
        const std::size_t begin = text.find_first_not_of(blanks);
        if (begin == text.npos)
            return result;
        const std::size_t end = std::min(text.find_first_of(blanks, begin), text.size());
        result.append(result.empty() ? "" : " ").append(text.substr(begin, end - begin));
        text.remove_prefix(end);
    }
}

/// What follows "`key` :" in the first line of `file` that begins so; empty when none does.
std::string valueOf(std::string_view key, const char* file)
{
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t colon = line.find(':');
        if (colon != line.npos && tidied(std::string_view(line).substr(0, colon)) == key)
            return tidied(std::string_view(line).substr(colon + 1));
    }
    return {};
}

std::string firstLine(const char* file)
{
    std::ifstream lines(file);
    std::string line;
    std::getline(lines, line);
    return line;
}

} // namespace

aiengine::Processor aiengine::processorIn(const char* cpuInfoFile)
{
    return {valueOf("model name", cpuInfoFile), valueOf("vendor_id", cpuInfoFile)};
}

bool aiengine::isAppleIn(const char* cpuInfoFile, const char* systemVendorFile)
{
    // Arm's registry of makers has Apple under 0x61; older machines say so in their firmware.
    return valueOf("CPU implementer", cpuInfoFile) == "0x61" ||
           firstLine(systemVendorFile).starts_with("Apple");
}

aiengine::Processor aiengine::processor() { return processorIn("/proc/cpuinfo"); }

bool aiengine::isAppleMachine()
{
    return isAppleIn("/proc/cpuinfo", "/sys/class/dmi/id/sys_vendor");
}

std::pair<double, double> aiengine::memoryGiB()
{
    struct sysinfo memory = {};
    if (sysinfo(&memory) != 0)
        return {};
    const double total = double(memory.totalram) * memory.mem_unit;
    double available = double(memory.freeram) * memory.mem_unit;
    // What is free leaves out what the kernel would give back, most of it cached files.
    const std::string kibibytes = valueOf("MemAvailable", "/proc/meminfo");
    if (!kibibytes.empty())
        available = double(std::strtoull(kibibytes.c_str(), nullptr, 10)) * 1024.0;
    return {total / bytesPerGiB, available / bytesPerGiB};
}
