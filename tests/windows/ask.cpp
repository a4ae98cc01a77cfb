// SPDX-License-Identifier: Apache-2.0
//
// ask profile FILE | ask plugin NAME | ask show < PATH
//
// Prints the answers of platform/windows: the step, with the profile in FILE; the answer of the
// plug-in, or why it was not opened; whether PATH was shown.
#include <platform/monitorprofile.h>
#include <platform/plugin.h>
#include <platform/showitem.h>

#include <objbase.h>

#include <fstream>
#include <iostream>
#include <string_view>

int main(int argc, char* argv[])
{
    if (argc > 2 && std::string_view(argv[1]) == "plugin") {
        const Platform::PluginFunction plugin = Platform::openPlugin(argv[2], "answer");
        std::cout << (plugin.function ? reinterpret_cast<const char* (*)()>(plugin.function)()
                                      : plugin.error.c_str())
                  << '\n';
        return 0;
    }
    if (argc > 2) {
        const auto profile = Platform::monitorProfile({}, {});
        std::ofstream(argv[2], std::ios::binary)
            .write(reinterpret_cast<const char*>(profile.bytes.data()),
                   std::streamsize(profile.bytes.size()));
        std::cout << int(profile.step) << '\n';
        return 0;
    }
    CoInitialize(nullptr);
    std::string path;
    std::getline(std::cin, path);
    const auto isWanted = [] { return true; };
    Platform::showItem(path, {}, isWanted,
                       [](bool shown) { std::cout << (shown ? "shown\n" : "no\n"); });
    CoUninitialize();
}
