# SPDX-License-Identifier: Apache-2.0
include_guard(GLOBAL)
include(GenerateExportHeader)

file(RELATIVE_PATH pkgconfig_to_prefix "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")

# imageutils_add_companion(NAME HEADERS … SOURCES … [LINK …] [REQUIRES COMPANION…])
#
# A small shared library of its own with headers <NAME/…>: file `libimageutils-NAME.so.1`, headers installed under
# `include/imageutils-companions/NAME/`, so that neither collides with anything in a system prefix. It is the component
# NAME of `find_package(imageutils)` and the module `imageutils-NAME` of pkg-config. Its headers include those of the
# companions after REQUIRES. An application may link a library of its own with the same interface instead.
function(imageutils_add_companion name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS;SOURCES;LINK;REQUIRES")
    add_library(${name} SHARED ${arg_HEADERS} ${arg_SOURCES})
    add_library(imageutils::${name} ALIAS ${name})
    string(TOUPPER ${name} upper)
    generate_export_header(${name} BASE_NAME ${name}
        EXPORT_FILE_NAME "${PROJECT_BINARY_DIR}/include/${name}/${name}_export.h")
    set_target_properties(${name} PROPERTIES
        OUTPUT_NAME imageutils-${name}
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        ${beside_themselves})
    target_include_directories(${name} PUBLIC
        "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/companions>"
        "$<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>"
        "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/imageutils-companions>")
    target_compile_features(${name} PUBLIC cxx_std_20)
    target_link_libraries(${name} PUBLIC Qt6::Core ${arg_REQUIRES} PRIVATE ${arg_LINK} $<BUILD_INTERFACE:imageutils_options>)
    install(TARGETS ${name} EXPORT imageutils-targets
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
    list(TRANSFORM arg_HEADERS PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/" OUTPUT_VARIABLE header_paths)
    set_property(GLOBAL APPEND PROPERTY IMAGEUTILS_PUBLIC_HEADERS ${header_paths}) # for the documentation
    install(FILES ${arg_HEADERS} "${PROJECT_BINARY_DIR}/include/${name}/${name}_export.h"
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/imageutils-companions/${name})
    list(TRANSFORM arg_REQUIRES PREPEND "imageutils-")
    list(JOIN arg_REQUIRES " " required_modules)
    configure_file("${PROJECT_SOURCE_DIR}/cmake/companion.pc.in" "${PROJECT_BINARY_DIR}/imageutils-${name}.pc" @ONLY)
    install(FILES "${PROJECT_BINARY_DIR}/imageutils-${name}.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
    set_property(GLOBAL APPEND PROPERTY IMAGEUTILS_COMPANIONS ${name})
endfunction()
