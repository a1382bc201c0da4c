#include "MinimisedWatch.h"

#include "ui/UiLog.h"

#include <QEvent>
#include <QGuiApplication>

namespace quill {

MinimisedWatch::MinimisedWatch(QWindow* window, std::shared_ptr<Scheduler> scheduler,
                               bool exposureCounts)
    : QObject(window), m_window(window), m_scheduler(std::move(scheduler)),
      m_exposureCounts(exposureCounts) {
    connect(window, &QWindow::windowStateChanged, this, &MinimisedWatch::evaluate);
    connect(window, &QWindow::visibleChanged, this, [this](bool visible) {
        if (!visible)
            m_exposedSinceShown = false;
        evaluate();
    });
    window->installEventFilter(this);
    m_exposedSinceShown = window->isExposed();
    m_minimised = window->windowStates() & Qt::WindowMinimized;
}

MinimisedWatch* MinimisedWatch::of(QWindow* window, const std::shared_ptr<Scheduler>& scheduler) {
    if (!window)
        return nullptr;
    if (auto* existing = window->findChild<MinimisedWatch*>(QString(), Qt::FindDirectChildrenOnly))
        return existing;
    return new MinimisedWatch(window, scheduler, platformHidesMinimising());
}

bool MinimisedWatch::platformHidesMinimising() {
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

bool MinimisedWatch::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_window && event->type() == QEvent::Expose) {
        // The window's exposure is already updated when its expose event arrives.
        if (m_window->isExposed())
            m_exposedSinceShown = true;
        evaluate();
    }
    return false;
}

void MinimisedWatch::evaluate() {
    if (!m_window)
        return;
    if (m_window->windowStates() & Qt::WindowMinimized) {
        m_settling.reset();
        set(true);
        return;
    }
    const bool lostExposure =
        m_exposureCounts && m_window->isVisible() && m_exposedSinceShown && !m_window->isExposed();
    if (!lostExposure) {
        m_settling.reset();
        set(false);
        return;
    }
    if (m_minimised || m_settling)
        return;
    m_settling = m_scheduler->after(kSettle, [this] {
        m_settling.reset();
        qCDebug(lcUi) << "The compositor stopped showing the main window: counted as minimised.";
        set(true);
    });
}

void MinimisedWatch::set(bool minimised) {
    if (m_minimised == minimised)
        return;
    m_minimised = minimised;
    Q_EMIT minimisedChanged(minimised);
}

} // namespace quill
