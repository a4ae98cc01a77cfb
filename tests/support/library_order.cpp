// SPDX-License-Identifier: Apache-2.0
//
// library_order LIBRARY: loads the library and prints a line for each object that is constructed at
// load and destroyed at the end. The functions below are found before those of Qt and the standard
// library; each reports the call and forwards it.
#include <QtCore/QCache>
#include <QtCore/QFile>
#include <QtCore/QString>

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

bool s_watching = false; // from the library's first object to its last
const char* s_path = nullptr;

/// The maximum cost of the library's cache: 0 while its memory is still all zeros, -1 without a
/// library.
qsizetype cacheLimit()
{
    void* const library = dlopen(s_path, RTLD_NOLOAD | RTLD_NOW); // also while it is being built
    const void* const cache =
        library ? dlsym(library, "_ZN11NImageUtils16s_imageSizeCacheE") : nullptr;
    if (library)
        dlclose(library);
    return cache ? static_cast<const QCache<int, int>*>(cache)->maxCost() : -1; // of any types
}

void note(const char* event, const char* detail = "")
{
    if (s_watching)
        std::printf("%s%s\n", event, detail);
    std::fflush(stdout);
}

void noteConstruction(const char* event)
{
    note(event, s_watching && cacheLimit() == 0 ? ", cache not built" : "");
}

} // namespace

#define SHOWN __attribute__((visibility("default")))
#define MODULE_REGISTERED "_ZN22QQmlModuleRegistrationC1EPKcPFvvE"
#define MODULE_UNREGISTERED "_ZN22QQmlModuleRegistrationD1Ev"
#define RESOURCE_REGISTERED "_Z21qRegisterResourceDataiPKhS0_S0_"
#define RESOURCE_UNREGISTERED "_Z23qUnregisterResourceDataiPKhS0_S0_"

using Bytes = const unsigned char*;
using Resource = bool(int, Bytes, Bytes, Bytes);

extern "C" {
SHOWN void moduleRegistered(void* self, const char* uri, void (*function)()) asm(MODULE_REGISTERED);
SHOWN void moduleUnregistered(void* self) asm(MODULE_UNREGISTERED);
SHOWN Resource resourceRegistered asm(RESOURCE_REGISTERED);
SHOWN Resource resourceUnregistered asm(RESOURCE_UNREGISTERED);

void moduleRegistered(void* self, const char* uri, void (*function)())
{
    s_watching = s_watching || std::strcmp(uri, "NImageUtils") == 0;
    noteConstruction("module registered");
    reinterpret_cast<decltype(&moduleRegistered)>(dlsym(RTLD_NEXT, MODULE_REGISTERED))(self, uri,
                                                                                       function);
}

void moduleUnregistered(void* self)
{
    note("module unregistered");
    s_watching = false;
    reinterpret_cast<decltype(&moduleUnregistered)>(dlsym(RTLD_NEXT, MODULE_UNREGISTERED))(self);
}

bool resourceRegistered(int version, Bytes tree, Bytes names, Bytes data)
{
    noteConstruction("resource registered");
    return reinterpret_cast<Resource*>(dlsym(RTLD_NEXT, RESOURCE_REGISTERED))(version, tree, names,
                                                                              data);
}

bool resourceUnregistered(int version, Bytes tree, Bytes names, Bytes data)
{
    note("resource unregistered");
    return reinterpret_cast<Resource*>(dlsym(RTLD_NEXT, RESOURCE_UNREGISTERED))(version, tree,
                                                                                names, data);
}
}

SHOWN void* operator new(std::size_t size)
{
    if (size == 65) // the alphabet's 64 characters and a null: nothing else of that size is
                    // allocated during load
        noteConstruction("alphabet built");
    if (void* const memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}
SHOWN void operator delete(void* memory) noexcept { std::free(memory); }
SHOWN void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

int main(int argc, char** argv)
{
    s_path = argc == 2 ? argv[1] : "";
    void* const library = dlopen(s_path, RTLD_NOW);
    if (!library) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    std::printf("loaded, cache of %lld, qmldir of %lld bytes\n",
                static_cast<long long>(cacheLimit()),
                static_cast<long long>(QFile(":/NImageUtils/qmldir").size()));
    dlclose(library);
    std::printf("closed, %s\n",
                dlopen(s_path, RTLD_NOLOAD | RTLD_NOW) ? "still mapped" : "unmapped");
    std::fflush(stdout);
    return 0; // a library that is still mapped is destroyed as the program ends
}
