#include "InsightsViewModel.h"

#include "insights/NumberText.h"
#include "insights/Statistics.h"

#include <QLocale>
#include <QVariantMap>
#include <cmath>

namespace quill {

namespace {
constexpr double kRingFullMinutes = 120.0;

QVariantMap tile(const char* symbol, const QString& value, const char* label, const char* footnote,
                 const char* tint) {
    return {{QStringLiteral("symbol"), QString::fromUtf8(symbol)},
            {QStringLiteral("value"), value},
            {QStringLiteral("label"), QString::fromUtf8(label)},
            {QStringLiteral("footnote"), QString::fromUtf8(footnote)},
            {QStringLiteral("tint"), QString::fromUtf8(tint)}};
}

QString minutesText(qint64 minutes) {
    return QString::number(minutes) + QStringLiteral(" 分钟");
}
} // namespace

InsightsViewModel::InsightsViewModel(AppStore& store, QObject* parent)
    : StoreViewModel(store, parent) {
    connectStore();
    refreshAll();
}

void InsightsViewModel::connectStore() {
    AppStore* s = &store();
    // No figure here reads the settings, so a volume drag on another screen costs nothing.
    connect(s, &AppStore::statisticsChanged, this, &InsightsViewModel::refreshAll);
}

std::pair<int, int> InsightsViewModel::niceAxis(qint64 largest) {
    // Small counts keep whole-minute marks 0–4 rather than a one-interval axis.
    if (largest <= 4)
        return {4, 1};
    // About four intervals, each 1, 2 or 5 times a power of ten.
    const double rough = double(largest) / 4.0;
    const double power = std::pow(10.0, std::floor(std::log10(rough)));
    int step = 1;
    for (double factor : {1.0, 2.0, 5.0, 10.0}) {
        if (factor * power >= rough) {
            step = std::max(1, int(std::lround(factor * power)));
            break;
        }
    }
    const int top = int((largest + step - 1) / step) * step;
    return {top, step};
}

void InsightsViewModel::refreshAll() {
    const QList<StudySession>& sessions = store().sessions();
    const QDateTime now = store().now();

    const qint64 capacity = Statistics::attentionCapacityMinutes(sessions);
    const qint64 recommended = Statistics::recommendedMinutes(sessions);
    bool changed = assign(m_sampleText,
                          QStringLiteral("基于最近 %1 轮").arg(Statistics::sampleSize(sessions)));
    changed |=
        assign(m_tiles, QVariantList{tile("brain.head.profile", minutesText(capacity),
                                          "当前稳定专注估计", "走神前时长的中位估计", "mint"),
                                     tile("arrow.up.forward", minutesText(recommended),
                                          "下一轮建议", "连续稳定后每次只加 5 分钟", "blue"),
                                     tile("scope", Statistics::wanderRateText(sessions),
                                          "平均走神率", "每小时主动记录次数", "coral"),
                                     tile("bolt.heart", Statistics::energyDropText(sessions),
                                          "平均精力变化", "开始与结束的主观差值", "amber")});

    const QLocale zh(QLocale::Chinese, QLocale::China);
    QVariantList bars;
    qint64 largest = 0;
    for (const DaySummary& day : Statistics::weeklySummaries(sessions, now)) {
        const QDate date = day.date.toLocalTime().date();
        largest = std::max(largest, day.minutes);
        bars.append(QVariantMap{
            {QStringLiteral("label"), zh.dayName(date.dayOfWeek(), QLocale::NarrowFormat)},
            {QStringLiteral("minutes"), day.minutes},
            {QStringLiteral("accessible"), zh.toString(date, QStringLiteral("M月d日")) +
                                               QStringLiteral(" ") + minutesText(day.minutes)}});
    }
    changed |= assign(m_weekBars, bars);
    const auto [top, step] = niceAxis(largest);
    changed |= assign(m_weekAxisMax, top);
    changed |= assign(m_weekTickCount, top / step + 1);

    changed |= assign(m_ringProgress, std::min(double(capacity) / kRingFullMinutes, 1.0));
    changed |= assign(m_recommendedValue, QString::number(recommended));

    const QList<TaskSummary> shown = Statistics::taskBreakdownRows(sessions);
    const qint64 scale = Statistics::taskBreakdownScale(sessions);
    QVariantList rows;
    for (const TaskSummary& row : shown) {
        rows.append(
            QVariantMap{{QStringLiteral("name"), row.name},
                        {QStringLiteral("uncategorized"), row.name == uncategorizedTaskName()},
                        {QStringLiteral("fraction"), double(row.focusedMinutes) / double(scale)},
                        {QStringLiteral("minutes"), QString::number(row.focusedMinutes)},
                        {QStringLiteral("sessions"), QString::number(row.sessions)},
                        {QStringLiteral("rating"), numbertext::oneDecimal(row.averageFocus)}});
    }
    changed |= assign(m_taskRows, rows);
    changed |= assign(m_taskFootnote,
                      Statistics::taskSummaries(sessions).size() > shown.size()
                          ? QStringLiteral("仅显示专注分钟最多的前 %1 个任务。").arg(shown.size())
                          : QString());

    QVariantList points;
    const QList<StudySession> trend = Statistics::trendPoints(sessions);
    for (qsizetype i = 0; i < trend.size(); ++i)
        points.append(QVariantMap{{QStringLiteral("x"), int(i + 1)},
                                  {QStringLiteral("y"), trend[i].focusRating}});
    changed |= assign(m_trendPoints, points);
    changed |= assign(m_trendAxisMax, int(std::max<qsizetype>(trend.size(), 2)));

    if (changed)
        Q_EMIT figuresChanged();
}

void InsightsViewModel::adoptRecommendation() {
    store().adoptRecommendedLength();
    store().setSelectedSection(AppSection::focus);
}

} // namespace quill
