#include "ShellViewModel.h"

#include <QVariantMap>

namespace quill {

namespace {
struct SectionInfo {
    AppSection section;
    const char* key;
    const char* symbol;
};
constexpr SectionInfo kSections[] = {
    {AppSection::focus, "focus", "timer"},
    {AppSection::insights, "insights", "chart.xyaxis.line"},
    {AppSection::history, "history", "clock.arrow.circlepath"},
    {AppSection::settings, "settings", "slider.horizontal.3"},
};
constexpr int kSectionCount = int(std::size(kSections));
} // namespace

ShellViewModel::ShellViewModel(QObject* parent) : StoreViewModel(parent) {
    refreshAll();
}

void ShellViewModel::connectStore(AppStore* s) {
    connect(s, &AppStore::selectedSectionChanged, this, &ShellViewModel::refreshSection);
    connect(s, &AppStore::phaseChanged, this, &ShellViewModel::refreshActive);
    connect(s, &AppStore::statisticsChanged, this, &ShellViewModel::refreshToday);
    connect(s, &AppStore::settingsChanged, this, &ShellViewModel::refreshAppearance);
    connect(s, &AppStore::toastMessageChanged, this, &ShellViewModel::refreshToast);
    connect(s, &AppStore::showSessionEndDialogChanged, this, &ShellViewModel::refreshOverlays);
    connect(s, &AppStore::showCompletionSheetChanged, this, &ShellViewModel::refreshOverlays);
    connect(s, &AppStore::phaseChanged, this, &ShellViewModel::refreshOverlays);
}

void ShellViewModel::refreshAll() {
    refreshSection();
    refreshActive();
    refreshToday();
    refreshAppearance();
    refreshToast();
    refreshOverlays();
}

QVariantList ShellViewModel::sections() {
    QVariantList out;
    for (const SectionInfo& info : kSections)
        out << QVariantMap{{QStringLiteral("key"), QString::fromLatin1(info.key)},
                           {QStringLiteral("title"), rawValue(info.section)},
                           {QStringLiteral("symbol"), QString::fromLatin1(info.symbol)}};
    return out;
}

QString ShellViewModel::selectedKey() const {
    return QString::fromLatin1(kSections[m_selectedIndex].key);
}

void ShellViewModel::refreshSection() {
    const AppSection section = store() ? store()->selectedSection() : AppSection::focus;
    int index = 0;
    for (int i = 0; i < kSectionCount; ++i)
        if (kSections[i].section == section)
            index = i;
    if (assign(m_selectedIndex, index))
        Q_EMIT sectionChanged();
}

void ShellViewModel::refreshActive() {
    if (assign(m_sessionActive, store() && store()->isSessionActive()))
        Q_EMIT activeChanged();
}

void ShellViewModel::refreshToday() {
    const AppStore* s = store();
    const qint64 streak = s ? s->streakDays() : 0;
    bool changed = assign(m_todayMinutes, QString::number(s ? s->todayMinutes() : 0));
    changed |= assign(m_todaySessions, QString::number(s ? s->todaySessionCount() : 0));
    changed |= assign(m_streakLine, streak != 0 ? QStringLiteral("连续 %1 天").arg(streak)
                                                : QStringLiteral("从今天开始"));
    if (changed)
        Q_EMIT todayChanged();
}

void ShellViewModel::refreshAppearance() {
    const bool dark = !store() || store()->settings().effectiveAppearance() == AppearanceMode::dark;
    if (assign(m_dark, dark))
        Q_EMIT appearanceChanged();
}

void ShellViewModel::refreshToast() {
    const QString message = store() ? store()->toastMessageText() : QString();
    bool changed = assign(m_toastVisible, !message.isEmpty());
    // The text stays while the toast leaves, so it does not go blank mid-fade.
    if (!message.isEmpty())
        changed |= assign(m_toastText, message);
    if (changed)
        Q_EMIT toastChanged();
}

void ShellViewModel::refreshOverlays() {
    bool changed = assign(m_endDialogVisible, store() && store()->showSessionEndDialog());
    changed |= assign(m_reviewVisible, store() && store()->showCompletionSheet());
    changed |= assign(m_reviewPending, store() && store()->isReviewPending());
    // The question has nothing left to ask once the round is over (saved or abandoned).
    if (m_quitConfirmVisible && !roundUnderWay())
        changed |= assign(m_quitConfirmVisible, false);
    if (changed)
        Q_EMIT overlaysChanged();
}

QString ShellViewModel::appearanceLabel() const {
    return m_dark ? QStringLiteral("切换到日间模式") : QStringLiteral("切换到夜间模式");
}

QString ShellViewModel::appearanceSymbol() const {
    return m_dark ? QStringLiteral("sun.max.fill") : QStringLiteral("moon.stars.fill");
}

QString ShellViewModel::appearanceTint() const {
    return m_dark ? QStringLiteral("amber") : QStringLiteral("blue");
}

QString ShellViewModel::traySymbol() const {
    return m_sessionActive ? QStringLiteral("leaf.fill") : QStringLiteral("leaf");
}

QString ShellViewModel::quitCancelTitle() const {
    return m_reviewPending ? QStringLiteral("返回复盘") : QStringLiteral("继续专注");
}

bool ShellViewModel::roundUnderWay() const {
    return store() && (store()->isSessionActive() || store()->isReviewPending());
}

ShellViewModel::CloseAction ShellViewModel::closeAction(bool trayHost) const {
    if (trayHost)
        return HideWindow;
    return roundUnderWay() ? MinimiseWindow : QuitApp;
}

void ShellViewModel::requestQuit() {
    if (!roundUnderWay()) {
        Q_EMIT quitApproved();
        return;
    }
    if (assign(m_quitConfirmVisible, true))
        Q_EMIT overlaysChanged();
    Q_EMIT windowWanted();
}

void ShellViewModel::confirmQuit() {
    if (assign(m_quitConfirmVisible, false))
        Q_EMIT overlaysChanged();
    if (store())
        store()->abandonSession();
    Q_EMIT quitApproved();
}

void ShellViewModel::cancelQuit() {
    if (assign(m_quitConfirmVisible, false))
        Q_EMIT overlaysChanged();
}

void ShellViewModel::selectSection(int index) {
    if (store() && index >= 0 && index < kSectionCount)
        store()->setSelectedSection(kSections[index].section);
}

void ShellViewModel::toggleAppearance() {
    if (store())
        store()->toggleAppearance();
}

void ShellViewModel::continueRound() {
    if (store())
        store()->continueSession();
}

void ShellViewModel::reviewRound() {
    if (store())
        store()->endSessionForReview();
}

void ShellViewModel::abandonRound() {
    if (!store())
        return;
    store()->setShowSessionEndDialog(false);
    store()->abandonSession();
}

} // namespace quill
