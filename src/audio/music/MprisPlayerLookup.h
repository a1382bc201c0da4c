#pragma once

#include "audio/music/MprisRequest.h"
#include "model/SettingsEnums.h"

namespace quill {

/// Names the player a music request for `service` would drive, without touching it: answers
/// with its name, or with an empty text when none runs or the bus did not answer in time.
class MprisPlayerLookup final : public MprisRequest {
    Q_OBJECT
public:
    static constexpr std::chrono::milliseconds deadline{2000};

    MprisPlayerLookup(MusicService service, std::shared_ptr<Scheduler> scheduler,
                      MusicPlayer::Completion completion, QObject* parent);

protected:
    void run() override;
    QString problemAtDeadline() const override { return {}; }

private:
    MusicService m_service;
};

} // namespace quill
