// SPDX-License-Identifier: Apache-2.0
#include "previewstore.h"

#include <algorithm>
#include <utility>

namespace {

constexpr qsizetype thumbnailBytes = 64 << 20; // some 1,200 of them
constexpr int patience = 300;                  // milliseconds

bool isThumbnail(const Request& request) { return request.view.kind == View::Kind::Thumbnail; }
bool isEncoded(const Request& request) { return request.view.kind == View::Kind::Encoded; }

} // namespace

PreviewStore::PreviewStore(qint64 memoryShare) : m_memoryShare(memoryShare), m_cache(thumbnailBytes)
{
    connectLane(m_views);
    connectLane(m_thumbnails);
    connectLane(m_encodings);
    m_patience.setSingleShot(true);
    connect(&m_patience, &QTimer::timeout, this, &PreviewStore::endUnwantedEncoding);
}

/// Workers may report what they have finished while they are ended.
PreviewStore::~PreviewStore()
{
    for (Lane* const lane : lanes())
        lane->worker->disconnect(this);
}

void PreviewStore::connectLane(Lane& lane)
{
    connect(lane.worker.get(), &Worker::viewed, this,
            [this, &lane](const Shown& shown) { take(lane, shown); });
    connect(lane.worker.get(), &Worker::unavailable, this, [this, &lane](const QString& reason) {
        Shown shown;
        shown.facts.failure = QStringLiteral("no process can be started for it: %1").arg(reason);
        take(lane, shown);
    });
}

void PreviewStore::ask(const QObject* owner, const Request& request, Take take)
{
    withdraw(owner);
    if (isThumbnail(request))
        if (const Shown* const known = m_cache.object(request.path)) {
            take(*known);
            return;
        }
    Lane& lane = isThumbnail(request) ? m_thumbnails : isEncoded(request) ? m_encodings : m_views;
    lane.wishes.push_front({owner, request, std::move(take)}); // the last wish is what is visible
    lane.wishes.front().request.memoryShare = m_memoryShare;
    if (lane.current && &lane == &m_views)
        lane.worker->interrupt(lane.current->request.path == request.path ? Interrupt::Picture
                                                                          : Interrupt::Decoding);
    startNext(lane);
}

void PreviewStore::withdraw(const QObject* owner)
{
    for (Lane* const lane : lanes()) {
        std::erase_if(lane->wishes,
                      [owner](const Wish& wish) { return !wish.owner || wish.owner == owner; });
        if (lane->current && lane->current->owner == owner)
            lane->current->owner.clear();
    }
    if (m_encodings.current && !m_encodings.current->owner && !m_patience.isActive())
        m_patience.start(patience);
}

/// An encoding that ends soon is waited for, because a new process decodes the photograph again.
void PreviewStore::endUnwantedEncoding()
{
    if (!m_encodings.current || m_encodings.current->owner)
        return;
    Worker::end({m_encodings.worker.get()});
    m_encodings.worker = std::make_unique<Worker>();
    m_encodings.current.reset();
    connectLane(m_encodings);
    startNext(m_encodings);
}

void PreviewStore::prepare(const QList<Request>& requests)
{
    m_preparations = requests;
    startNext(m_views);
}

void PreviewStore::startNext(Lane& lane)
{
    if (lane.current)
        return;
    if (!lane.wishes.empty()) {
        lane.current = std::move(lane.wishes.front());
        lane.wishes.pop_front();
    } else if (&lane == &m_views && !m_preparations.isEmpty()) {
        lane.current = Wish{this, m_preparations.first(), [](const Shown&) {}};
        lane.current->request.memoryShare = m_memoryShare;
        lane.current->request.view.kind = View::Kind::Prepare;
    }
    if (lane.current)
        lane.worker->start(lane.current->request);
}

void PreviewStore::take(Lane& lane, const Shown& shown)
{
    const Wish wish = *std::exchange(lane.current, {});
    if (shown.isGivenUp) {
        if (wish.owner && wish.owner != this)
            lane.wishes.push_back(wish); // after the wish that interrupted it
        startNext(lane);
        return;
    }
    if (wish.request.view.kind == View::Kind::Prepare)
        m_preparations.removeIf(
            [&wish](const Request& request) { return request.path == wish.request.path; });
    if (isThumbnail(wish.request) && !shown.image.isNull())
        m_cache.insert(wish.request.path, new Shown(shown), shown.image.sizeInBytes());
    if (!shown.facts.path.isEmpty())
        Q_EMIT known(shown.facts);
    if (wish.owner)
        wish.take(shown);
    startNext(lane);
}
