#include "MenuBarViewModel.h"

#include "ViewText.h"

namespace quill {

MenuBarViewModel::MenuBarViewModel(QObject* parent) : StoreViewModel(parent) {
    refreshAll();
}

void MenuBarViewModel::connectStore(AppStore* s) {
    connect(s, &AppStore::phaseChanged, this, [this] {
        refreshPhase();
        refreshTime();
    });
    connect(s, &AppStore::remainingSecondsChanged, this, &MenuBarViewModel::refreshTime);
    connect(s, &AppStore::breakRemainingSecondsChanged, this, &MenuBarViewModel::refreshTime);
    connect(s, &AppStore::settingsChanged, this, &MenuBarViewModel::settingsDerivedChanged);
    connect(s, &AppStore::isAmbientPlayingChanged, this, &MenuBarViewModel::ambientChanged);
}

void MenuBarViewModel::refreshAll() {
    refreshPhase();
    refreshTime();
    Q_EMIT settingsDerivedChanged();
    Q_EMIT ambientChanged();
}

void MenuBarViewModel::refreshPhase() {
    bool changed = assign(m_phase, store() ? store()->phase() : SessionPhase::idle);
    changed |= assign(m_reviewPending, store() && store()->isReviewPending());
    if (changed)
        Q_EMIT phaseStateChanged();
}

void MenuBarViewModel::refreshTime() {
    QString line;
    if (const AppStore* s = store()) {
        line = s->phase() == SessionPhase::microBreak
                   ? QString::number(s->breakRemainingSeconds()) + QStringLiteral(" 秒后继续")
                   : viewtext::minutesSeconds(s->remainingSeconds());
    }
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
    const qint64 minutes = store() ? store()->settings().selectedDurationMinutes
                                   : AppSettings{}.selectedDurationMinutes;
    return QStringLiteral("开始 %1 分钟").arg(minutes);
}

QString MenuBarViewModel::ambientLabel() const {
    return store() && store()->isAmbientPlaying() ? QStringLiteral("环境音播放中")
                                                  : QStringLiteral("环境音");
}

QString MenuBarViewModel::ambientButtonTitle() const {
    return store() && store()->isAmbientPlaying() ? QStringLiteral("暂停") : QStringLiteral("播放");
}

void MenuBarViewModel::start() {
    if (store())
        store()->startSession();
}

void MenuBarViewModel::togglePause() {
    if (store())
        store()->togglePause();
}

void MenuBarViewModel::skipMicroBreak() {
    if (store())
        store()->skipMicroBreak();
}

void MenuBarViewModel::recordMindWander() {
    if (store())
        store()->recordMindWander();
}

void MenuBarViewModel::toggleAmbient() {
    if (store())
        store()->toggleAmbientPlayback();
}

} // namespace quill
