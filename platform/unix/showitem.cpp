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

#include <utility>

#include <fcntl.h>

using Platform::ShowItemRequest;

namespace {

/// `path` with one slash at its beginning: a URL would take "//name/file" for a file of the host
/// "name".
std::string withOneSlash(const std::string& path)
{
    const std::size_t name = path.find_first_not_of('/');
    return name == 0 || name == std::string::npos ? path : path.substr(name - 1);
}

} // namespace

ShowItemRequest::ShowItemRequest(std::string path, std::function<bool()> isWanted,
                                 std::function<void(bool)> done)
    : QObject(QCoreApplication::instance()), m_path(std::move(path)),
      m_isWanted(std::move(isWanted)), m_done(std::move(done)), m_bus(QDBusConnection::sessionBus())
{}

void ShowItemRequest::start(std::chrono::milliseconds limit)
{
    if (!m_bus.isConnected()) {
        finish(false);
        return;
    }
    m_limit = limit;
    m_deadline = QDeadlineTimer(limit);
    // A portal that has accepted the request and sends no response may be showing a dialog, so
    // nothing else is opened over it.
    QTimer::singleShot(limit, Qt::PreciseTimer, this, [this] { finish(m_portalHasAccepted); });
    askFileManager();
}

/// Sends `question` and calls `success` or `failure` when the answer arrives, unless the request
/// has ended or is no longer wanted by then.
template<typename Success, typename Failure>
void ShowItemRequest::call(const QDBusMessage& question, Success success, Failure failure)
{
    // The bus reports a time-out as an error. It comes after the request has ended, because a
    // service that hangs leaves no time to ask the next one.
    const auto limit = m_limit + std::chrono::seconds(1);
    auto* watcher =
        new QDBusPendingCallWatcher(m_bus.asyncCall(question, int(limit.count())), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [=, this] {
        // After the end of the request this object still lives while a receiver of the result runs
        // an event loop of its own.
        if (!m_done)
            return;
        try {
            if (!m_isWanted())
                finish(false);
            else
                watcher->isError() ? failure() : success();
        } catch (...) { // must not reach the event loop
            finish(false);
        }
    });
}

void ShowItemRequest::askFileManager()
{
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    const QUrl url = QUrl::fromLocalFile(QString::fromStdString(withOneSlash(m_path)));
    question << QStringList(QString::fromLatin1(url.toEncoded())) << QString();
    call(
        question, [this] { finish(true); }, [this] { askPortal(); });
}

/// Asks the desktop portal, which calls the file manager itself and is the only way out of a
/// sandbox.
void ShowItemRequest::askPortal()
{
    // A portal that gets too little time opens the folder after the time limit, and then the
    // fallback has opened it already.
    if (m_deadline.remainingTime() < m_limit.count() / 5) {
        finish(false);
        return;
    }
    // O_PATH also opens a file that the user may not read, and does not wait for a pipe's writer.
    const int file = ::open(m_path.c_str(), O_PATH | O_CLOEXEC);
    if (file < 0) {
        finish(false);
        return;
    }
    QDBusUnixFileDescriptor descriptor;
    descriptor.giveFileDescriptor(file);
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"),
        QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.portal.OpenURI"), QStringLiteral("OpenDirectory"));
    question << QString() << QVariant::fromValue(descriptor)
             << QVariantMap{{QStringLiteral("handle_token"), listenForPortalResponse()}};
    call(
        question, [this] { m_portalHasAccepted = true; }, [this] { finish(false); });
}

/// Listens for the signal with the portal's response, before the question is sent, and returns the
/// token that gives this signal its path.
QString ShowItemRequest::listenForPortalResponse()
{
    const QString token =
        QStringLiteral("imageutils%1").arg(QRandomGenerator::global()->generate());
    const QString sender = m_bus.baseService().mid(1).replace(u'.', u'_');
    m_bus.connect(
        QString(),
        QStringLiteral("/org/freedesktop/portal/desktop/request/%1/%2").arg(sender, token),
        QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"), this,
        SLOT(takePortalResponse(uint)));
    return token;
}

void ShowItemRequest::finish(bool shown)
{
    deleteLater();
    if (const auto done = std::exchange(m_done, nullptr))
        done(shown);
}

void Platform::showItem(const std::string& path, std::chrono::milliseconds limit,
                        const std::function<bool()>& isWanted,
                        const std::function<void(bool)>& done)
{
    const QCoreApplication* const application = QCoreApplication::instance();
    if (!application || application->thread() != QThread::currentThread()) {
        done(false);
        return;
    }
    (new ShowItemRequest(path, isWanted, done))->start(limit);
}
