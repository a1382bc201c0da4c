#pragma once

#include "model/AppSettings.h"
#include "model/SessionDraft.h"
#include "model/SessionPhase.h"
#include "model/StudySession.h"
#include "store/DataFileSaver.h"
#include "store/LocalTimeCache.h"
#include "store/RoundClock.h"
#include "store/Services.h"
#include "store/StepTimer.h"

#include <QList>
#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace quill {

/// The one object that owns the application's state and runs a focus round.
/// Every published property notifies on every assignment, also when the value is unchanged.
class AppStore : public QObject {
    Q_OBJECT
    /// Sidebar section shown; written by the screens.
    Q_PROPERTY(quill::AppSection selectedSection READ selectedSection WRITE setSelectedSection
                   NOTIFY selectedSectionChanged)
    /// Phase of the current round.
    Q_PROPERTY(quill::SessionPhase phase READ phase NOTIFY phaseChanged)
    /// True while focusing, paused or in a micro-break.
    Q_PROPERTY(bool isSessionActive READ isSessionActive NOTIFY phaseChanged)
    /// Net focus seconds still left, rounded up.
    Q_PROPERTY(qint64 remainingSeconds READ remainingSeconds NOTIFY remainingSecondsChanged)
    /// Seconds left in the running micro-break, rounded up.
    Q_PROPERTY(
        qint64 breakRemainingSeconds READ breakRemainingSeconds NOTIFY breakRemainingSecondsChanged)
    /// Net focus seconds done in the current round.
    Q_PROPERTY(
        qint64 focusedElapsedSeconds READ focusedElapsedSeconds NOTIFY focusedElapsedSecondsChanged)
    /// Planned seconds of the current round (0 when none).
    Q_PROPERTY(qint64 plannedSeconds READ plannedSeconds NOTIFY phaseChanged)
    /// Number of events logged in the current round.
    Q_PROPERTY(int currentEventCount READ currentEventCount NOTIFY currentEventsChanged)
    /// Energy before starting, edited by the focus screen.
    Q_PROPERTY(qint64 currentStartEnergy READ currentStartEnergy WRITE setCurrentStartEnergy NOTIFY
                   currentStartEnergyChanged)
    /// The review sheet is shown.
    Q_PROPERTY(bool showCompletionSheet READ showCompletionSheet NOTIFY showCompletionSheetChanged)
    /// The dialog asking how to end the round is shown; the screens open it.
    Q_PROPERTY(bool showSessionEndDialog READ showSessionEndDialog WRITE setShowSessionEndDialog
                   NOTIFY showSessionEndDialogChanged)
    /// Status line of the end-of-round music; empty when none.
    Q_PROPERTY(QString musicMessage READ musicMessageText NOTIFY musicMessageChanged)
    /// The one-line transient message; empty when none.
    Q_PROPERTY(QString toastMessage READ toastMessageText NOTIFY toastMessageChanged)
    /// The toast reports a failure (and shows a warning rather than a check mark).
    Q_PROPERTY(bool toastIsWarning READ toastIsWarning NOTIFY toastMessageChanged)
    /// The ambient sound is playing.
    Q_PROPERTY(bool isAmbientPlaying READ isAmbientPlaying NOTIFY isAmbientPlayingChanged)
    /// Time to the next reminder as "mm:ss", or "—".
    Q_PROPERTY(QString nextReminderDescription READ nextReminderDescription NOTIFY stepped)
    /// Number of stored sessions.
    Q_PROPERTY(int sessionCount READ sessionCount NOTIFY sessionsChanged)
    /// Today's summed session minutes.
    Q_PROPERTY(qint64 todayMinutes READ todayMinutes NOTIFY statisticsChanged)
    /// Number of today's sessions.
    Q_PROPERTY(int todaySessionCount READ todaySessionCount NOTIFY statisticsChanged)
    /// Today's mind-wander events.
    Q_PROPERTY(qint64 todayWanderCount READ todayWanderCount NOTIFY statisticsChanged)
    /// Consecutive days with a session, ending today or yesterday.
    Q_PROPERTY(qint64 streakDays READ streakDays NOTIFY statisticsChanged)
    /// Stable-focus estimate in minutes.
    Q_PROPERTY(
        qint64 attentionCapacityMinutes READ attentionCapacityMinutes NOTIFY statisticsChanged)
    /// Suggested length of the next round in minutes.
    Q_PROPERTY(qint64 recommendedMinutes READ recommendedMinutes NOTIFY statisticsChanged)
    /// The desktop lets the app hold its notification banners during a round.
    Q_PROPERTY(bool notificationHoldAvailable READ notificationHoldAvailable NOTIFY
                   notificationHoldAvailableChanged)

public:
    explicit AppStore(Services services, QObject* parent = nullptr);
    ~AppStore() override;

