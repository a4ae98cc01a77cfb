// SPDX-License-Identifier: Apache-2.0
//
// On X11 a monitor's profile is a property of the root window; without it the desktop's colour
// service, if one runs, is asked by the name of the output.
#include <platform/monitorprofile.h>

#include <platform/filestate.h>

#include <QtCore/QDeadlineTimer>
#include <QtCore/QFile>
#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusObjectPath>
#include <QtDBus/QDBusVariant>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>

#include <xcb/randr.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <utility>

using Platform::MaxProfileBytes;
using Platform::MonitorProfile;
using Platform::MonitorProfileStep;

namespace {

using Bytes = std::vector<unsigned char>;

struct FreeReply
{
    void operator()(void* reply) const { std::free(reply); }
};
template<typename T>
using Reply = std::unique_ptr<T, FreeReply>;

/// The connection to the X server, null on every other window system.
xcb_connection_t* xConnection()
{
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

std::string atomName(xcb_connection_t* connection, xcb_atom_t atom)
{
    const Reply<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(connection, xcb_get_atom_name(connection, atom), nullptr));
    if (!reply)
        return {};
    return std::string(xcb_get_atom_name_name(reply.get()),
                       std::size_t(xcb_get_atom_name_name_length(reply.get())));
}

/// Whether the X server can list its monitors. libxcb closes the connection, which is Qt's, on a
/// request of an extension that the server does not have.
bool listsMonitors(xcb_connection_t* connection)
{
    const xcb_query_extension_reply_t* const randr =
        xcb_get_extension_data(connection, &xcb_randr_id);
    if (!randr || !randr->present)
        return false;
    // The server keeps the version that its client names, so this is the one that Qt names.
    const Reply<xcb_randr_query_version_reply_t> version(xcb_randr_query_version_reply(
        connection,
        xcb_randr_query_version(connection, XCB_RANDR_MAJOR_VERSION, XCB_RANDR_MINOR_VERSION),
        nullptr));
    return version &&
           std::pair(version->major_version, version->minor_version) >= std::pair(1U, 5U);
}

/// The index of the monitor `name` in the server's list.
std::optional<int> monitorIndex(xcb_connection_t* connection, xcb_window_t root,
                                const std::string& name)
{
    if (!listsMonitors(connection)) {
        const QScreen* const primary = QGuiApplication::primaryScreen();
        return primary && primary->name().toStdString() == name ? std::optional(0) : std::nullopt;
    }
    const Reply<xcb_randr_get_monitors_reply_t> reply(xcb_randr_get_monitors_reply(
        connection, xcb_randr_get_monitors(connection, root, true), nullptr));
    if (!reply)
        return {};
    auto monitors = xcb_randr_get_monitors_monitors_iterator(reply.get());
    for (int i = 0; monitors.rem > 0; ++i, xcb_randr_monitor_info_next(&monitors)) {
        if (atomName(connection, monitors.data->name) == name)
            return i;
    }
    return {};
}

/// The bytes of a property of `root`; empty when it does not exist, is not a list of bytes or is
/// too long. One request reads all bytes, so that another program cannot change them in between.
Bytes byteProperty(xcb_connection_t* connection, xcb_window_t root, const std::string& name)
{
    const Reply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, true, std::uint16_t(name.size()), name.data()),
        nullptr));
    if (!atom || atom->atom == XCB_ATOM_NONE)
        return {};
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection,
        xcb_get_property(connection, false, root, atom->atom, XCB_ATOM_CARDINAL, 0,
                         std::uint32_t(MaxProfileBytes / 4)),
        nullptr));
    if (!reply || reply->type != XCB_ATOM_CARDINAL || reply->format != 8 || reply->bytes_after > 0)
        return {};
    const auto* value = static_cast<const unsigned char*>(xcb_get_property_value(reply.get()));
    return Bytes(value, value + xcb_get_property_value_length(reply.get()));
}

/// The profile that the X server has for the monitor `name`. The property of the first monitor has
/// no number, that of the second has 1.
Bytes profileOfRoot(xcb_connection_t* connection, const std::string& name)
{
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screens.rem > 0; xcb_screen_next(&screens)) {
        const xcb_window_t root = screens.data->root;
        const std::optional<int> index = monitorIndex(connection, root, name);
        if (index)
            return byteProperty(connection, root,
                                *index == 0 ? "_ICC_PROFILE"
                                            : "_ICC_PROFILE_" + std::to_string(*index));
    }
    return {};
}

