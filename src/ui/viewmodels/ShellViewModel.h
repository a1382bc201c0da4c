#pragma once

#include "StoreViewModel.h"

#include <QVariantList>

namespace quill {

/// The main window around the screens: sidebar sections, today card, appearance switch,
/// toast line, the end dialog's choices and the flags that show the dialog and the sheet.
class ShellViewModel : public StoreViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Built by ViewModels on the app's store")
    /// The four sections: maps with "key", "title" and "symbol", in sidebar order.
    Q_PROPERTY(QVariantList sections READ sections CONSTANT)
    /// Index of the section shown.
    Q_PROPERTY(int selectedIndex READ selectedIndex NOTIFY sectionChanged)
    /// Key of the section shown ("focus", "insights", "history", "settings").
    Q_PROPERTY(QString selectedKey READ selectedKey NOTIFY sectionChanged)
    /// A round is running (the focus row's dot, the tray's filled leaf).
    Q_PROPERTY(bool sessionActive READ sessionActive NOTIFY activeChanged)
    /// Today's minutes, as a bare number.
    Q_PROPERTY(QString todayMinutesValue READ todayMinutesValue NOTIFY todayChanged)
    /// Today's round count, as a bare number.
    Q_PROPERTY(QString todaySessionsValue READ todaySessionsValue NOTIFY todayChanged)
    /// "连续 N 天", or "从今天开始" without a streak.
    Q_PROPERTY(QString streakLine READ streakLine NOTIFY todayChanged)
    /// The dark appearance is chosen (dark or unset).
    Q_PROPERTY(bool dark READ dark NOTIFY appearanceChanged)
    /// The appearance button's label.
    Q_PROPERTY(QString appearanceLabel READ appearanceLabel NOTIFY appearanceChanged)
    /// Its symbol.
    Q_PROPERTY(QString appearanceSymbol READ appearanceSymbol NOTIFY appearanceChanged)
    /// Its tint name.
    Q_PROPERTY(QString appearanceTint READ appearanceTint NOTIFY appearanceChanged)
    /// The toast is shown.
    Q_PROPERTY(bool toastVisible READ toastVisible NOTIFY toastChanged)
    /// The toast's text; keeps the last message while the toast fades out.
    Q_PROPERTY(QString toastText READ toastText NOTIFY toastChanged)
    /// The toast reports a failure: a warning symbol instead of the check mark.
    Q_PROPERTY(bool toastWarning READ toastWarning NOTIFY toastChanged)
    /// The round-end dialog is shown.
    Q_PROPERTY(bool endDialogVisible READ endDialogVisible NOTIFY overlaysChanged)
    /// The review sheet is shown.
    Q_PROPERTY(bool reviewVisible READ reviewVisible NOTIFY overlaysChanged)
    /// The question before quitting during a round or while a review waits is shown.
    Q_PROPERTY(bool quitConfirmVisible READ quitConfirmVisible NOTIFY overlaysChanged)
    /// Its cancel choice: "继续专注" during a round, "返回复盘" while a review waits.
    Q_PROPERTY(QString quitCancelTitle READ quitCancelTitle NOTIFY overlaysChanged)
    /// The tray icon's symbol: "leaf.fill" during a round, else "leaf".
    Q_PROPERTY(QString traySymbol READ traySymbol NOTIFY activeChanged)
    /// Closing the main window quits the app (no tray keeps it running).
    Q_PROPERTY(bool closingQuits READ closingQuits CONSTANT)
    /// Quitting waits for the user: the last save failed and so did one more try.
    Q_PROPERTY(bool quitWarningVisible READ quitWarningVisible NOTIFY quitWarningChanged)
    /// What is lost by quitting now, and where a copy went.
    Q_PROPERTY(QString quitWarningText READ quitWarningText NOTIFY quitWarningChanged)

public:
    /// What closing the main window does.
    enum CloseAction { HideWindow, MinimiseWindow, QuitApp };
    Q_ENUM(CloseAction)

    explicit ShellViewModel(AppStore& store, QObject* parent = nullptr);

    static QVariantList sections();
    int selectedIndex() const { return m_selectedIndex; }
    QString selectedKey() const;
    bool sessionActive() const { return m_sessionActive; }
    QString todayMinutesValue() const { return m_todayMinutes; }
    QString todaySessionsValue() const { return m_todaySessions; }
    QString streakLine() const { return m_streakLine; }
    bool dark() const { return m_dark; }
    QString appearanceLabel() const;
    QString appearanceSymbol() const;
    QString appearanceTint() const;
    bool toastVisible() const { return m_toastVisible; }
    QString toastText() const { return m_toastText; }
    bool toastWarning() const { return m_toastWarning; }
    bool endDialogVisible() const { return m_endDialogVisible; }
    bool reviewVisible() const { return m_reviewVisible; }
    QString traySymbol() const;
    static bool closingQuits();
    bool quitWarningVisible() const { return m_quitWarningVisible; }
    QString quitWarningText() const { return m_quitWarningText; }
    bool quitConfirmVisible() const { return m_quitConfirmVisible; }
    QString quitCancelTitle() const;

    Q_INVOKABLE void selectSection(int index);
    Q_INVOKABLE void toggleAppearance();
    /// The end dialog's continue choice, also the scrim behind it.
    Q_INVOKABLE void continueRound();
    /// The end dialog's review choice.
    Q_INVOKABLE void reviewRound();
    /// The end dialog's abandon choice.
    Q_INVOKABLE void abandonRound();
    /// The app is about to quit: when the last save failed, saves once more; true when that
    /// failed too, so the quit is held and the warning shown until the user decides.
    Q_INVOKABLE bool holdQuit();
    /// The warning's choices.
    Q_INVOKABLE void quitAnyway();
    Q_INVOKABLE void keepRunning();

    /// Closing the window never ends a round: with a tray host the window hides (the tray
    /// brings it back); without one it minimises while a round or its review is under way, and
    /// only an idle app quits.
    Q_INVOKABLE quill::ShellViewModel::CloseAction closeAction(bool trayHost) const;
    /// Ctrl+Q and the tray's "退出": quits at once when idle, else asks first.
    Q_INVOKABLE void requestQuit();
    /// The question's confirm choice: the round is abandoned and the app quits.
    Q_INVOKABLE void confirmQuit();
    /// The question's cancel choice, also its scrim and Escape.
    Q_INVOKABLE void cancelQuit();

Q_SIGNALS:
    void sectionChanged();
    void activeChanged();
    void todayChanged();
    void appearanceChanged();
    void toastChanged();
    void overlaysChanged();
    void quitWarningChanged();
    /// The app may quit now.
    void quitApproved();
    /// The main window must come to the front (the quit question is shown in it).
    void windowWanted();

private:
    void connectStore();
    void refreshAll();
    void refreshSection();
    void refreshActive();
    void refreshToday();
    void refreshAppearance();
    void refreshToast();
    void refreshOverlays();
    /// A round runs or a finished one waits for its review.
    bool roundUnderWay() const;

    int m_selectedIndex = 0;
    bool m_sessionActive = false;
    QString m_todayMinutes, m_todaySessions, m_streakLine;
    bool m_dark = true;
    bool m_toastVisible = false;
    QString m_toastText;
    bool m_toastWarning = false;
    bool m_endDialogVisible = false;
    bool m_reviewVisible = false;
    bool m_quitWarningVisible = false;
    bool m_quitConfirmed = false;
    QString m_quitWarningText;
    bool m_reviewPending = false;
    bool m_quitConfirmVisible = false;
};

} // namespace quill
