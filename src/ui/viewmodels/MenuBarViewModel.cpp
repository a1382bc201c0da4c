#include "MenuBarViewModel.h"

#include "ViewText.h"

namespace quill {

MenuBarViewModel::MenuBarViewModel(AppStore& store, QObject* parent)
    : StoreViewModel(store, parent) {
    connectStore();
    refreshAll();
}

void MenuBarViewModel::connectStore() {
    AppStore* s = &store();
    connect(s, &AppStore::phaseChanged, this, [this] {
        refreshPhase();
        refreshTime();
    });
    connect(s, &AppStore::remainingSecondsChanged, this, &MenuBarViewModel::refreshTime);
    connect(s, &AppStore::breakRemainingSecondsChanged, this, &MenuBarViewModel::refreshTime);
    follow(&AppStore::settingsChanged, &MenuBarViewModel::settingsDerivedChanged);
    follow(&AppStore::isAmbientPlayingChanged, &MenuBarViewModel::ambientChanged);
}

void MenuBarViewModel::refreshAll() {
    refreshPhase();
    refreshTime();
}

void MenuBarViewModel::refreshPhase() {
    bool changed = assign(m_phase, store().phase());
    changed |= assign(m_reviewPending, store().isReviewPending());
    if (changed)
        Q_EMIT phaseStateChanged();
}

void MenuBarViewModel::refreshTime() {
    const AppStore& s = store();
    const QString line =
        s.phase() == SessionPhase::microBreak
            ? QString::number(s.breakRemainingSeconds()) + QStringLiteral(" 秒后继续")
            : viewtext::minutesSeconds(s.remainingSeconds());
    if (assign(m_timeLine, line))
        Q_EMIT timeChanged();
}

QString MenuBarViewModel::headerSymbol() const {
    return microBreak() ? QStringLiteral("sparkles") : QStringLiteral("leaf.fill");
}

QString MenuBarViewModel::title() const {
    if (microBreak())
        return QStringLiteral("微休息");
    if (active())
        return QStringLiteral("专注中");
    return QStringLiteral("Quillmere");
}

bool MenuBarViewModel::active() const {
    return viewtext::isActive(m_phase);
}

QString MenuBarViewModel::pauseTitle() const {
    return m_phase == SessionPhase::paused ? QStringLiteral("继续") : QStringLiteral("暂停");
}

QString MenuBarViewModel::startTitle() const {
    return QStringLiteral("开始 %1 分钟").arg(store().settings().selectedDurationMinutes);
}

QString MenuBarViewModel::ambientLabel() const {
    return store().isAmbientPlaying() ? QStringLiteral("环境音播放中") : QStringLiteral("环境音");
}

QString MenuBarViewModel::ambientButtonTitle() const {
    return store().isAmbientPlaying() ? QStringLiteral("暂停") : QStringLiteral("播放");
}

void MenuBarViewModel::start() {
    store().startSession();
}

void MenuBarViewModel::togglePause() {
    store().togglePause();
}

void MenuBarViewModel::skipMicroBreak() {
    store().skipMicroBreak();
}

void MenuBarViewModel::recordMindWander() {
    store().recordMindWander();
}

void MenuBarViewModel::toggleAmbient() {
    store().toggleAmbientPlayback();
}

} // namespace quill
