#pragma once

#include "store/focusguard/BannerSwitch.h"
#include "store/focusguard/NotificationHold.h"

#include <QString>
#include <memory>

namespace quill {

/// Holds banners on GNOME, which has no inhibition: its Do Not Disturb switch is turned on
/// for the round, and only when it was off. A mark file, written before the switch is
/// touched, says the app did it; whoever finds the mark (the round's end, quitting, or the
/// next start after a crash) turns banners back on, unless the user already did.
class GnomeBannerHold final : public NotificationHold {
public:
    /// Gives back banners a crashed run left held, if `markFile` says so.
    GnomeBannerHold(std::shared_ptr<BannerSwitch> bannerSwitch, QString markFile);
    ~GnomeBannerHold() override;

    void setHeld(bool held) override;
    /// Available where the switch can be read.
    void probe(Answer answer) override;

private:
    void converge();
    void hold();
    void release();
    /// Runs `step` with the switch's answer unless this hold is gone by then.
    template <class Step> auto guarded(Step step);
    bool marked() const;
    bool writeMark() const;
    void removeMark() const;
    void finishStep();

    std::shared_ptr<BannerSwitch> m_switch;
    QString m_markFile;
    bool m_wanted = false;
    bool m_handled = false; ///< the latest hold was carried out (or found nothing to do)
    bool m_busy = false;
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
};

} // namespace quill