    // --- state ---
    AppSection selectedSection() const { return m_selectedSection; }
    void setSelectedSection(AppSection section);
    const AppSettings& settings() const { return m_settings; }
    /// The main thread's timers, for the windows' own delayed calls.
    const std::shared_ptr<Scheduler>& scheduler() const { return m_services.scheduler; }
    /// Whether an edit may happen while a round runs: what designs the round is held until it
    /// ends.
    enum class EditTime { anyTime, betweenRounds };
    /// The one way the screens change settings: `edit` changes a copy, which is repaired at
    /// once and assigned, so a control shows at once the value that is kept. Returns false
    /// when the edit is refused because a round runs.
    bool editSettings(const std::function<void(AppSettings&)>& edit,
                      EditTime when = EditTime::anyTime);
    /// The design of the round is held while one runs.
    bool isRoundDesignLocked() const { return isSessionActive(); }
    /// The next round gets the suggested length.
    void adoptRecommendedLength();
    const QList<StudySession>& sessions() const { return m_sessions; }
    SessionPhase phase() const { return m_phase; }
    bool isSessionActive() const;
    /// A finished round waits for its review (no new round starts meanwhile).
    bool isReviewPending() const;
    qint64 remainingSeconds() const { return m_remainingSeconds; }
    qint64 breakRemainingSeconds() const { return m_breakRemainingSeconds; }
    qint64 focusedElapsedSeconds() const { return m_focusedElapsedSeconds; }
    qint64 plannedSeconds() const { return m_plannedSeconds; }
    const QList<FocusEvent>& currentEvents() const { return m_currentEvents; }
    int currentEventCount() const { return int(m_currentEvents.size()); }
    qint64 currentStartEnergy() const { return m_currentStartEnergy; }
    void setCurrentStartEnergy(qint64 energy);
    bool showCompletionSheet() const { return m_showCompletionSheet; }
    bool showSessionEndDialog() const { return m_showSessionEndDialog; }
    void setShowSessionEndDialog(bool show);
    const std::optional<QString>& musicMessage() const { return m_musicMessage; }
    QString musicMessageText() const { return m_musicMessage.value_or(QString()); }
    const std::optional<QString>& toastMessage() const { return m_toastMessage; }
    QString toastMessageText() const { return m_toastMessage.value_or(QString()); }
    bool toastIsWarning() const { return m_toastIsWarning; }
    bool isAmbientPlaying() const { return m_isAmbientPlaying; }
    QString nextReminderDescription() const;
    int sessionCount() const { return int(m_sessions.size()); }
    const std::optional<SessionDraft>& draft() const { return m_draft; }
    /// The current time, from the injected clock.
    QDateTime now() const;
    /// The local hour of now(); cheap enough for every step.
    int localHour() const;
    /// Blocks until every save handed to the background writer is on disk. The store's
    /// destruction does the same, after writing a settings change still waiting to settle.
    void waitForSaves();
    /// Writes a settings change still waiting to settle and waits for every save: what the
    /// app does last, however it ends.
    void flushSaves();
    /// The last save failed: what the user did since the last good save is only in memory.
    bool lastSaveFailed() const { return m_lastSaveFailed; }
    /// What a final save before quitting came to.
    struct FinalSave {
        bool saved = false;
        QString error;
        QString copyPath; ///< where a copy went when the data file could not be written
    };
    /// Writes everything now (a settings change waiting to settle too) and waits for it. When
    /// that fails, a copy goes to the rescue folder if it can be written.
    FinalSave saveBeforeQuit();

