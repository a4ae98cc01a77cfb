// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "worker.h"

#include <QtCore/QCache>
#include <QtCore/QPointer>
#include <QtCore/QTimer>

#include <array>
#include <functional>
#include <list>
#include <memory>
#include <optional>

/// Gets pictures from worker processes for whatever shows them. One process decodes photographs for
/// the views, another one makes thumbnails, and a third one encodes exported pictures and reads
/// them back, which may take seconds, so that none waits for another. The third process is ended
/// when it is still encoding a picture that nothing waits for any more.
class PreviewStore : public QObject
{
    Q_OBJECT

public:
    using Take = std::function<void(const Shown&)>;

    /// Each process may use `memoryShare` bytes.
    explicit PreviewStore(qint64 memoryShare);
    ~PreviewStore() override;

    /// Calls `take` when the picture is there, unless `owner` is gone or asks for another one
    /// first.
    void ask(const QObject* owner, const Request& request, Take take);

    /// `owner` needs nothing more.
    void withdraw(const QObject* owner);

    /// Decodes the photographs of `requests` while nothing else is wanted, for later views.
    void prepare(const QList<Request>& requests);

Q_SIGNALS:
    /// A photograph was read; its facts are known now.
    void known(const JobResult& facts);

private:
    struct Wish
    {
        QPointer<const QObject> owner;
        Request request;
        Take take;
    };
    struct Lane
    {
        std::unique_ptr<Worker> worker = std::make_unique<Worker>();
        std::list<Wish> wishes;
        std::optional<Wish> current; ///< in work
    };

    std::array<Lane*, 3> lanes() { return {&m_views, &m_thumbnails, &m_encodings}; }
    void connectLane(Lane& lane);
    void startNext(Lane& lane);
    void endUnwantedEncoding();
    void take(Lane& lane, const Shown& shown);

    const qint64 m_memoryShare;
    Lane m_views;
    Lane m_thumbnails;
    Lane m_encodings;
    QList<Request> m_preparations;  ///< the first one may be in work
    QTimer m_patience;              ///< with an encoding that nothing waits for any more
    QCache<QString, Shown> m_cache; ///< of thumbnails
};
