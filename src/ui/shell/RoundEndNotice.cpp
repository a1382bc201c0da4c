#include "RoundEndNotice.h"

#include "DesktopNotifier.h"
#include "MainWindowRestorer.h"
#include "MinimisedWatch.h"
#include "store/AppStore.h"

namespace quill {

RoundEndNotice::RoundEndNotice(AppStore* store, QWindow* mainWindow, DesktopNotifier* notifier,
                               QObject* parent)
    : QObject(parent), m_store(store), m_window(mainWindow), m_notifier(notifier),
      m_minimised(MinimisedWatch::of(mainWindow, store->scheduler())) {
    connect(m_store, &AppStore::showCompletionSheetChanged, this, &RoundEndNotice::onReviewChanged);
    connect(m_notifier, &DesktopNotifier::activated, this, [this] { restoreWindow(m_window); });
}

bool RoundEndNotice::windowOutOfSight() const {
    if (!m_window)
        return false;
    return !m_window->isVisible() || (m_minimised && m_minimised->isMinimised());
}

void RoundEndNotice::onReviewChanged() {
    if (!m_store->showCompletionSheet()) {
        if (m_shown)
            m_notifier->close();
        m_shown = false;
        return;
    }
    if (!windowOutOfSight())
        return;
    // Net time used up leaves nothing remaining; a round ended early keeps its rest.
    const bool completed = m_store->remainingSeconds() <= 0;
    m_notifier->show(completed ? completedSummary() : endedSummary(), body(), actionLabel());
    m_shown = true;
}

} // namespace quill
