// SPDX-License-Identifier: Apache-2.0
#include <platform/colorscheme.h>

#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusVariant>

// The portal's number is in a variant within a variant. "ReadOne", which has only one, is missing
// on desktops of 2023 and before.
Platform::ColorScheme Platform::preferredColorScheme(std::chrono::milliseconds limit)
{
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"),
        QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("Read"));
    question << QStringLiteral("org.freedesktop.appearance") << QStringLiteral("color-scheme");
    const QDBusMessage answer =
        QDBusConnection::sessionBus().call(question, QDBus::Block, int(limit.count()));
    if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty())
        return ColorScheme::NoAnswer;

    QVariant value = answer.arguments().constFirst();
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = qvariant_cast<QDBusVariant>(value).variant();
    if (value.metaType() != QMetaType::fromType<uint>())
        return ColorScheme::NoAnswer;
    switch (value.toUInt()) {
    case 1:
        return ColorScheme::Dark;
    case 2:
        return ColorScheme::Light;
    default:
        return ColorScheme::NoPreference;
    }
}
