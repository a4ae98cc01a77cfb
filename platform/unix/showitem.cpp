// SPDX-License-Identifier: Apache-2.0
#include <platform/showitem.h>

#include <platform/unix/showitemrequest.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QRandomGenerator>
#include <QtCore/QThread>
#include <QtCore/QTimer>
#include <QtCore/QUrl>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCallWatcher>
#include <QtDBus/QDBusUnixFileDescriptor>

#include <algorithm>
#include <filesystem>
#include <utility>

#include <fcntl.h>

using Platform::ShowItemRequest;

ShowItemRequest::ShowItemRequest(std::string absolutePath, std::function<void(bool)> done)
    : QObject(QCoreApplication::instance()), m_path(std::move(absolutePath)),
      m_done(std::move(done)), m_bus(QDBusConnection::sessionBus())
{}

void ShowItemRequest::start(std::chrono::milliseconds limit)
{
    if (!m_bus.isConnected()) {
        finish(false);
        return;
    }
    m_limit = limit;
    // A portal that has taken the order and is silent may be asking the user, so it is not
    // overtaken.
    QTimer::singleShot(limit, this, [this] { finish(m_portalHasTaken); });
    askFileManager();
}

/// Asks, and goes on with one of the two when the answer or an error arrives.
template<typename Success, typename Failure>
void ShowItemRequest::call(const QDBusMessage& question, Success success, Failure failure)
{
    // The bus forgets the question a little after this request has ended, which is not to look like
    // an error that leads on.
    const auto limit = m_limit + std::chrono::seconds(1);
    auto* watcher =
        new QDBusPendingCallWatcher(m_bus.asyncCall(question, int(limit.count())), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [watcher, success, failure] { watcher->isError() ? failure() : success(); });
}

void ShowItemRequest::askFileManager()
{
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    const QUrl url = QUrl::fromLocalFile(QString::fromStdString(m_path));
    question << QStringList(QString::fromLatin1(url.toEncoded())) << QString();
    call(
        question, [this] { finish(true); }, [this] { askPortal(); });
}

/// The way out of a sandbox; the portal calls the file manager itself.
void ShowItemRequest::askPortal()
{
    // O_PATH: an unreadable file can be shown too, and a pipe does not keep us waiting.
    const int file = ::open(m_path.c_str(), O_PATH | O_CLOEXEC);
    if (file < 0) {
        finish(false);
        return;
    }
    QDBusUnixFileDescriptor descriptor;
    descriptor.giveFileDescriptor(file);

    // Listening begins before the question is sent, so the name of the answer must be ours.
    const QString token =
        QStringLiteral("imageutils%1").arg(QRandomGenerator::global()->generate());
    const QString sender = m_bus.baseService().mid(1).replace(u'.', u'_');
    m_bus.connect(
        QString(),
        QStringLiteral("/org/freedesktop/portal/desktop/request/%1/%2").arg(sender, token),
        QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"), this,
        SLOT(takePortalResponse(uint)));

    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"),
        QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.portal.OpenURI"), QStringLiteral("OpenDirectory"));
    question << QString() << QVariant::fromValue(descriptor)
             << QVariantMap{{QStringLiteral("handle_token"), token}};
    call(
        question, [this] { m_portalHasTaken = true; }, [this] { finish(false); });
}

void ShowItemRequest::finish(bool shown)
{
    deleteLater();
    if (const auto done = std::exchange(m_done, nullptr))
        done(shown);
}

namespace {

/// Absolute, and with one slash at its beginning: "//name/file" would read as a file of the host
/// "name" in a URL.
std::string absolutePath(const std::string& path)
{
    std::error_code error;
    const std::string absolute = std::filesystem::absolute(path, error).string();
    const std::size_t name = absolute.find_first_not_of('/');
    return name == 0 || name == std::string::npos ? absolute : absolute.substr(name - 1);
}

} // namespace

void Platform::showItem(const std::string& path, std::chrono::milliseconds limit,
                        const std::function<void(bool)>& done)
{
    const QCoreApplication* const application = QCoreApplication::instance();
    if (!application || application->thread() != QThread::currentThread()) {
        done(false);
        return;
    }
    (new ShowItemRequest(absolutePath(path), done))->start(limit);
}
