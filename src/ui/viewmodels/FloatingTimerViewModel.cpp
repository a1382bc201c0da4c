#include "FloatingTimerViewModel.h"

#include "ViewText.h"

#include <QSize>
#include <algorithm>

namespace quill {

FloatingTimerViewModel::FloatingTimerViewModel(AppStore& store, QObject* parent)
    : StoreViewModel(store, parent) {
    connectStore();
    refreshAll();
}

QSize FloatingTimerViewModel::panelSize(bool countdown, bool signalButtons) {
    const int height = countdown ? (signalButtons ? 174 : 116) : (signalButtons ? 70 : 0);
    return {signalButtons ? 292 : 264, height};
}

void FloatingTimerViewModel::connectStore() {
    AppStore* s = &store();
    connect(s, &AppStore::settingsChanged, this, &FloatingTimerViewModel::refreshShape);
    connect(s, &AppStore::phaseChanged, this, [this] {
        refreshPhase();
        refreshTime();
        refreshCounts();
    });
    connect(s, &AppStore::remainingSecondsChanged, this, &FloatingTimerViewModel::refreshTime);
    connect(s, &AppStore::breakRemainingSecondsChanged, this, &FloatingTimerViewModel::refreshTime);
    connect(s, &AppStore::focusedElapsedSecondsChanged, this, &FloatingTimerViewModel::refreshTime);
    connect(s, &AppStore::currentEventsChanged, this, &FloatingTimerViewModel::refreshCounts);
}

void FloatingTimerViewModel::refreshAll() {
    refreshShape();
    refreshPhase();
    refreshTime();
    refreshCounts();
}

void FloatingTimerViewModel::refreshShape() {
    const AppSettings& settings = store().settings();
    bool changed = assign(m_countdown, settings.effectiveFloatingTimerOnMinimize());
    changed = assign(m_signals, settings.effectiveFloatingSignalButtons()) || changed;
    changed = assign(m_dark, settings.effectiveAppearance() == AppearanceMode::dark) || changed;
    if (changed)
        Q_EMIT shapeChanged();
}

void FloatingTimerViewModel::refreshPhase() {
    if (assign(m_phase, store().phase()))
        Q_EMIT phaseStateChanged();
}

void FloatingTimerViewModel::refreshTime() {
    const AppStore& s = store();
    const bool inBreak = s.phase() == SessionPhase::microBreak;
    const double progress = viewtext::ringProgress(true, inBreak, s.focusedElapsedSeconds(),
                                                   s.plannedSeconds(), 0.02, 0.02);
    const QString text = inBreak
                             ? QString::number(s.breakRemainingSeconds()) + QStringLiteral(" 秒")
                             : viewtext::minutesSeconds(s.remainingSeconds());
    // The panel repaints only when what it shows moved, not on every step.
    bool changed = assign(m_ringProgress, progress);
    changed = assign(m_timeText, text) || changed;
    if (changed)
        Q_EMIT timeChanged();
}

void FloatingTimerViewModel::refreshCounts() {
    int wanders = 0, fatigue = 0;
    for (const FocusEvent& e : store().currentEvents()) {
        wanders += e.kind == FocusEventKind::mindWander;
        fatigue += e.kind == FocusEventKind::fatigue;
    }
    bool changed = assign(m_wanders, wanders);
    changed = assign(m_fatigue, fatigue) || changed;
    if (changed)
        Q_EMIT countsChanged();
}

QColor FloatingTimerViewModel::backgroundColor() const {
    QColor c = m_dark ? QColor(16, 25, 29) : QColor(247, 250, 248);
    c.setAlphaF(0.97f);
    return c;
}

QColor FloatingTimerViewModel::outlineColor() const {
    QColor c = m_dark ? QColor(255, 255, 255) : QColor(20, 33, 28);
    c.setAlphaF(m_dark ? 0.15f : 0.11f);
    return c;
}

QColor FloatingTimerViewModel::shadowColor() const {
    QColor c(0, 0, 0);
    c.setAlphaF(m_dark ? 0.48f : 0.2f);
    return c;
}

QString FloatingTimerViewModel::statusWord() const {
    switch (m_phase) {
    case SessionPhase::microBreak:
        return QStringLiteral("微休息");
    case SessionPhase::paused:
        return QStringLiteral("已暂停");
    default:
        return QStringLiteral("专注中");
    }
}

QString FloatingTimerViewModel::statusTint() const {
    return viewtext::phaseTint(m_phase);
}

QString FloatingTimerViewModel::statusSymbol() const {
    switch (m_phase) {
    case SessionPhase::microBreak:
        return QStringLiteral("sparkles");
    case SessionPhase::paused:
        return QStringLiteral("pause.fill");
    default:
        return QStringLiteral("leaf.fill");
    }
}

QString FloatingTimerViewModel::roundSymbol() const {
    switch (m_phase) {
    case SessionPhase::microBreak:
        return QStringLiteral("arrow.right");
    case SessionPhase::paused:
        return QStringLiteral("play.fill");
    default:
        return QStringLiteral("pause.fill");
    }
}

QString FloatingTimerViewModel::roundHelp() const {
    switch (m_phase) {
    case SessionPhase::microBreak:
        return QStringLiteral("提前继续");
    case SessionPhase::paused:
        return QStringLiteral("继续");
    default:
        return QStringLiteral("暂停");
    }
}

QString FloatingTimerViewModel::wanderHelp() const {
    return QStringLiteral("我走神了，本轮已记录 %1 次").arg(m_wanders);
}

QString FloatingTimerViewModel::fatigueHelp() const {
    return QStringLiteral("我开始累了，本轮已记录 %1 次").arg(m_fatigue);
}

void FloatingTimerViewModel::roundAction() {
    if (store().phase() == SessionPhase::microBreak)
        store().skipMicroBreak();
    else
        store().togglePause();
}

void FloatingTimerViewModel::recordMindWander() {
    store().recordMindWander();
}

void FloatingTimerViewModel::recordFatigue() {
    store().recordFatigue();
}

} // namespace quill
