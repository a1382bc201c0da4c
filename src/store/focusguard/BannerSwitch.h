#pragma once

#include <QString>
#include <functional>
#include <optional>

namespace quill {

/// GNOME's switch for notification banners (org.gnome.desktop.notifications show-banners;
/// off is Do Not Disturb). Every call returns at once and answers later on the main thread.
class BannerSwitch {
public:
    virtual ~BannerSwitch() = default;
    /// The switch's value; none when it cannot be read (no such setting here).
    virtual void read(std::function<void(std::optional<bool>)> done) = 0;
    virtual void write(bool on, std::function<void(bool written)> done) = 0;
    /// Turns banners back on if they are still off and then removes `markFile`, in a process
    /// of its own that outlives the app: for quitting, when nothing may wait for an answer.
    virtual void restoreOnExit(const QString& markFile) = 0;
};

} // namespace quill