    // --- round ---
    void startSession(std::optional<qint64> minutes);
    Q_INVOKABLE void startSession() { startSession(std::nullopt); }
    Q_INVOKABLE void togglePause();
    Q_INVOKABLE void recordMindWander();
    Q_INVOKABLE void recordFatigue();
    Q_INVOKABLE void skipMicroBreak();
    Q_INVOKABLE void endSessionForReview();
    /// The end dialog's continue choice: the round runs on.
    Q_INVOKABLE void continueSession();
    Q_INVOKABLE void abandonSession();
    /// The screen locked: a running round pauses, as after a sleep, unless the user chose
    /// otherwise.
    void pauseForScreenLock();
    bool notificationHoldAvailable() const { return m_notificationHoldAvailable; }
    Q_INVOKABLE void saveCompletion(qint64 focusRating, qint64 endEnergy, const QString& note);

    // --- commands ---
    std::optional<QString> selectedTaskName() const;
    void selectTask(const std::optional<QString>& name);
    Q_INVOKABLE bool addTask(const QString& name);
    Q_INVOKABLE void removeTask(const QString& name);
    Q_INVOKABLE void toggleAppearance();
    Q_INVOKABLE void clearHistory();
    void removeSession(const StudySession& session);
    Q_INVOKABLE void exportSessions();
    Q_INVOKABLE void toast(const QString& message);
    /// A toast that reports a failure.
    void warn(const QString& message);
    Q_INVOKABLE void playSound(const QString& name);

    // --- ambient and music ---
    void toggleAmbientSound(AmbientSound sound);
    void setAmbientVolume(double volume, AmbientSound sound);
    bool isAmbientSelected(AmbientSound sound) const;
    Q_INVOKABLE void toggleAmbientPlayback();
    /// The pointer or the keyboard is on a control that plays ambient sound.
    Q_INVOKABLE void prepareAmbientPlayback();
    /// The same for starting or resuming a round: readies the sound it will start, if any.
    void prepareRoundStart();
    Q_INVOKABLE void testMusic();

    // --- statistics, recomputed on every read ---
    QList<StudySession> todaySessions() const;
    int todaySessionCount() const { return int(todaySessions().size()); }
    qint64 todayMinutes() const;
    qint64 todayWanderCount() const;
    qint64 streakDays() const;
    qint64 attentionCapacityMinutes() const;
    qint64 recommendedMinutes() const;
    Q_INVOKABLE qint64 taskSessionCount(const QString& name) const;

Q_SIGNALS:
    void selectedSectionChanged();
    void settingsChanged();
    void sessionsChanged();
    void phaseChanged();
    void remainingSecondsChanged();
    void breakRemainingSecondsChanged();
    void focusedElapsedSecondsChanged();
    void currentEventsChanged();
    void currentStartEnergyChanged();
    void showCompletionSheetChanged();
    void showSessionEndDialogChanged();
    void musicMessageChanged();
    void toastMessageChanged();
    void isAmbientPlayingChanged();
    /// After every timer step; time-derived texts refresh on it.
    void stepped();
    /// The sessions changed or the calendar day turned.
    void statisticsChanged();
    void notificationHoldAvailableChanged();

private:
    void tick();
    void scheduleNextReminder();
    void beginMicroBreak();
    void resumeAfterMicroBreak();
    void appendEvent(FocusEventKind kind);
    void normalizeSettings();
    void finishSession(bool completed);
    void playAmbient();
    static constexpr QStringView kAmbientFailedToast = u"环境音无法播放，请检查声音输出设备。";
    void stopAmbient();
    void onSettingsSettled();
    /// Returns the save's serial.
    std::uint64_t saveNow();
    void onSaveFinished(const DataFileSaver::Outcome& outcome);
    void onRefreshFinished(const DataFileSaver::Outcome& outcome);
    PersistedData persistedData() const { return {m_settings, m_sessions, m_ledger}; }
    /// Merges what another writer changed in the file while the app runs.
    void refreshFromFile();
    /// Takes in data merged with an outside change.
    void adoptMerged(const DataFileSaver::Outcome& outcome);
    void updateAmbientLevels();
    qint64 monotonicMs() const;
    /// Wall-clock time for a date stored with the round, never before the round's start even
    /// when the wall clock was set back during it.
    QDateTime dateInRound() const;
    /// True once per suspend, on the first step after waking.
    bool sleptSinceLastStep();
    void pauseAfterSleep();
    /// Pauses a focusing round (a running break ends as if skipped first), with `toast`.
    void pauseRunningRound(const QString& toast);
    void startFocusGuard();
    /// Banners are held exactly while focusing or in a break, when the user asked for it.
    void updateNotificationHold();
    /// The focusing step's counters; returns the net seconds left.
    double updateFocusCounters();

