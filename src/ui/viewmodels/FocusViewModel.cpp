#include "FocusViewModel.h"

#include "ViewText.h"
#include "model/StudySession.h"

#include <algorithm>

namespace quill {

namespace {
qint64 countOf(const QList<FocusEvent>& events, FocusEventKind kind) {
    return std::count_if(events.begin(), events.end(),
                         [kind](const FocusEvent& e) { return e.kind == kind; });
}
QString withUnit(qint64 value, const char* unit) {
    return QString::number(value) + QString::fromUtf8(unit);
}
} // namespace

FocusViewModel::FocusViewModel(AppStore& store, QObject* parent)
    : StoreViewModel(store, parent), m_windowShown(new WindowShown(this)) {
    // Coming into view catches up on the steps it let pass.
    connect(m_windowShown, &WindowShown::shownChanged, this, [this] {
        if (!m_windowShown->shown())
            return;
        refreshTimer();
        refreshMetrics();
    });
    connectStore();
    refreshAll();
}

void FocusViewModel::connectStore() {
    AppStore* s = &store();
    connect(s, &AppStore::phaseChanged, this, [this] {
        refreshTimer();
        refreshPhaseState();
        refreshHeader();
        refreshMetrics();
    });
    connect(s, &AppStore::settingsChanged, this, [this] {
        refreshTimer();
        refreshMetrics();
    });
    connect(s, &AppStore::currentEventsChanged, this, &FocusViewModel::refreshCounts);
    connect(s, &AppStore::statisticsChanged, this, &FocusViewModel::refreshStatistics);
    // A step assigns several counters; reading them once it is done redraws the ring and
    // the time at most once per step, and only when a shown value changed.
    connect(s, &AppStore::stepped, this, [this] {
        // At rest a step can only turn the hour of the greeting; the rest follows the
        // phase and the settings, which notify on their own. Comparing the hour keeps the
        // steps at rest from building any text.
        if (store().localHour() != m_headerHour)
            refreshHeader();
        if (!m_windowShown->shown() || !viewtext::isActive(store().phase()))
            return;
        refreshTimer();
        refreshMetrics();
    });
}

void FocusViewModel::setWindow(QWindow* window) {
    if (this->window() == window)
        return;
    m_windowShown->setWindow(window);
    Q_EMIT windowChanged();
}

void FocusViewModel::refreshAll() {
    refreshHeader();
    refreshStatistics();
    refreshTimer();
    refreshPhaseState();
    refreshMetrics();
    refreshCounts();
}

void FocusViewModel::refreshHeader() {
    const SessionPhase phase = store().phase();
    const bool active = viewtext::isActive(phase);
    const int hour = store().localHour();
    m_headerHour = hour;

    QString title = QStringLiteral("今天，练习一次完整的注意");
    if (phase == SessionPhase::microBreak)
        title = QStringLiteral("让大脑安静十秒");
    else if (phase == SessionPhase::paused)
        title = QStringLiteral("暂停不是中断，是选择");
    else if (phase == SessionPhase::focusing)
        title = QStringLiteral("把注意力放回眼前");
    const QString subtitle =
        active ? QStringLiteral("计时只统计净专注时间，微休息不会占用本轮时长。")
               : QStringLiteral("目标不是硬撑得更久，而是越来越了解自己的注意力。");

    bool changed = assign(m_greeting, viewtext::dayGreeting(hour));
    changed |= assign(m_title, title);
    changed |= assign(m_subtitle, subtitle);
    if (changed)
        Q_EMIT headerChanged();
}

void FocusViewModel::refreshStatistics() {
    const AppStore& s = store();
    bool changed = assign(m_todayMinutesText, withUnit(s.todayMinutes(), " 分钟"));
    changed |= assign(m_todayWanderText, withUnit(s.todayWanderCount(), " 次"));
    changed |= assign(m_streakText, withUnit(s.streakDays(), " 天"));
    changed |= assign(m_recommendationText,
                      QStringLiteral("今天的建议：先做 %1 分钟").arg(s.recommendedMinutes()));
    if (changed)
        Q_EMIT statisticsChanged();
}

QString FocusViewModel::captionTaskName() const {
    const AppStore& s = store();
    if (s.draft() && s.draft()->taskName)
        return *s.draft()->taskName;
    if (const auto selected = s.selectedTaskName())
        return *selected;
    return uncategorizedTaskName();
}

void FocusViewModel::refreshTimer() {
    const AppStore& s = store();
    const SessionPhase phase = s.phase();
    const bool active = viewtext::isActive(phase);

    QString text;
    QString caption = QStringLiteral("准备开始");
    if (phase == SessionPhase::microBreak)
        text = QString::number(s.breakRemainingSeconds());
    else if (phase == SessionPhase::idle)
        text = viewtext::minutesSeconds(s.settings().selectedDurationMinutes * 60);
    else
        text = viewtext::minutesSeconds(s.remainingSeconds());
    if (active) {
        caption = captionTaskName();
        if (phase == SessionPhase::focusing)
            caption += QStringLiteral(" · 净专注剩余");
        else if (phase == SessionPhase::paused)
            caption += QStringLiteral(" · 已暂停");
        else
            caption += QStringLiteral(" · 闭眼 · 松肩 · 慢呼吸");
    }
    const double progress = viewtext::ringProgress(active, false, s.focusedElapsedSeconds(),
                                                   s.plannedSeconds(), 0.01, 1.0);

    bool changed = assign(m_timerText, text);
    changed |= assign(m_timerCaption, caption);
    changed |= assign(m_progress, progress);
    if (changed)
        Q_EMIT timerChanged();
}

void FocusViewModel::refreshPhaseState() {
    const SessionPhase phase = store().phase();
    QString title = QStringLiteral("开始这一轮");
    QString symbol = QStringLiteral("play.fill");
    if (phase == SessionPhase::microBreak) {
        title = QStringLiteral("提前继续");
        symbol = QStringLiteral("arrow.right");
    } else if (phase == SessionPhase::focusing) {
        title = QStringLiteral("暂停");
        symbol = QStringLiteral("pause.fill");
    } else if (phase == SessionPhase::paused) {
        title = QStringLiteral("继续");
    }
    bool changed = assign(m_phaseSymbol, viewtext::phaseSymbol(phase));
    changed |= assign(m_phaseTint, viewtext::phaseTint(phase));
    changed |= assign(m_active, viewtext::isActive(phase));
    changed |= assign(m_primaryTitle, title);
    changed |= assign(m_primarySymbol, symbol);
    changed |=
        assign(m_endAvailable, phase == SessionPhase::focusing || phase == SessionPhase::paused);
    changed |=
        assign(m_signalsEnabled, phase == SessionPhase::focusing || phase == SessionPhase::paused);
    if (changed)
        Q_EMIT phaseStateChanged();
}

void FocusViewModel::refreshMetrics() {
    const AppSettings& settings = store().settings();
    const SessionPhase phase = store().phase();
    const bool showNext =
        settings.showNextReminder && viewtext::isActive(phase) && phase != SessionPhase::microBreak;

    bool changed = assign(m_durationMetric, withUnit(settings.selectedDurationMinutes, " 分钟"));
    changed |= assign(m_reminderMetric, QStringLiteral("%1–%2 分钟")
                                            .arg(settings.reminderMinimumMinutes)
                                            .arg(settings.reminderMaximumMinutes));
    changed |= assign(m_nextReminderVisible, showNext);
    // Only computed while shown: it is the one text that changes on every step.
    changed |= assign(m_nextReminderText,
                      showNext ? store().nextReminderDescription() : QStringLiteral("—"));
    if (changed)
        Q_EMIT metricsChanged();
}

void FocusViewModel::refreshCounts() {
    const QList<FocusEvent>& events = store().currentEvents();
    bool changed =
        assign(m_wanderCountText, withUnit(countOf(events, FocusEventKind::mindWander), " 次"));
    changed |=
        assign(m_fatigueCountText, withUnit(countOf(events, FocusEventKind::fatigue), " 次"));
    if (changed)
        Q_EMIT countsChanged();
}

void FocusViewModel::preparePrimaryAction() {
    store().prepareRoundStart();
}

void FocusViewModel::primaryAction() {
    AppStore& s = store();
    switch (s.phase()) {
    case SessionPhase::idle:
    case SessionPhase::completed:
        s.startSession();
        break;
    case SessionPhase::microBreak:
        s.skipMicroBreak();
        break;
    case SessionPhase::focusing:
    case SessionPhase::paused:
        s.togglePause();
        break;
    }
}

void FocusViewModel::requestEnd() {
    store().setShowSessionEndDialog(true);
}

void FocusViewModel::recordMindWander() {
    store().recordMindWander();
}

void FocusViewModel::recordFatigue() {
    store().recordFatigue();
}

void FocusViewModel::adoptRecommendation() {
    store().adoptRecommendedLength();
}

} // namespace quill
