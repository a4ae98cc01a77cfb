// SPDX-License-Identifier: Apache-2.0
#include <imageutils/qmlmodule.h>

#include <QtQml/QQmlEngineExtensionPlugin>

/// Loads the library into programs that are not linked with it. The library registers the types.
class NImageUtilsPlugin : public QQmlEngineExtensionPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QQmlEngineExtensionInterface_iid)

public:
    explicit NImageUtilsPlugin(QObject* parent = nullptr) : QQmlEngineExtensionPlugin(parent)
    {
        void (*volatile registration)() = &qml_register_types_NImageUtils;
        Q_UNUSED(registration)
    }
};

#include "qmlplugin.moc"
