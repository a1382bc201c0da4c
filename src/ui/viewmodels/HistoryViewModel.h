#pragma once

#include "SessionListModel.h"
#include "StoreViewModel.h"

namespace quill {

/// The history screen: the three totals, the session list, the pending delete and the export.
class HistoryViewModel : public StoreViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Built by ViewModels on the app's store")
    /// The sessions as list rows, newest first.
    Q_PROPERTY(quill::SessionListModel* sessions READ sessions CONSTANT)
    /// No session is stored: the empty state replaces the totals and the list.
    Q_PROPERTY(bool empty READ empty NOTIFY totalsChanged)
    /// Number of sessions.
    Q_PROPERTY(QString countText READ countText NOTIFY totalsChanged)
    /// Sum of each session's rounded minutes.
    Q_PROPERTY(QString minutesText READ minutesText NOTIFY totalsChanged)
    /// Mean focus rating, "%.1f" ("0.0" with no sessions).
    Q_PROPERTY(QString averageFocusText READ averageFocusText NOTIFY totalsChanged)
    /// A delete waits for confirmation: the alert is shown.
    Q_PROPERTY(bool confirmingDelete READ confirmingDelete NOTIFY confirmingDeleteChanged)

public:
    explicit HistoryViewModel(AppStore& store, QObject* parent = nullptr);

    SessionListModel* sessions() { return &m_list; }
    bool empty() const { return m_empty; }
    QString countText() const { return m_countText; }
    QString minutesText() const { return m_minutesText; }
    QString averageFocusText() const { return m_averageFocusText; }
    bool confirmingDelete() const { return m_pendingId.has_value(); }

    /// The context menu's "删除这条记录" on the card at `row`: asks for confirmation.
    Q_INVOKABLE void requestDelete(int row);
    /// The alert's "删除": removes the pending session, if it is still stored.
    Q_INVOKABLE void confirmDelete();
    /// The alert's "取消", or the alert dismissed.
    Q_INVOKABLE void cancelDelete();
    /// "导出 CSV": the store exports every session and reports with a toast.
    Q_INVOKABLE void exportCsv();
    /// The empty state's "去开始第一轮".
    Q_INVOKABLE void showFocus();

Q_SIGNALS:
    void totalsChanged();
    void confirmingDeleteChanged();

private:
    void connectStore();
    void refreshAll();
    SessionListModel m_list;
    bool m_empty = true;
    QString m_countText, m_minutesText, m_averageFocusText;
    /// The session awaiting confirmation; by id, so a list change meanwhile cannot retarget it.
    std::optional<QUuid> m_pendingId;
};

} // namespace quill
