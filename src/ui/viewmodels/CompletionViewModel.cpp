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

CompletionViewModel::CompletionViewModel(QObject* parent) : StoreViewModel(parent) {}

void CompletionViewModel::connectStore(AppStore* s) {
    connect(s, &AppStore::showCompletionSheetChanged, this, &CompletionViewModel::onSheetChanged);
    // Four steps a second during a round, but the sheet shows whole minutes.
    connect(s, &AppStore::focusedElapsedSecondsChanged, this, [this] {
        if (assign(m_focusedMinutes, store()->focusedElapsedSeconds() / 60))
            Q_EMIT summaryChanged();
    });
    connect(s, &AppStore::currentEventsChanged, this, &CompletionViewModel::summaryChanged);
    connect(s, &AppStore::settingsChanged, this, &CompletionViewModel::summaryChanged);
    connect(s, &AppStore::musicMessageChanged, this, &CompletionViewModel::summaryChanged);
}

void CompletionViewModel::refreshAll() {
    m_sheetShown = store() && store()->showCompletionSheet();
    m_focusedMinutes = store() ? store()->focusedElapsedSeconds() / 60 : 0;
    resetInputs();
    Q_EMIT summaryChanged();
}

void CompletionViewModel::onSheetChanged() {
    const bool shown = store() && store()->showCompletionSheet();
    // A newly opened sheet starts from the fixed values, never from the previous review.
    if (shown && !m_sheetShown)
        resetInputs();
    m_sheetShown = shown;
    Q_EMIT summaryChanged();
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
    return QString::number(store() ? store()->focusedElapsedSeconds() / 60 : 0);
}

QString CompletionViewModel::wanderCountText() const {
    return QString::number(store() ? countOf(store()->currentEvents(), FocusEventKind::mindWander)
                                   : 0);
}

QString CompletionViewModel::reminderCountText() const {
    return QString::number(store() ? countOf(store()->currentEvents(), FocusEventKind::reminder)
                                   : 0);
}

QString CompletionViewModel::taskChipText() const {
    const auto selected = store() ? store()->selectedTaskName() : std::nullopt;
    return selected.value_or(uncategorizedTaskName());
}

bool CompletionViewModel::taskChipIsTask() const {
    return store() && store()->selectedTaskName().has_value();
}

QString CompletionViewModel::musicMessage() const {
    return store() ? store()->musicMessageText() : QString();
}

void CompletionViewModel::save() {
    if (store())
        store()->saveCompletion(m_focusRating, m_endEnergy, m_note);
}

void CompletionViewModel::confirmAbandon() {
    setShowAbandonConfirmation(false);
    if (store())
        store()->abandonSession();
}

} // namespace quill
