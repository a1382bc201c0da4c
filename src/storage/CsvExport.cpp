#include "storage/CsvExport.h"

#include "model/LocalDayStarts.h"
#include "storage/Persistence.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <vector>

namespace quill::CsvExport {

namespace {
constexpr qint64 kDayMs = 24 * 3600 * 1000;

// Spreadsheets evaluate a cell that starts like a formula even inside quotes; a leading
// apostrophe makes them show it as the text it is.
bool startsLikeAFormula(QStringView field) {
    if (field.isEmpty())
        return false;
    switch (field.front().unicode()) {
    case '=':
    case '+':
    case '-':
    case '@':
    case '\t':
    case '\r':
        return true;
    default:
        return false;
    }
}

void appendQuoted(QString& out, QStringView field) {
    out += QLatin1Char('"');
    if (startsLikeAFormula(field))
        out += QLatin1Char('\'');
    qsizetype from = 0;
    for (qsizetype quote = field.indexOf(QLatin1Char('"')); quote >= 0;
         quote = field.indexOf(QLatin1Char('"'), from)) {
        out += field.mid(from, quote + 1 - from);
        out += QLatin1Char('"'); // a quote inside the field is doubled
        from = quote + 1;
    }
    out += field.mid(from);
    out += QLatin1Char('"');
}

void appendNumber(QString& out, qint64 value) {
    char buf[24];
    const auto end = std::to_chars(buf, buf + sizeof buf, value).ptr;
    out += QLatin1StringView(buf, end - buf);
}

// Local wall-clock times of instants visited in ascending order. The "yyyy-MM-dd HH:mm:ss"
// pattern has only numbers, written the same in every locale (zh_CN too); what costs is the
// time-zone lookup, so a day of exactly 24 hours is located once and its times are offsets
// from its start.
class LocalTimes {
public:
    void append(QString& out, const QDateTime& instant) {
        if (!instant.isValid())
            return;
        const qint64 t = instant.toMSecsSinceEpoch();
        if (!locate(t)) {
            const QDateTime local = instant.toLocalTime();
            write(out, local.date(), local.time().msecsSinceStartOfDay() / 1000);
            return;
        }
        write(out, m_day, (t - m_start) / 1000);
    }

private:
    // True when `t` falls in a plain 24-hour day, which becomes the current one.
    bool locate(qint64 t) {
        if (!m_day.isValid() || t < m_start || t - m_end >= 32 * kDayMs) {
            m_day = QDateTime::fromMSecsSinceEpoch(t, Qt::LocalTime).date();
            m_start = m_starts.startMs(m_day);
            m_end = m_starts.startMs(m_day.addDays(1));
        }
        while (t >= m_end) {
            m_day = m_day.addDays(1);
            m_start = m_end;
            m_end = m_starts.startMs(m_day.addDays(1));
        }
        return t >= m_start && m_end - m_start == kDayMs;
    }

    static void write(QString& out, const QDate& date, qint64 secondOfDay) {
        char buf[32];
        char* p = buf;
        auto two = [&p](int v) {
            *p++ = char('0' + v / 10 % 10);
            *p++ = char('0' + v % 10);
        };
        const int year = date.year();
        if (year >= 0 && year <= 9999) {
            two(year / 100);
            two(year % 100);
        } else {
            p = std::to_chars(p, buf + 12, year).ptr;
        }
        *p++ = '-';
        two(date.month());
        *p++ = '-';
        two(date.day());
        *p++ = ' ';
        two(int(secondOfDay / 3600));
        *p++ = ':';
        two(int(secondOfDay / 60 % 60));
        *p++ = ':';
        two(int(secondOfDay % 60));
        out += QLatin1StringView(buf, p - buf);
    }

    LocalDayStarts m_starts;
    QDate m_day;
    qint64 m_start = 0;
    qint64 m_end = 0;
};
} // namespace

QString suggestedFileName() {
    return QStringLiteral("Quillmere-专注记录.csv");
}

QString csvText(const QList<StudySession>& sessions) {
    // Oldest first; equal start times keep their list order.
    std::vector<std::pair<qint64, const StudySession*>> sorted;
    sorted.reserve(sessions.size());
    for (const StudySession& s : sessions)
        sorted.emplace_back(s.startedAt.isValid() ? s.startedAt.toMSecsSinceEpoch()
                                                  : std::numeric_limits<qint64>::min(),
                            &s);
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });

    QString text = QStringLiteral("开始时间,任务,计划分钟,专注分钟,完成,专注评分,开始精力,结束精力,"
                                  "走神次数,疲劳次数,提示次数,备注\n");
    text.reserve(text.size() + sessions.size() * 96);
    const QLatin1Char comma(',');
    LocalTimes times;
    bool first = true;
    for (const auto& [start, s] : sorted) {
        if (!first)
            text += QLatin1Char('\n');
        first = false;
        times.append(text, s->startedAt);
        text += comma;
        appendQuoted(text, s->displayTaskName());
        text += comma;
        appendNumber(text, s->plannedMinutes);
        text += comma;
        appendNumber(text, s->roundedMinutes());
        text += comma;
        text += s->completed ? u'是' : u'否';
        text += comma;
        appendNumber(text, s->focusRating);
        text += comma;
        appendNumber(text, s->startEnergy);
        text += comma;
        appendNumber(text, s->endEnergy);
        text += comma;
        appendNumber(text, s->mindWanderCount());
        text += comma;
        appendNumber(text, s->fatigueCount());
        text += comma;
        appendNumber(text, s->reminderCount());
        text += comma;
        appendQuoted(text, s->note);
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
