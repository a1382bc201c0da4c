#include "HistoryViewModel.h"

#include "insights/NumberText.h"
#include "insights/Statistics.h"

namespace quill {

HistoryViewModel::HistoryViewModel(AppStore& store, QObject* parent)
    : StoreViewModel(store, parent) {
    connectStore();
    refreshAll();
}

void HistoryViewModel::connectStore() {
    AppStore* s = &store();
    connect(s, &AppStore::sessionsChanged, this, &HistoryViewModel::refreshAll);
}

void HistoryViewModel::refreshAll() {
    const QList<StudySession>& sessions = store().sessions();
    m_list.setSessions(sessions);

    const qint64 minutes = Statistics::totalMinutes(sessions);
    const double average = Statistics::averageFocusRating(sessions);
    bool changed = assign(m_empty, sessions.isEmpty());
    changed |= assign(m_countText, QString::number(sessions.size()));
    changed |= assign(m_minutesText, QString::number(minutes));
    changed |= assign(m_averageFocusText, numbertext::oneDecimal(average));
    if (changed)
        Q_EMIT totalsChanged();
}

void HistoryViewModel::requestDelete(int row) {
    if (row < 0 || row >= m_list.rowCount())
        return;
    m_pendingId = m_list.sessions()[row].id;
    Q_EMIT confirmingDeleteChanged();
}

void HistoryViewModel::confirmDelete() {
    if (!m_pendingId)
        return;
    const QUuid id = *std::exchange(m_pendingId, std::nullopt);
    Q_EMIT confirmingDeleteChanged();
    for (const StudySession& s : store().sessions()) {
        if (s.id == id) {
            store().removeSession(s);
            return;
        }
    }
}

void HistoryViewModel::cancelDelete() {
    if (!m_pendingId)
        return;
    m_pendingId.reset();
    Q_EMIT confirmingDeleteChanged();
}

void HistoryViewModel::exportCsv() {
    store().exportSessions();
}

void HistoryViewModel::showFocus() {
    store().setSelectedSection(AppSection::focus);
}

} // namespace quill
