#pragma once

#include "store/Scheduler.h"

#include <QObject>
#include <QPointer>
#include <QWindow>
#include <memory>

namespace quill {

/// Whether the main window counts as minimised, for the floating timer and the round-end
/// notification. Where the window system says so (X11) that is the window's state. On
/// Wayland a client is never told: there a shown window that the compositor stopped showing
/// (no longer exposed: minimised, or on another workspace) counts as minimised once that has
/// lasted `kSettle`, and as restored as soon as it is exposed again. The delay keeps one late
/// frame callback from a busy compositor from flashing the floating timer up.
class MinimisedWatch : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds kSettle{600};

    /// `exposureCounts`: a shown window that lost its exposure counts as minimised.
    MinimisedWatch(QWindow* window, std::shared_ptr<Scheduler> scheduler, bool exposureCounts);

    /// The one watch of this window (a child of it), made on first use for this platform.
    static MinimisedWatch* of(QWindow* window, const std::shared_ptr<Scheduler>& scheduler);
    /// True where the window system never reports a minimised window (Wayland).
    static bool platformHidesMinimising();

    bool isMinimised() const { return m_minimised; }

Q_SIGNALS:
    void minimisedChanged(bool minimised);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void evaluate();
    void set(bool minimised);

    QPointer<QWindow> m_window;
    std::shared_ptr<Scheduler> m_scheduler;
    std::unique_ptr<Scheduler::Handle> m_settling;
    bool m_exposureCounts;
    // Only a window that was exposed since it was shown can lose its exposure; before its
    // first frame it is not yet on screen, not minimised.
    bool m_exposedSinceShown = false;
    bool m_minimised = false;
};

} // namespace quill
