#pragma once

#include "store/focusguard/NotificationHold.h"
#include "store/focusguard/ScreenLockWatch.h"

#include <vector>

namespace quill::test {

/// Records every hold asked for; answers its probe when the test says so.
class RecordingNotificationHold final : public NotificationHold {
public:
    void setHeld(bool held) override { calls.push_back(held); }
    void probe(Answer answer) override { answers.push_back(std::move(answer)); }
    bool held() const { return !calls.empty() && calls.back(); }
    void answerProbes(bool available) {
        for (const Answer& a : std::exchange(answers, {}))
            a(available);
    }
    std::vector<bool> calls;
    std::vector<Answer> answers;
};

class FakeScreenLock final : public ScreenLockWatch {
public:
    void watch(Locked locked) override { m_locked = std::move(locked); }
    void lock() {
        if (m_locked)
            m_locked();
    }

private:
    Locked m_locked;
};

} // namespace quill::test
