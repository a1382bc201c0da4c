#include "storage/CsvExport.h"

#include "storage/Persistence.h"

#include <QLocale>
#include <algorithm>

namespace quill::CsvExport {

namespace {
QString quoted(const QString& field) {
    QString out = field;
    out.replace(QLatin1Char('"'), QStringLiteral("\"\""));
    return QLatin1Char('"') + out + QLatin1Char('"');
}

QString formatStart(const QDateTime& date) {
    static const QLocale locale(QStringLiteral("zh_CN"));
    return locale.toString(date.toLocalTime(), QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}
} // namespace

QString suggestedFileName() {
    return QStringLiteral("Quillmere-专注记录.csv");
}

QString csvText(const QList<StudySession>& sessions) {
    QList<const StudySession*> sorted;
    sorted.reserve(sessions.size());
    for (const StudySession& s : sessions)
        sorted.append(&s);
    std::stable_sort(
        sorted.begin(), sorted.end(),
        [](const StudySession* a, const StudySession* b) { return a->startedAt < b->startedAt; });

    QString text = QStringLiteral("开始时间,任务,计划分钟,专注分钟,完成,专注评分,开始精力,结束精力,"
                                  "走神次数,疲劳次数,提示次数,备注\n");
    text.reserve(text.size() + sessions.size() * 96);
    const QChar comma = QLatin1Char(',');
    bool first = true;
    for (const StudySession* s : sorted) {
        if (!first)
            text += QLatin1Char('\n');
        first = false;
        text += formatStart(s->startedAt) + comma + quoted(s->displayTaskName()) + comma +
                QString::number(s->plannedMinutes) + comma + QString::number(s->roundedMinutes()) +
                comma + (s->completed ? QStringLiteral("是") : QStringLiteral("否")) + comma +
                QString::number(s->focusRating) + comma + QString::number(s->startEnergy) + comma +
                QString::number(s->endEnergy) + comma + QString::number(s->mindWanderCount()) +
                comma + QString::number(s->fatigueCount()) + comma +
                QString::number(s->reminderCount()) + comma + quoted(s->note);
    }
    return text;
}

bool exportSessions(const QList<StudySession>& sessions, FileChooser& chooser) {
    const auto path =
        chooser.chooseSaveLocation(suggestedFileName(), QStringLiteral("CSV (*.csv)"));
    if (!path || path->isEmpty())
        return false;
    QString error;
    return Persistence::writeAtomically(*path, csvText(sessions).toUtf8(), &error);
}

} // namespace quill::CsvExport
