// SPDX-License-Identifier: Apache-2.0
//
// A mock driver for the real Vulkan loader, with two graphics devices and a software renderer. It
// crashes or hangs where the environment variable FAKEVULKAN says so.
#define VK_NO_PROTOTYPES
#include <vulkan/vk_icd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <thread>

#define EXPORTED extern "C" __attribute__((visibility("default")))

static constexpr VkDeviceSize mebibyte = 1 << 20;

static struct Device
{
    VK_LOADER_DATA loader;
    int type; // 1 integrated, 2 discrete, 4 processor
    const char* name;
    VkMemoryHeap heaps[3]; // flag 1: the device's own
} s_devices[] = {
    {{ICD_LOADER_MAGIC}, 2, "Große Karte", {{246 * mebibyte, 1}, {8192 * mebibyte, 1}}},
    {{ICD_LOADER_MAGIC}, 1, "Small", {{1536 * mebibyte, 1}, {9999 * mebibyte, 0}}},
    {{ICD_LOADER_MAGIC}, 4, "Processor", {{65536 * mebibyte, 1}}}};

static VkResult createInstance(const void*, const void*, void** instance)
{
    const char* const mode = std::getenv("FAKEVULKAN");
    if (mode && std::strcmp(mode, "crashes") == 0)
        std::abort();
    while (mode && std::strcmp(mode, "hangs") == 0)
        std::this_thread::sleep_for(std::chrono::seconds(1));
    static VK_LOADER_DATA s_instance = {ICD_LOADER_MAGIC};
    *instance = &s_instance;
    return VK_SUCCESS;
}

static VkResult listDevices(VkInstance, uint32_t* count, Device** devices)
{
    for (uint32_t i = 0; devices && i < *count; ++i)
        devices[i] = &s_devices[i];
    *count = 3;
    return VK_SUCCESS;
}

static void describe(const Device* device, VkPhysicalDeviceProperties* properties)
{
    properties->deviceType = VkPhysicalDeviceType(device->type);
    properties->vendorID = 4711;
    properties->deviceID = std::uint32_t(device - s_devices + 1);
    std::snprintf(properties->deviceName, sizeof properties->deviceName, "%s", device->name);
}

static void tellMemory(const Device* device, VkPhysicalDeviceMemoryProperties* memory)
{
    memory->memoryHeapCount = 3;
    std::memcpy(memory->memoryHeaps, device->heaps, sizeof device->heaps);
}

static VkResult noExtensions(const char*, uint32_t* count, void*) { return VkResult(*count = 0); }

EXPORTED VkResult vk_icdNegotiateLoaderICDInterfaceVersion(uint32_t* version)
{
    *version = 5;
    return VK_SUCCESS;
}

EXPORTED PFN_vkVoidFunction vk_icdGetInstanceProcAddr(VkInstance, const char* name)
{
    static const std::map<std::string, PFN_vkVoidFunction> known{
        {"vkCreateInstance", PFN_vkVoidFunction(createInstance)},
        {"vkEnumeratePhysicalDevices", PFN_vkVoidFunction(listDevices)},
        {"vkGetPhysicalDeviceProperties", PFN_vkVoidFunction(describe)},
        {"vkGetPhysicalDeviceMemoryProperties", PFN_vkVoidFunction(tellMemory)},
        {"vkEnumerateInstanceExtensionProperties", PFN_vkVoidFunction(noExtensions)}};
    if (const auto found = known.find(name); found != known.end())
        return found->second;
    // The loader expects many more functions, which the tests do not call, and none of extensions.
    const bool isExtension = std::strstr(name, "KHR") || std::strstr(name, "EXT");
    return isExtension ? nullptr : PFN_vkVoidFunction([] {});
}
