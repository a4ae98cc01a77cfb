// SPDX-License-Identifier: Apache-2.0
//
// All objects of the library that are constructed when it is loaded, in the order of construction;
// they are destroyed in the reverse order when it is unloaded. The linker chooses the order among
// several source files, so no other file has such an object.
#include <imageutils/library_p.h>

#include <imageutils/imageutils.h>
#include <imageutils/osutils.h>
#include <imageutils/qmlmodule.h>

#include <QtQml/qqml.h>
#include <QtQml/qqmlmoduleregistration.h>

void qml_register_types_NImageUtils()
{
    qmlRegisterTypesAndRevisions<OSUtils>("NImageUtils", 1);
    qmlRegisterTypesAndRevisions<NImageUtils>("NImageUtils", 1);
    qmlRegisterModule("NImageUtils", 1, 0);
}

namespace {
const QQmlModuleRegistration s_moduleRegistration("NImageUtils", qml_register_types_NImageUtils);
} // namespace

#include "qmldir_resource.cpp" // NOLINT(bugprone-suspicious-include): its place in the order

const std::string s_base64Alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

QCache<QString, NImageUtils::NSizeInfo> NImageUtils::s_imageSizeCache;
QMutex NImageUtils::s_imageSizeMutex;
