#include "audio/music/MprisMusicBackend.h"

#include "audio/music/MprisNetEaseRequest.h"
#include "audio/music/MprisPlayerLookup.h"
#include "audio/music/MprisPlayerRequest.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThreadPool>

namespace quill {

MprisMusicBackend::MprisMusicBackend(BusConnector connectBus, std::shared_ptr<Scheduler> scheduler,
                                     std::shared_ptr<NetEaseLauncher> launcher,
                                     std::shared_ptr<NetEaseLauncher> musicLauncher)
    : m_connectBus(std::move(connectBus)), m_scheduler(std::move(scheduler)),
      m_launcher(std::move(launcher)), m_musicLauncher(std::move(musicLauncher)),
      m_requests(std::make_unique<QObject>()) {}

MprisMusicBackend::~MprisMusicBackend() = default;

MprisMusicBackend::BusConnector MprisMusicBackend::sessionBus() {
    return [] { return QDBusConnection::sessionBus(); };
}

void MprisMusicBackend::playRandom(MusicService service, MusicSource source,
                                   const QString& playlistName, Completion completion) {
    MprisRequest* request = nullptr;
    if (service == MusicService::netEase) {
        request = new MprisNetEaseRequest(m_launcher, m_scheduler, std::move(completion),
                                          m_requests.get());
        request->start(MprisNetEaseRequest::runningDeadline);
    } else {
        request = new MprisPlayerRequest(source, playlistName, m_scheduler, std::move(completion),
                                         m_requests.get(), m_musicLauncher);
        request->start(MprisPlayerRequest::deadline);
    }
    begin(request);
}

void MprisMusicBackend::findPlayer(MusicService service,
                                   std::function<void(const QString& name)> done) {
    auto* request = new MprisPlayerLookup(
        service, m_scheduler,
        [done = std::move(done)](const MusicOutcome& o) { done(o.success ? o.text : QString()); },
        m_requests.get());
    request->start(MprisPlayerLookup::deadline);
    begin(request);
}

void MprisMusicBackend::begin(MprisRequest* request) {
    // The pointer is only read back on the UI thread; a request that has already answered
    // (its deadline passed) is gone by then and the late connection is dropped.
    QPointer<MprisRequest> target(request);
    QThreadPool::globalInstance()->start([connect = m_connectBus, target] {
        const QDBusConnection bus = connect();
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [target, bus] {
                if (target)
                    target->begin(bus);
            },
            Qt::QueuedConnection);
    });
}

} // namespace quill
