#pragma once

#include "audio/music/MprisMusicBackend.h"
#include "model/SettingsEnums.h"

#include <QString>
#include <functional>
#include <memory>

namespace quill {

/// Finds the running player the music test would drive, so the music card can name it.
class MusicPlayerProbe {
public:
    using Done = std::function<void(const QString& playerName)>;
    virtual ~MusicPlayerProbe() = default;
    /// Answers once, on the UI thread, with the player's name, or empty when none runs.
    virtual void find(MusicService service, Done done) = 0;
};

/// Asks the session bus for MPRIS players without ever waiting on it; answers empty at once
/// without a session bus.
std::shared_ptr<MusicPlayerProbe> createMusicPlayerProbe();
/// The same on the bus `connectBus` opens, with deadlines on `scheduler`.
std::shared_ptr<MusicPlayerProbe> createMusicPlayerProbe(MprisMusicBackend::BusConnector connectBus,
                                                         std::shared_ptr<Scheduler> scheduler);

} // namespace quill
