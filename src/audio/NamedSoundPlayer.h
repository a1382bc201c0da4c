#pragma once

#include "store/Scheduler.h"
#include "store/SoundPlayer.h"

#include <QStringList>
#include <functional>
#include <memory>

namespace quill {

class AudioDevice;
class CueMixer;

/// Plays the reminder and completion cues by name on their own output. The output is opened
/// in the background on the first cue and closed again after a quiet spell.
class NamedSoundPlayer final : public SoundPlayer {
public:
    using Runner = std::function<void(std::function<void()>)>;
    struct Environment {
        std::shared_ptr<AudioDevice> device;
        std::shared_ptr<Scheduler> scheduler;
        /// Runs device work off the UI thread; a worker thread when absent.
        Runner runInBackground;
    };
    static constexpr std::chrono::milliseconds kIdleClose{8000};

    explicit NamedSoundPlayer(Environment environment);
    ~NamedSoundPlayer() override;

    void play(const QString& name) override;

    /// The slot a name plays in: its index in the cue list, or the beep's slot.
    static int slotFor(const QString& name);
    CueMixer& mixer() { return *m_mixer; }

private:
    void openIfNeeded();
    Environment m_env;
    std::unique_ptr<CueMixer> m_mixer;
    std::shared_ptr<bool> m_clipsPresent = std::make_shared<bool>(false); // worker thread only
    std::shared_ptr<void> m_worker;
    std::unique_ptr<Scheduler::Handle> m_idleTimer;
};

} // namespace quill
