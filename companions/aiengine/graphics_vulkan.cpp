// SPDX-License-Identifier: Apache-2.0
#include <aiengine/graphics.h>

#include <QtCore/QLibrary>

#define VK_NO_PROTOTYPES // the loader is opened when the program runs: many machines have none
#include <vulkan/vulkan_core.h>

#include <algorithm>
#include <iterator>
#include <memory>

namespace {

using aiutils::DeviceInfo;

/// The loader's entry point; null when it is not installed. It stays open: drivers leave threads
/// behind.
PFN_vkGetInstanceProcAddr loader()
{
    QFunctionPointer entry =
        QLibrary::resolve(QStringLiteral("vulkan"), 1, "vkGetInstanceProcAddr");
    if (!entry) // its name on Windows
        entry = QLibrary::resolve(QStringLiteral("vulkan-1"), "vkGetInstanceProcAddr");
    return reinterpret_cast<PFN_vkGetInstanceProcAddr>(entry);
}

/// One connection to all drivers.
class Instance
{
public:
    explicit Instance(PFN_vkGetInstanceProcAddr find) : m_find(find)
    {
        const auto create = function<PFN_vkCreateInstance>("vkCreateInstance");
        VkInstanceCreateInfo wanted = {};
        wanted.sType = VK_STRUCTURE_TYPE_INSTANCE_CREATE_INFO;
        if (!create || create(&wanted, nullptr, &m_instance) != VK_SUCCESS)
            m_instance = VK_NULL_HANDLE;
    }
    ~Instance()
    {
        if (const auto destroy = function<PFN_vkDestroyInstance>("vkDestroyInstance"))
            destroy(m_instance, nullptr);
    }
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    /// Without any driver there is no connection.
    bool isNull() const { return m_instance == VK_NULL_HANDLE; }

    std::vector<VkPhysicalDevice> devices() const
    {
        const auto list = function<PFN_vkEnumeratePhysicalDevices>("vkEnumeratePhysicalDevices");
        std::uint32_t count = 0;
        if (!list || list(m_instance, &count, nullptr) != VK_SUCCESS)
            return {};
        std::vector<VkPhysicalDevice> devices(count);
        // Fewer than asked for when a device has gone meanwhile, and one more waits for next time.
        const VkResult result = list(m_instance, &count, devices.data());
        devices.resize(result == VK_SUCCESS || result == VK_INCOMPLETE ? count : 0);
        return devices;
    }

    template<typename Function>
    Function function(const char* name) const
    {
        return reinterpret_cast<Function>(m_find(m_instance, name));
    }

private:
    PFN_vkGetInstanceProcAddr m_find;
    VkInstance m_instance = VK_NULL_HANDLE;
};

const char* kindOf(VkPhysicalDeviceType type)
{
    switch (type) {
    case VK_PHYSICAL_DEVICE_TYPE_DISCRETE_GPU:
        return "discrete";
    case VK_PHYSICAL_DEVICE_TYPE_INTEGRATED_GPU:
        return "integrated";
    case VK_PHYSICAL_DEVICE_TYPE_VIRTUAL_GPU:
        return "virtual";
    default:
        return "other";
    }
}

/// The largest heap of the device itself. A sum would count twice what is also reachable through a
/// window into the same memory.
VkDeviceSize ownMemory(const VkPhysicalDeviceMemoryProperties& memory)
{
    VkDeviceSize largest = 0;
    const std::uint32_t heaps =
        std::min<std::uint32_t>(memory.memoryHeapCount, VK_MAX_MEMORY_HEAPS);
    for (std::uint32_t i = 0; i < heaps; ++i) {
        if (memory.memoryHeaps[i].flags & VK_MEMORY_HEAP_DEVICE_LOCAL_BIT)
            largest = std::max(largest, memory.memoryHeaps[i].size);
    }
    return largest;
}

DeviceInfo described(const VkPhysicalDeviceProperties& properties,
                     const VkPhysicalDeviceMemoryProperties& memory)
{
    const char* const name = properties.deviceName;
    return {.name = std::string(name, std::find(name, std::end(properties.deviceName), '\0')),
            .kind = kindOf(properties.deviceType),
            .vram = float(double(ownMemory(memory)) / (1024.0 * 1024.0 * 1024.0)),
            .vendorId = properties.vendorID,
            .deviceId = properties.deviceID};
}

} // namespace

std::vector<DeviceInfo> aiengine::devicesOfDrivers()
{
    const PFN_vkGetInstanceProcAddr find = loader();
    if (!find)
        return {};
    const Instance instance(find);
    if (instance.isNull())
        return {};
    const auto propertiesOf =
        instance.function<PFN_vkGetPhysicalDeviceProperties>("vkGetPhysicalDeviceProperties");
    const auto memoryOf = instance.function<PFN_vkGetPhysicalDeviceMemoryProperties>(
        "vkGetPhysicalDeviceMemoryProperties");
    if (!propertiesOf || !memoryOf)
        return {};

    std::vector<DeviceInfo> devices;
    for (const VkPhysicalDevice device : instance.devices()) {
        VkPhysicalDeviceProperties properties = {};
        VkPhysicalDeviceMemoryProperties memory = {};
        propertiesOf(device, &properties);
        if (properties.deviceType == VK_PHYSICAL_DEVICE_TYPE_CPU)
            continue; // a driver that computes on the processor
        memoryOf(device, &memory);
        devices.push_back(described(properties, memory));
    }
    return devices;
}
