// SPDX-License-Identifier: Apache-2.0
#include "photographprovider.h"

#include <QtCore/QUrl>
#include <QtQuick/QQuickTextureFactory>

#include <utility>

/// A picture that the window waits for. Qt deletes it after `finished`.
class PreviewResponse : public QQuickImageResponse
{
public:
    /// Called on the thread of the window, once.
    void finish(const QImage& image)
    {
        m_image = image;
        Q_EMIT finished();
    }

    QQuickTextureFactory* textureFactory() const override
    {
        return QQuickTextureFactory::textureFactoryForImage(m_image);
    }

    QString errorString() const override
    {
        return m_image.isNull() ? QStringLiteral("cannot be shown") : QString();
    }

private:
    QImage m_image;
};

PhotographProvider::PhotographProvider(const Options& options, qint64 memoryShare)
    : m_options(options), m_memoryShare(memoryShare)
{
    QObject::connect(&m_worker, &Worker::previewed, &m_worker,
                     [this](const QImage& image) { show(image); });
    QObject::connect(&m_worker, &Worker::unavailable, &m_worker, [this] { show({}); });
}

QQuickImageResponse* PhotographProvider::requestImageResponse(const QString& id,
                                                              const QSize& requestedSize)
{
    Request request{QUrl::fromPercentEncoding(id.toUtf8()), false, requestedSize, m_memoryShare,
                    m_options};
    auto* const response = new PreviewResponse;
    QMetaObject::invokeMethod(
        &m_worker, [this, task = Task{std::move(request), response}] { add(task); },
        Qt::QueuedConnection);
    return response;
}

void PhotographProvider::add(const Task& task)
{
    m_tasks.push_back(task);
    if (m_tasks.size() == 1)
        startNext();
}

void PhotographProvider::startNext() { m_worker.start(m_tasks.front().request); }

void PhotographProvider::show(const QImage& image)
{
    m_tasks.front().response->finish(image);
    m_tasks.pop_front();
    if (!m_tasks.empty())
        startNext();
}
