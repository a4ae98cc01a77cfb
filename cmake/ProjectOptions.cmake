# SPDX-License-Identifier: Apache-2.0
# How every target of the project is compiled: `imageutils_options` carries the flags, the variables below the rest.
include_guard(GLOBAL)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
# The folder of the plug-ins beside the library. It carries the version, so that a library never opens the plug-ins of
# another version, whose functions may have other arguments.
set(IMAGEUTILS_PLUGIN_FOLDER "imageutils/${PROJECT_VERSION}")
# Installed programs find the libraries by a path relative to `bin`, and the libraries find each other in their own folder, so
# the prefix may be moved. The libraries have that path in the build folder, too: CMake's own build path has padding of empty
# entries, and the loader would look for Qt in the current folder once for each entry.
file(RELATIVE_PATH bin_to_lib "/prefix/${CMAKE_INSTALL_BINDIR}" "/prefix/${CMAKE_INSTALL_LIBDIR}")
set(CMAKE_INSTALL_RPATH "$ORIGIN/${bin_to_lib}")
set(beside_themselves INSTALL_RPATH "$ORIGIN" BUILD_WITH_INSTALL_RPATH ON)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()

add_library(imageutils_options INTERFACE)
target_compile_definitions(imageutils_options INTERFACE QT_NO_KEYWORDS QT_NO_MESSAGELOGCONTEXT)
# Results must not depend on the CPU, so the compiler may not contract a product and a sum into a fused multiply-add.
target_compile_options(imageutils_options INTERFACE -ffp-contract=off -Wall -Wextra -Wpedantic)
if(IMAGEUTILS_WARNINGS_AS_ERRORS)
    target_compile_options(imageutils_options INTERFACE -Wconversion -Wshadow -Werror)
endif()
if(IMAGEUTILS_SANITIZERS)
    target_compile_options(imageutils_options INTERFACE
        "-fsanitize=${IMAGEUTILS_SANITIZERS}" -fno-omit-frame-pointer)
    target_link_options(imageutils_options INTERFACE "-fsanitize=${IMAGEUTILS_SANITIZERS}")
    if(IMAGEUTILS_SANITIZERS MATCHES undefined)
        # `undefined` does not include this check, which catches int(NaN) and int(1e30).
        target_compile_options(imageutils_options INTERFACE
            -fsanitize=float-cast-overflow -fno-sanitize-recover=undefined,float-cast-overflow)
    endif()
endif()
