#pragma once

#include "model/StudySession.h"

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

namespace quill {

/// The stored sessions as rows for the history list, in the store's order. A new list that
/// differs from the shown one by one session added or removed updates that row alone, so
/// the view keeps its delegates and scroll position.
class SessionListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Owned by the history view model")

public:
    enum Role {
        IdRole = Qt::UserRole + 1,
        DayRole,   ///< "dd"
        MonthRole, ///< "MMM", zh_CN: "11月"
        TitleRole, ///< "N 分钟专注"
        TaskRole,  ///< task name or "未分类"
        UncategorizedRole,
        StatusRole, ///< "已完成" or "提前结束"
        CompletedRole,
        TimeRole,     ///< "HH:mm"
        RatingRole,   ///< "N/5"
        WanderRole,   ///< mind-wander count
        EnergyRole,   ///< "a→b"
        ReminderRole, ///< "min–max"
        NoteRole,     ///< the note, or "没有写本轮备注"
        NoteEmptyRole,
        AccessibleRole, ///< one line naming the card for assistive technology
    };

    explicit SessionListModel(QObject* parent = nullptr);

    /// Shows `sessions`, changing only the rows that differ when one was added or removed.
    void setSessions(const QList<StudySession>& sessions);
    const QList<StudySession>& sessions() const { return m_sessions; }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

private:
    QList<StudySession> m_sessions;
};

} // namespace quill
