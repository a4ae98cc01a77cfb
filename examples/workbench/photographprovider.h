// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "worker.h"

#include <QtQuick/QQuickAsyncImageProvider>

#include <deque>

class PreviewResponse;

/// Gives the window the photograph at the percent-encoded path after "image://photograph/", before
/// or after its export, as a worker process decodes it.
class PhotographProvider : public QQuickAsyncImageProvider
{
public:
    /// `options` say which photographs are too large to be shown; workers may use `memoryShare`
    /// bytes.
    PhotographProvider(const Options& options, qint64 memoryShare);

    /// Called on a thread of Qt's. The rest happens on that of the window.
    QQuickImageResponse* requestImageResponse(const QString& id,
                                              const QSize& requestedSize) override;

private:
    struct Task
    {
        Request request;
        PreviewResponse* response;
    };

    void add(const Task& task);
    void startNext();
    void show(const QImage& image);

    const Options m_options;
    const qint64 m_memoryShare;
    std::deque<Task> m_tasks; ///< the first one is in work
    Worker m_worker;
};
