#include "ShellViewModel.h"

#include <QDir>
#include <QGuiApplication>
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

ShellViewModel::ShellViewModel(AppStore& store, QObject* parent) : StoreViewModel(store, parent) {
    connectStore();
    refreshAll();
}

void ShellViewModel::connectStore() {
    AppStore* s = &store();
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
    const AppSection section = store().selectedSection();
    int index = 0;
    for (int i = 0; i < kSectionCount; ++i)
        if (kSections[i].section == section)
            index = i;
    if (assign(m_selectedIndex, index))
        Q_EMIT sectionChanged();
}

void ShellViewModel::refreshActive() {
    if (assign(m_sessionActive, store().isSessionActive()))
        Q_EMIT activeChanged();
}

void ShellViewModel::refreshToday() {
    const AppStore& s = store();
    const qint64 streak = s.streakDays();
    bool changed = assign(m_todayMinutes, QString::number(s.todayMinutes()));
    changed |= assign(m_todaySessions, QString::number(s.todaySessionCount()));
    changed |= assign(m_streakLine, streak != 0 ? QStringLiteral("连续 %1 天").arg(streak)
                                                : QStringLiteral("从今天开始"));
    if (changed)
        Q_EMIT todayChanged();
}

void ShellViewModel::refreshAppearance() {
    const bool dark = store().settings().effectiveAppearance() == AppearanceMode::dark;
    if (assign(m_dark, dark))
        Q_EMIT appearanceChanged();
}

void ShellViewModel::refreshToast() {
    const QString message = store().toastMessageText();
    bool changed = assign(m_toastVisible, !message.isEmpty());
    // The text stays while the toast leaves, so it does not go blank mid-fade.
    if (!message.isEmpty()) {
        changed |= assign(m_toastText, message);
        changed |= assign(m_toastWarning, store().toastIsWarning());
    }
    if (changed)
        Q_EMIT toastChanged();
}

void ShellViewModel::refreshOverlays() {
    bool changed = assign(m_endDialogVisible, store().showSessionEndDialog());
    changed |= assign(m_reviewVisible, store().showCompletionSheet());
    changed |= assign(m_reviewPending, store().isReviewPending());
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
    return store().isSessionActive() || store().isReviewPending();
}

ShellViewModel::CloseAction ShellViewModel::closeAction(bool trayHost) const {
    if (trayHost)
        return HideWindow;
    return roundUnderWay() ? MinimiseWindow : QuitApp;
}

void ShellViewModel::requestQuit() {
    if (!roundUnderWay()) {
        if (!holdQuit())
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
    store().abandonSession();
    if (!holdQuit())
        Q_EMIT quitApproved();
}

void ShellViewModel::cancelQuit() {
    if (assign(m_quitConfirmVisible, false))
        Q_EMIT overlaysChanged();
}

void ShellViewModel::selectSection(int index) {
    if (index >= 0 && index < kSectionCount)
        store().setSelectedSection(kSections[index].section);
}

void ShellViewModel::toggleAppearance() {
    store().toggleAppearance();
}

void ShellViewModel::continueRound() {
    store().continueSession();
}

void ShellViewModel::reviewRound() {
    store().endSessionForReview();
}

void ShellViewModel::abandonRound() {
    store().setShowSessionEndDialog(false);
    store().abandonSession();
}

bool ShellViewModel::closingQuits() {
    return QGuiApplication::quitOnLastWindowClosed();
}

bool ShellViewModel::holdQuit() {
    if (m_quitConfirmed || !store().lastSaveFailed())
        return false;
    const AppStore::FinalSave last = store().saveBeforeQuit();
    if (last.saved)
        return false;
    QString text = QStringLiteral("无法保存专注记录：") + last.error +
                   QStringLiteral("。现在退出，上次成功保存之后的记录都会丢失。");
    if (!last.copyPath.isEmpty())
        text += QStringLiteral("已另存一份副本：") + QDir::toNativeSeparators(last.copyPath);
    m_quitWarningText = text;
    m_quitWarningVisible = true;
    Q_EMIT quitWarningChanged();
    Q_EMIT windowWanted(); // the question is asked in the main window
    return true;
}

void ShellViewModel::quitAnyway() {
    m_quitConfirmed = true;
    m_quitWarningVisible = false;
    Q_EMIT quitWarningChanged();
    Q_EMIT quitApproved();
}

void ShellViewModel::keepRunning() {
    m_quitWarningVisible = false;
    Q_EMIT quitWarningChanged();
}

} // namespace quill
