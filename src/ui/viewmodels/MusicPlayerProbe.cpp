#include "MusicPlayerProbe.h"

#include "audio/music/MusicServices.h"

#include <QFileInfo>

namespace quill {

namespace {

bool sessionBusExpected() {
    if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
        return true;
    // Without an address libdbus would try to autolaunch a bus; only use the standard one.
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !runtime.isEmpty() && QFileInfo::exists(runtime + QStringLiteral("/bus"));
}

class NoBusProbe final : public MusicPlayerProbe {
public:
    void find(MusicService, Done done) override { done(QString()); }
};

// The same discovery and choice as the music request itself, so the card names the player
// the test button will drive.
class MprisMusicPlayerProbe final : public MusicPlayerProbe {
public:
    MprisMusicPlayerProbe(MprisMusicBackend::BusConnector connectBus,
                          std::shared_ptr<Scheduler> scheduler)
        : m_backend(std::move(connectBus), std::move(scheduler), nullptr) {}
    void find(MusicService service, Done done) override {
        m_backend.findPlayer(service, std::move(done));
    }

private:
    MprisMusicBackend m_backend;
};

} // namespace

std::shared_ptr<MusicPlayerProbe> createMusicPlayerProbe() {
    if (!sessionBusExpected())
        return std::make_shared<NoBusProbe>();
    return createMusicPlayerProbe(MprisMusicBackend::sessionBus(), createMusicScheduler());
}

std::shared_ptr<MusicPlayerProbe> createMusicPlayerProbe(MprisMusicBackend::BusConnector connectBus,
                                                         std::shared_ptr<Scheduler> scheduler) {
    return std::make_shared<MprisMusicPlayerProbe>(std::move(connectBus), std::move(scheduler));
}

} // namespace quill
