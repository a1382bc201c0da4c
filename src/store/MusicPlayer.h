#pragma once

#include "model/SettingsEnums.h"

#include <QString>
#include <functional>

namespace quill {

/// The outcome of one music request: success text or an error message to show.
struct MusicOutcome {
    bool success = false;
    QString text;
};

/// Starts end-of-round music. The completion runs exactly once, on the main thread.
class MusicPlayer {
public:
    using Completion = std::function<void(const MusicOutcome&)>;
    virtual ~MusicPlayer() = default;
    virtual void playRandom(MusicService service, MusicSource source, const QString& playlistName,
                            Completion completion) = 0;
};

} // namespace quill
