#include "CompletionViewModel.h"

#include "model/StudySession.h"

#include <algorithm>

namespace quill {

namespace {
qint64 countOf(const QList<FocusEvent>& events, FocusEventKind kind) {
    return std::count_if(events.begin(), events.end(),
                         [kind](const FocusEvent& e) { return e.kind == kind; });
}
} // namespace

CompletionViewModel::CompletionViewModel(AppStore& store, QObject* parent)
    : StoreViewModel(store, parent), m_sheetShown(store.showCompletionSheet()),
      m_focusedMinutes(store.focusedElapsedSeconds() / 60) {
    AppStore* s = &store;
    connect(s, &AppStore::showCompletionSheetChanged, this, &CompletionViewModel::onSheetChanged);
    // Four steps a second during a round, but the sheet shows whole minutes.
    connect(s, &AppStore::focusedElapsedSecondsChanged, this, [this] {
        if (assign(m_focusedMinutes, this->store().focusedElapsedSeconds() / 60))
            Q_EMIT summaryChanged();
    });
    follow(&AppStore::currentEventsChanged, &CompletionViewModel::summaryChanged);
    follow(&AppStore::settingsChanged, &CompletionViewModel::summaryChanged);
    follow(&AppStore::musicMessageChanged, &CompletionViewModel::summaryChanged);
    follow(&AppStore::phaseChanged, &CompletionViewModel::summaryChanged);
    follow(&AppStore::showCompletionSheetChanged, &CompletionViewModel::summaryChanged);
}

void CompletionViewModel::onSheetChanged() {
    const bool shown = store().showCompletionSheet();
    // A newly opened sheet starts from the fixed values, never from the previous review.
    if (shown && !m_sheetShown)
        resetInputs();
    m_sheetShown = shown;
}

void CompletionViewModel::resetInputs() {
    m_focusRating = 4;
    m_endEnergy = 3;
    m_note.clear();
    m_showAbandonConfirmation = false;
    Q_EMIT inputChanged();
}

void CompletionViewModel::setFocusRating(int rating) {
    if (assign(m_focusRating, std::clamp(rating, 1, 5)))
        Q_EMIT inputChanged();
}

void CompletionViewModel::setEndEnergy(int energy) {
    if (assign(m_endEnergy, std::clamp(energy, 1, 5)))
        Q_EMIT inputChanged();
}

void CompletionViewModel::setNote(const QString& note) {
    if (assign(m_note, note))
        Q_EMIT inputChanged();
}

void CompletionViewModel::setShowAbandonConfirmation(bool show) {
    if (assign(m_showAbandonConfirmation, show))
        Q_EMIT inputChanged();
}

QString CompletionViewModel::focusedMinutesText() const {
    return QString::number(m_focusedMinutes);
}

QString CompletionViewModel::wanderCountText() const {
    return QString::number(countOf(store().currentEvents(), FocusEventKind::mindWander));
}

QString CompletionViewModel::reminderCountText() const {
    return QString::number(countOf(store().currentEvents(), FocusEventKind::reminder));
}

QString CompletionViewModel::taskChipText() const {
    return store().selectedTaskName().value_or(uncategorizedTaskName());
}

bool CompletionViewModel::taskChipIsTask() const {
    return store().selectedTaskName().has_value();
}

QString CompletionViewModel::musicMessage() const {
    return store().musicMessageText();
}

void CompletionViewModel::save() {
    store().saveCompletion(m_focusRating, m_endEnergy, m_note);
}

void CompletionViewModel::confirmAbandon() {
    setShowAbandonConfirmation(false);
    store().abandonSession();
}

} // namespace quill
