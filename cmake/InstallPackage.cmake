# SPDX-License-Identifier: Apache-2.0
#
# The package files for `find_package(imageutils 1.0)` and `pkg-config imageutils`. Their paths are relative to the installed
# files, so the prefix may be moved.
include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/imageutils")
get_property(companions GLOBAL PROPERTY IMAGEUTILS_COMPANIONS)
install(EXPORT imageutils-targets NAMESPACE imageutils:: DESTINATION "${package_dir}")
configure_package_config_file("${CMAKE_CURRENT_LIST_DIR}/imageutils-config.cmake.in"
    "${PROJECT_BINARY_DIR}/imageutils-config.cmake" INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/imageutils-config-version.cmake"
    COMPATIBILITY SameMajorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/imageutils-config.cmake"
    "${PROJECT_BINARY_DIR}/imageutils-config-version.cmake"
    DESTINATION "${package_dir}")

configure_file("${CMAKE_CURRENT_LIST_DIR}/imageutils.pc.in" "${PROJECT_BINARY_DIR}/imageutils.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/imageutils.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
install(FILES "${PROJECT_SOURCE_DIR}/LICENSES/Apache-2.0.txt"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/imageutils")
