# SPDX-License-Identifier: Apache-2.0
#
# The QML module NImageUtils 1.0 around the target `imageutils`: the qmldir that the library carries as a resource, the
# keep-alive target for programs that only import the module, and, for tools alone, the type description and the plugin.
# Registration is written by hand (library.cpp): Qt's own module tooling writes another qmldir and another order.
include_guard(GLOBAL)

set(qml_module_dir "${PROJECT_BINARY_DIR}/qml/NImageUtils")
set(IMAGEUTILS_QML_IMPORT_PATH "${PROJECT_BINARY_DIR}/qml" CACHE INTERNAL "Import path of the built QML module")

# The resource ":/NImageUtils/qmldir", lines ended by CR LF, stored as it is.
configure_file("${PROJECT_SOURCE_DIR}/cmake/qmldir.in" "${qml_module_dir}/qmldir" @ONLY NEWLINE_STYLE CRLF)
set(qmldir_qrc "${CMAKE_CURRENT_BINARY_DIR}/qmldir.qrc")
file(CONFIGURE OUTPUT "${qmldir_qrc}" CONTENT
"<RCC><qresource prefix=\"/NImageUtils\"><file alias=\"qmldir\">${qml_module_dir}/qmldir</file></qresource></RCC>\n")
set(qmldir_resource "${CMAKE_CURRENT_BINARY_DIR}/qmldir_resource.cpp")
add_custom_command(OUTPUT "${qmldir_resource}"
    COMMAND Qt6::rcc --no-compress --format-version 3 --name nimageutils_qmldir
            --output "${qmldir_resource}" "${qmldir_qrc}"
    DEPENDS "${qmldir_qrc}" "${qml_module_dir}/qmldir"
    COMMENT "Writing the qmldir resource" VERBATIM)
set_source_files_properties("${qmldir_resource}" PROPERTIES HEADER_FILE_ONLY ON SKIP_AUTOGEN ON)
target_sources(imageutils_objects PRIVATE "${qmldir_resource}")
target_include_directories(imageutils_objects PRIVATE "${CMAKE_CURRENT_BINARY_DIR}")

# imageutils::qmlmodule: Debian's linker drops libraries that a program does not use, so a program that calls nothing of the
# library would not load it. One small source file that is added to the program uses the registration function.
add_library(qmlmodule INTERFACE)
add_library(imageutils::qmlmodule ALIAS qmlmodule)
target_link_libraries(qmlmodule INTERFACE imageutils)
target_sources(qmlmodule INTERFACE
    "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/cmake/keep_qmlmodule.cpp>"
    "$<INSTALL_INTERFACE:${CMAKE_INSTALL_LIBDIR}/cmake/imageutils/keep_qmlmodule.cpp>")
install(TARGETS qmlmodule EXPORT imageutils-targets)
install(FILES "${PROJECT_SOURCE_DIR}/cmake/keep_qmlmodule.cpp"
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/imageutils)

# imageutils.qmltypes, made from moc's description of the classes. The folders of Qt's own descriptions differ between
# versions, so their paths are taken from Qt's targets.
qt6_extract_metatypes(imageutils_objects)
get_target_property(own_metatypes imageutils_objects INTERFACE_QT_META_TYPES_BUILD_FILE)
set(foreign_metatypes)
foreach(module Core Gui Qml)
    get_target_property(sources Qt6::${module} INTERFACE_SOURCES)
    foreach(source IN LISTS sources)
        if(source MATCHES "([^:>]*_metatypes\\.json)")
            list(APPEND foreign_metatypes "${CMAKE_MATCH_1}")
        endif()
    endforeach()
endforeach()
list(REMOVE_DUPLICATES foreign_metatypes)
list(JOIN foreign_metatypes "," foreign_metatypes)
set(qmltypes "${qml_module_dir}/imageutils.qmltypes")
add_custom_command(OUTPUT "${qmltypes}"
    COMMAND Qt6::qmltyperegistrar "--generate-qmltypes=${qmltypes}" --import-name=NImageUtils
            --major-version=1 --minor-version=0 "--foreign-types=${foreign_metatypes}"
            -o "${CMAKE_CURRENT_BINARY_DIR}/qmltypes_unused.cpp" "${own_metatypes}"
    DEPENDS "${own_metatypes}"
    COMMENT "Describing the QML types for tools" VERBATIM)
add_custom_target(imageutils_qmltypes ALL DEPENDS "${qmltypes}")

# The optional plugin that the qmldir names: tools and programs that are not linked with the library load it.
add_library(imageutilsplugin MODULE qmlplugin.cpp)
set_target_properties(imageutilsplugin PROPERTIES
    AUTOMOC ON
    LIBRARY_OUTPUT_DIRECTORY "${qml_module_dir}"
    INSTALL_RPATH "$ORIGIN/../../..")
if(WIN32) # where Qt looks for the plugin's name as it stands
    set_target_properties(imageutilsplugin PROPERTIES PREFIX "")
endif()
target_link_libraries(imageutilsplugin PRIVATE imageutils imageutils_options)

set(qml_install_dir "${CMAKE_INSTALL_LIBDIR}/qt6/qml/NImageUtils")
install(TARGETS imageutilsplugin LIBRARY DESTINATION "${qml_install_dir}")
install(FILES "${qml_module_dir}/qmldir" "${qmltypes}" DESTINATION "${qml_install_dir}")
