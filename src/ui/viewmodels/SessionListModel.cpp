#include "SessionListModel.h"

#include <QLocale>

namespace quill {

namespace {
bool sameIds(const QList<StudySession>& a, qsizetype aFrom, const QList<StudySession>& b,
             qsizetype bFrom, qsizetype count) {
    for (qsizetype i = 0; i < count; ++i)
        if (a[aFrom + i].id != b[bFrom + i].id)
            return false;
    return true;
}

QString cardTitle(const StudySession& s) {
    return QString::number(s.roundedMinutes()) + QStringLiteral(" 分钟专注");
}
} // namespace

SessionListModel::SessionListModel(QObject* parent) : QAbstractListModel(parent) {}

void SessionListModel::setSessions(const QList<StudySession>& sessions) {
    const qsizetype before = m_sessions.size();
    const qsizetype after = sessions.size();
    if (after == before + 1 && sameIds(sessions, 1, m_sessions, 0, before)) {
        beginInsertRows({}, 0, 0);
        m_sessions = sessions;
        endInsertRows();
        return;
    }
    if (after + 1 == before) {
        qsizetype gone = 0;
        while (gone < after && sessions[gone].id == m_sessions[gone].id)
            ++gone;
        if (sameIds(sessions, gone, m_sessions, gone + 1, after - gone)) {
            beginRemoveRows({}, int(gone), int(gone));
            m_sessions = sessions;
            endRemoveRows();
            return;
        }
    }
    if (after == before && sameIds(sessions, 0, m_sessions, 0, after)) {
        const QList<StudySession> old = std::exchange(m_sessions, sessions);
        for (qsizetype i = 0; i < after; ++i)
            if (!(old[i] == sessions[i]))
                Q_EMIT dataChanged(index(int(i)), index(int(i)));
        return;
    }
    beginResetModel();
    m_sessions = sessions;
    endResetModel();
}

int SessionListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_sessions.size());
}

QVariant SessionListModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const StudySession& s = m_sessions[index.row()];
    // Rows are formatted when the view asks, so only the cards on screen cost anything.
    switch (role) {
    case IdRole:
        return s.id.toString(QUuid::WithoutBraces);
    case DayRole:
        return s.startedAt.toLocalTime().toString(QStringLiteral("dd"));
    case MonthRole:
        return QLocale(QLocale::Chinese, QLocale::China)
            .toString(s.startedAt.toLocalTime().date(), QStringLiteral("MMM"));
    case TitleRole:
        return cardTitle(s);
    case TaskRole:
        return s.displayTaskName();
    case UncategorizedRole:
        return s.displayTaskName() == uncategorizedTaskName();
    case StatusRole:
        return s.completed ? QStringLiteral("已完成") : QStringLiteral("提前结束");
    case CompletedRole:
        return s.completed;
    case TimeRole:
        return s.startedAt.toLocalTime().toString(QStringLiteral("HH:mm"));
    case RatingRole:
        return QStringLiteral("%1/5").arg(s.focusRating);
    case WanderRole:
        return QString::number(s.mindWanderCount());
    case EnergyRole:
        return QStringLiteral("%1→%2").arg(s.startEnergy).arg(s.endEnergy);
    case ReminderRole:
        return QStringLiteral("%1–%2").arg(s.reminderMinimumMinutes).arg(s.reminderMaximumMinutes);
    case NoteRole:
        return s.note.isEmpty() ? QStringLiteral("没有写本轮备注") : s.note;
    case NoteEmptyRole:
        return s.note.isEmpty();
    case AccessibleRole:
        return QStringLiteral("%1 %2 %3，%4，%5")
            .arg(QLocale(QLocale::Chinese, QLocale::China)
                     .toString(s.startedAt.toLocalTime().date(), QStringLiteral("M月d日")),
                 s.startedAt.toLocalTime().toString(QStringLiteral("HH:mm")), cardTitle(s),
                 s.displayTaskName(),
                 s.completed ? QStringLiteral("已完成") : QStringLiteral("提前结束"));
    default:
        return {};
    }
}

QHash<int, QByteArray> SessionListModel::roleNames() const {
    return {{IdRole, "sessionId"},        {DayRole, "day"},
            {MonthRole, "month"},         {TitleRole, "title"},
            {TaskRole, "task"},           {UncategorizedRole, "uncategorized"},
            {StatusRole, "status"},       {CompletedRole, "completed"},
            {TimeRole, "time"},           {RatingRole, "rating"},
            {WanderRole, "wanders"},      {EnergyRole, "energy"},
            {ReminderRole, "reminder"},   {NoteRole, "note"},
            {NoteEmptyRole, "noteEmpty"}, {AccessibleRole, "accessibleText"}};
}

} // namespace quill
