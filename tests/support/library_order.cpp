// SPDX-License-Identifier: Apache-2.0
//
// library_order LIBRARY: loads the library and writes a line for each object that it builds at load
// and takes down at the end. The functions below stand before Qt's and the standard library's of
// the same name, note the call and pass it on.
#include <QtCore/QCache>
#include <QtCore/QFile>
#include <QtCore/QString>

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

bool s_watching = false;
const char* s_path = nullptr;

template<typename Function>
Function* next(const char* symbol)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, symbol));
}

/// The maximum cost of the library's cache: 0 while its memory is still all zeros, -1 without a
/// library.
qsizetype cacheLimit()
{
    void* const library =
        dlopen(s_path, RTLD_NOLOAD | RTLD_NOW); // found also while its objects are being built
    const void* const cache =
        library ? dlsym(library, "_ZN11NImageUtils16s_imageSizeCacheE") : nullptr;
    return cache ? static_cast<const QCache<QString, int>*>(cache)->maxCost()
                 : -1; // any entry type has this layout
}

void say(const char* event)
{
    std::printf("%s%s\n", event, cacheLimit() == 0 ? ", cache not built" : "");
    std::fflush(stdout);
}

} // namespace

extern "C" {
void moduleRegistered(void* self, const char* uri,
                      void (*function)()) asm("_ZN22QQmlModuleRegistrationC1EPKcPFvvE");
void moduleUnregistered(void* self) asm("_ZN22QQmlModuleRegistrationD1Ev");
bool resourceRegistered(int, const unsigned char*, const unsigned char*,
                        const unsigned char*) asm("_Z21qRegisterResourceDataiPKhS0_S0_");
bool resourceUnregistered(int, const unsigned char*, const unsigned char*,
                          const unsigned char*) asm("_Z23qUnregisterResourceDataiPKhS0_S0_");

__attribute__((visibility("default"))) void moduleRegistered(void* self, const char* uri,
                                                             void (*function)())
{
    if (std::strcmp(uri, "NImageUtils") ==
        0) { // the library's first object: all that it is linked with is built
        s_watching = true;
        say("module registered");
    }
    next<void(void*, const char*, void (*)())>("_ZN22QQmlModuleRegistrationC1EPKcPFvvE")(self, uri,
                                                                                         function);
}

__attribute__((visibility("default"))) void moduleUnregistered(void* self)
{
    if (s_watching)
        say("module unregistered");
    s_watching = false;
    next<void(void*)>("_ZN22QQmlModuleRegistrationD1Ev")(self);
}

__attribute__((visibility("default"))) bool resourceRegistered(int version,
                                                               const unsigned char* tree,
                                                               const unsigned char* names,
                                                               const unsigned char* data)
{
    if (s_watching)
        say("resource registered");
    return next<bool(int, const unsigned char*, const unsigned char*, const unsigned char*)>(
        "_Z21qRegisterResourceDataiPKhS0_S0_")(version, tree, names, data);
}

__attribute__((visibility("default"))) bool resourceUnregistered(int version,
                                                                 const unsigned char* tree,
                                                                 const unsigned char* names,
                                                                 const unsigned char* data)
{
    if (s_watching)
        say("resource unregistered");
    return next<bool(int, const unsigned char*, const unsigned char*, const unsigned char*)>(
        "_Z23qUnregisterResourceDataiPKhS0_S0_")(version, tree, names, data);
}
}

// The only allocation of 65 bytes during load: 64 characters and their end.
__attribute__((visibility("default"))) void* operator new(std::size_t size)
{
    if (s_watching && size == 65)
        say("alphabet built");
    if (void* const memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}
__attribute__((visibility("default"))) void operator delete(void* memory) noexcept
{
    std::free(memory);
}
__attribute__((visibility("default"))) void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

int main(int argc, char** argv)
{
    if (argc != 2)
        return 2;
    s_path = argv[1];
    // Qt's part comes first and for all to see, so that the functions above find the ones that they
    // stand before.
    if (!dlopen("libQt6Qml.so.6", RTLD_NOW | RTLD_GLOBAL) || !dlopen(s_path, RTLD_NOW)) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 3;
    }
    std::printf("loaded, cache of %lld, qmldir of %lld bytes\n",
                static_cast<long long>(cacheLimit()),
                static_cast<long long>(QFile(":/NImageUtils/qmldir").size()));
    std::fflush(stdout);
    return 0; // the library is taken down as the program ends
}