/// The colour service on the system bus.
class Colord
{
public:
    explicit Colord(std::chrono::milliseconds limit)
        : m_bus(QDBusConnection::systemBus()), m_deadline(limit)
    {}

    /// The file of the profile in use for the output `name`; empty when there is none.
    QString profileFile(const QString& name) const
    {
        const QVariant device =
            ask(QStringLiteral("/org/freedesktop/ColorManager"),
                QStringLiteral("org.freedesktop.ColorManager"),
                QStringLiteral("FindDeviceByProperty"), {QStringLiteral("XRANDR_name"), name});
        const QVariant profiles = property(device.value<QDBusObjectPath>(),
                                           QStringLiteral("Device"), QStringLiteral("Profiles"));
        // Each type is checked first: reading object paths from an array of something else never
        // ends.
        if (profiles.metaType() != QMetaType::fromType<QDBusArgument>() ||
            profiles.value<QDBusArgument>().currentSignature() != QLatin1String("ao"))
            return {};
        const auto paths = qdbus_cast<QList<QDBusObjectPath>>(profiles);
        if (paths.isEmpty())
            return {};
        const QVariant file =
            property(paths.first(), QStringLiteral("Profile"), QStringLiteral("Filename"));
        return file.metaType() == QMetaType::fromType<QString>() ? file.toString() : QString();
    }

private:
    QVariant property(const QDBusObjectPath& object, const QString& interface,
                      const QString& name) const
    {
        return ask(object.path(), QStringLiteral("org.freedesktop.DBus.Properties"),
                   QStringLiteral("Get"),
                   {QStringLiteral("org.freedesktop.ColorManager.") + interface, name})
            .value<QDBusVariant>()
            .variant();
    }

    /// The first value of the answer; invalid if none comes in time.
    QVariant ask(const QString& object, const QString& interface, const QString& method,
                 const QVariantList& arguments) const
    {
        if (object.isEmpty() || m_deadline.hasExpired())
            return {};
        QDBusMessage question = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.ColorManager"), object, interface, method);
        question.setArguments(arguments);
        const QDBusMessage answer =
            m_bus.call(question, QDBus::Block, int(m_deadline.remainingTime()) + 1);
        if (answer.type() != QDBusMessage::ReplyMessage)
            return {};
        return answer.arguments().value(0);
    }

    QDBusConnection m_bus;
    QDeadlineTimer m_deadline;
};

MonitorProfile checked(Bytes bytes)
{
    constexpr std::size_t headerBytes = 128;
    if (bytes.size() < headerBytes || std::memcmp(bytes.data() + 36, "acsp", 4) != 0)
        return {MonitorProfileStep::NoHeader, {}};
    return {MonitorProfileStep::Read, std::move(bytes)};
}

MonitorProfile profileOfFile(const QString& path)
{
    // Only a regular file, because opening a pipe waits for its writer.
    const Platform::OpenedFile opened =
        Platform::openRegularFile(QFile::encodeName(path).constData());
    QFile file;
    if (opened.descriptor < 0 ||
        !file.open(opened.descriptor, QFile::ReadOnly, QFile::AutoCloseHandle))
        return {MonitorProfileStep::CannotOpen, {}};
    // The size of some files, as in /proc, is not that of their contents.
    const QByteArray bytes = file.read(qint64(MaxProfileBytes) + 1);
    if (file.error() != QFile::NoError)
        return {MonitorProfileStep::CannotOpen, {}};
    if (std::size_t(bytes.size()) > MaxProfileBytes)
        return {MonitorProfileStep::NoProfile, {}};
    return checked(Bytes(bytes.begin(), bytes.end()));
}

} // namespace

MonitorProfile Platform::monitorProfile(const std::string& screenName,
                                        std::chrono::milliseconds limit)
{
    xcb_connection_t* const connection = xConnection();
    if (!connection)
        return {MonitorProfileStep::NoContext, {}};
    Bytes bytes = profileOfRoot(connection, screenName);
    if (!bytes.empty())
        return checked(std::move(bytes));
    const QString file = Colord(limit).profileFile(QString::fromStdString(screenName));
    if (file.isEmpty())
        return {MonitorProfileStep::NoProfile, {}};
    return profileOfFile(file);
}
