# SPDX-License-Identifier: Apache-2.0
# Toolchain: 64-bit Arm, by the cross compiler of Debian's g++-aarch64-linux-gnu. The environment variable
# IMAGEUTILS_ARM64_ROOT names the folder into which Debian's arm64 packages are unpacked (ci/test-arm64 does so).
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_SYSROOT "$ENV{IMAGEUTILS_ARM64_ROOT}")
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_CROSSCOMPILING_EMULATOR "qemu-aarch64;-L;${CMAKE_SYSROOT}")
set(libraries "${CMAKE_SYSROOT}/usr/lib/aarch64-linux-gnu")
# Libraries that the libraries need lie there, too.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-Wl,-rpath-link,${libraries}")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "${CMAKE_EXE_LINKER_FLAGS_INIT}")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "${CMAKE_EXE_LINKER_FLAGS_INIT}")
set(ENV{PKG_CONFIG_SYSROOT_DIR} "${CMAKE_SYSROOT}")
set(ENV{PKG_CONFIG_LIBDIR} "${libraries}/pkgconfig:${CMAKE_SYSROOT}/usr/share/pkgconfig")
# Qt's tools run while the project is built, so they are those of the machine that builds.
foreach(module Core DBus Gui Qml Quick Widgets)
    set(Qt6${module}Tools_DIR "/usr/lib/${CMAKE_HOST_SYSTEM_PROCESSOR}-linux-gnu/cmake/Qt6${module}Tools")
endforeach()
