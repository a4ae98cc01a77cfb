// SPDX-License-Identifier: Apache-2.0
#include <platform/showitem.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QRandomGenerator>
#include <QtCore/QThread>
#include <QtCore/QTimer>
#include <QtCore/QUrl>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCallWatcher>
#include <QtDBus/QDBusUnixFileDescriptor>

#include <algorithm>
#include <filesystem>
#include <utility>

#include <fcntl.h>

namespace {

/// One item on its way from service to service. Deletes itself once it has answered.
class ShowItemRequest : public QObject
{
    Q_OBJECT

public:
    ShowItemRequest(std::string path, std::function<void(bool)> done)
        : QObject(QCoreApplication::instance()), m_path(std::move(path)), m_done(std::move(done)),
          m_bus(QDBusConnection::sessionBus())
    {}

    void start(std::chrono::milliseconds limit)
    {
        m_deadline.setRemainingTime(limit);
        if (m_bus.isConnected())
            askFileManager();
        else
            finish(false);
    }

private Q_SLOTS:
    // 0: done, 1: the user has said no, 2: the portal has failed.
    void takePortalResponse(uint response) { finish(response != 2); }

private:
    void askFileManager();
    void askPortal();
    void awaitPortalResponse();
    template<typename Success, typename Failure>
    void call(const QDBusMessage& question, Success success, Failure failure);
    void finish(bool shown);

    std::string m_path;
    std::function<void(bool)> m_done;
    QDBusConnection m_bus;
    QDeadlineTimer m_deadline;
};

/// Asks and goes on with one of the two when the answer, an error or the end of the time arrives.
template<typename Success, typename Failure>
void ShowItemRequest::call(const QDBusMessage& question, Success success, Failure failure)
{
    // Not 0 or less, which would mean no limit.
    const int limit = int(std::max<qint64>(1, m_deadline.remainingTime()));
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(question, limit), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, success, failure] {
        watcher->deleteLater();
        watcher->isError() ? failure() : success();
    });
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
    const int file = m_deadline.hasExpired() ? -1 : ::open(m_path.c_str(), O_PATH | O_CLOEXEC);
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
        question, [this] { awaitPortalResponse(); }, [this] { finish(false); });
}

/// A portal that has taken the order and is silent may be asking the user, so it is not overtaken.
void ShowItemRequest::awaitPortalResponse()
{
    QTimer::singleShot(int(m_deadline.remainingTime()), this, [this] { finish(true); });
}

void ShowItemRequest::finish(bool shown)
{
    deleteLater();
    if (const auto done = std::exchange(m_done, nullptr))
        done(shown);
}

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
                        std::function<void(bool)> done)
{
    const QCoreApplication* const application = QCoreApplication::instance();
    if (!application || application->thread() != QThread::currentThread()) {
        done(false);
        return;
    }
    (new ShowItemRequest(absolutePath(path), std::move(done)))->start(limit);
}

#include "showitem.moc"
