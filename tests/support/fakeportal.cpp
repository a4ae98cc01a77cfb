// SPDX-License-Identifier: Apache-2.0
//
// fakeportal ANSWER: the settings portal of a desktop. ANSWER is its number for the colour scheme,
// or "text", "error" or "hang".
#include <QtDBus/QtDBus>

class Portal : public QDBusVirtualObject
{
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& question, const QDBusConnection& bus) override
    {
        const QString answer = QCoreApplication::arguments().value(1);
        const QVariantList known{"org.freedesktop.appearance", "color-scheme"};
        if (answer == "error" || question.member() != "Read" || question.arguments() != known)
            return bus.send(question.createErrorReply(QDBusError::InvalidArgs, answer));
        const QDBusVariant value(answer == "text" ? answer : QVariant(answer.toUInt()));
        const auto inTwoVariants = QVariant::fromValue(QDBusVariant(QVariant::fromValue(value)));
        return answer == "hang" || bus.send(question.createReply(inTwoVariants));
    }
};

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QDBusConnection bus = QDBusConnection::sessionBus();
    Portal portal;
    bus.registerVirtualObject("/org/freedesktop/portal/desktop", &portal);
    return bus.registerService("org.freedesktop.portal.Desktop") ? QCoreApplication::exec() : 1;
}