    /// The one assignment path for settings: notifies, feeds the ambient levels, debounces the
    /// write. From outside, settings change through `editSettings`.
    void setSettings(const AppSettings& settings);
    void setPhase(SessionPhase phase);
    void setRemainingSeconds(qint64 v);
    void setBreakRemainingSeconds(qint64 v);
    void setFocusedElapsedSeconds(qint64 v);
    void setCurrentEvents(const QList<FocusEvent>& events);
    void setShowCompletionSheet(bool show);
    void setMusicMessage(const std::optional<QString>& message);
    void setToastMessage(const std::optional<QString>& message);
    void scheduleToastEnd(const QString& message);
    void setAmbientPlaying(bool playing);
    void setSessions(const QList<StudySession>& sessions);

    Services m_services;

    AppSection m_selectedSection = AppSection::focus;
    AppSettings m_settings;
    QList<StudySession> m_sessions;
    /// Deletions and the date of the last settings change, for merging outside changes.
    SyncLedger m_ledger;
    /// The number of the last merged save outcome taken in.
    int m_mergesTakenIn = 0;
    SessionPhase m_phase = SessionPhase::idle;
    qint64 m_remainingSeconds = 0;
    qint64 m_breakRemainingSeconds = 0;
    qint64 m_focusedElapsedSeconds = 0;
    QList<FocusEvent> m_currentEvents;
    qint64 m_currentStartEnergy = 4;
    bool m_showCompletionSheet = false;
    bool m_showSessionEndDialog = false;
    std::optional<QString> m_musicMessage;
    std::optional<QString> m_toastMessage;
    bool m_isAmbientPlaying = false;

    RoundClock m_clock;
    qint64 m_roundStartMonotonicMs = 0;
    qint64 m_lastSuspendedMs = 0;
    qint64 m_plannedSeconds = 0;
    std::optional<SessionDraft> m_draft;
    bool m_pendingCompleted = false;
    std::shared_ptr<WorkQueue> m_workQueue;
    std::unique_ptr<DataFileSaver> m_saver;
    /// A failed save has been shown; the next one is shown only after a save succeeds.
    bool m_saveFailureShown = false;
    bool m_lastSaveFailed = false;
    /// The save that stores a review: its outcome is the review's toast.
    std::uint64_t m_reviewSave = 0;
    bool m_toastIsWarning = false;

    std::optional<AmbientLevels> m_lastLevels;
    QDate m_lastStepDay;
    mutable LocalTimeCache m_localTime;
    StepTimer m_stepTimer;
    std::unique_ptr<Scheduler::Handle> m_saveDebounce;
    std::unique_ptr<Scheduler::Handle> m_refreshDebounce;
    std::unique_ptr<FolderWatcher::Handle> m_folderWatch;
    std::vector<std::unique_ptr<Scheduler::Handle>> m_toastChecks;
    bool m_notificationHoldAvailable = false;
    bool m_notificationsHeld = false;
    /// Lets music completions notice that the store is gone.
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
};

} // namespace quill
