#pragma once

#include <functional>

namespace quill {

/// Holds the desktop's notification banners during a round and gives them back after it.
class NotificationHold {
public:
    using Answer = std::function<void(bool available)>;
    virtual ~NotificationHold() = default;
    /// Holds or gives back the banners. Returns at once; the latest call wins, also over
    /// requests still on their way. Destroying the hold gives the banners back.
    virtual void setHeld(bool held) = 0;
    /// Finds out whether this desktop lets the app hold its banners; `answer` runs once,
    /// later, on the main thread.
    virtual void probe(Answer answer) = 0;
};

} // namespace quill
