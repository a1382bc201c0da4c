#pragma once

#include "StoreViewModel.h"

namespace quill {

/// The review sheet: the round's summary, the rating, end energy and note being entered,
/// and the abandon confirmation. The inputs start afresh (4, 3, empty) each time the
/// sheet opens and live only while it is open.
class CompletionViewModel : public StoreViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Built by ViewModels on the app's store")
    /// The focus rating being given, 1–5.
    Q_PROPERTY(int focusRating READ focusRating WRITE setFocusRating NOTIFY inputChanged)
    /// The end energy being given, 1–5.
    Q_PROPERTY(int endEnergy READ endEnergy WRITE setEndEnergy NOTIFY inputChanged)
    /// The optional one-line note.
    Q_PROPERTY(QString note READ note WRITE setNote NOTIFY inputChanged)
    /// The abandon confirmation is shown over the sheet.
    Q_PROPERTY(bool showAbandonConfirmation READ showAbandonConfirmation WRITE
                   setShowAbandonConfirmation NOTIFY inputChanged)
    /// Whole focused minutes (remainder dropped).
    Q_PROPERTY(QString focusedMinutesText READ focusedMinutesText NOTIFY summaryChanged)
    /// Mind-wander events of the round.
    Q_PROPERTY(QString wanderCountText READ wanderCountText NOTIFY summaryChanged)
    /// Reminder events (micro-breaks) of the round.
    Q_PROPERTY(QString reminderCountText READ reminderCountText NOTIFY summaryChanged)
    /// The chosen task, or "未分类".
    Q_PROPERTY(QString taskChipText READ taskChipText NOTIFY summaryChanged)
    /// The chip names a real task (blue) rather than "未分类" (secondary).
    Q_PROPERTY(bool taskChipIsTask READ taskChipIsTask NOTIFY summaryChanged)
    /// The end-of-round music status; empty hides the line.
    Q_PROPERTY(QString musicMessage READ musicMessage NOTIFY summaryChanged)

public:
    explicit CompletionViewModel(AppStore& store, QObject* parent = nullptr);

    int focusRating() const { return m_focusRating; }
    void setFocusRating(int rating);
    int endEnergy() const { return m_endEnergy; }
    void setEndEnergy(int energy);
    QString note() const { return m_note; }
    void setNote(const QString& note);
    bool showAbandonConfirmation() const { return m_showAbandonConfirmation; }
    void setShowAbandonConfirmation(bool show);
    QString focusedMinutesText() const;
    QString wanderCountText() const;
    QString reminderCountText() const;
    QString taskChipText() const;
    bool taskChipIsTask() const;
    QString musicMessage() const;

    /// Stores the round with the three inputs.
    Q_INVOKABLE void save();
    /// The confirmation's confirm choice: the round is dropped without a trace.
    Q_INVOKABLE void confirmAbandon();

Q_SIGNALS:
    void inputChanged();
    void summaryChanged();

private:
    void onSheetChanged();
    void resetInputs();

    int m_focusRating = 4;
    int m_endEnergy = 3;
    QString m_note;
    bool m_showAbandonConfirmation = false;
    bool m_sheetShown = false;
    qint64 m_focusedMinutes = 0;
};

} // namespace quill
