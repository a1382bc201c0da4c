#include "store/AppStore.h"

#include "insights/Statistics.h"
#include "storage/CsvExport.h"
#include "storage/DataMerge.h"
#include "storage/Persistence.h"
#include "store/ThreadWorkQueue.h"

#include <QFileInfo>
#include <QTimeZone>
#include <algorithm>
#include <cmath>
#include <utility>

namespace quill {

using namespace std::chrono_literals;

namespace {
constexpr auto kSaveDebounce = 250ms;
// A sync tool's write is a burst of changes in the folder; the merge waits for it to end.
constexpr auto kRefreshDebounce = 500ms;

qint64 roundUp(double seconds) {
    return static_cast<qint64>(std::ceil(seconds));
}
} // namespace

AppStore::AppStore(Services services, QObject* parent)
    : QObject(parent), m_services(std::move(services)),
      m_stepTimer(m_services.scheduler, m_services.clock, [this] { tick(); }) {
    const QString directory = m_services.dataLocation->directory();
    // Temporaries of writes cut short by a crash or a kill; the data file itself is whole.
    Persistence::removeStaleTemporaries(directory);
    const Persistence::LoadResult loaded = Persistence::load(directory);
    m_workQueue = m_services.work ? m_services.work : std::make_shared<ThreadWorkQueue>();
    m_saver = std::make_unique<DataFileSaver>(m_workQueue, loaded.unreadableFileExists, loaded.data,
                                              loaded.stamp);
    m_ledger = loaded.data.ledger;
    // Settings of unknown age are older than any dated change. Writing the date at all tells
    // other copies that this writer records its deletions, so that a session its file lacks
    // is one it has not seen rather than one it deleted.
    if (!m_ledger.settingsChangedAt)
        m_ledger.settingsChangedAt = QDateTime::fromSecsSinceEpoch(0, Qt::UTC);
    m_lastSuspendedMs = m_services.clock->suspendedMs();
    m_settings = loaded.data.settings;
    QList<StudySession> sorted = loaded.data.sessions;
    std::stable_sort(
        sorted.begin(), sorted.end(),
        [](const StudySession& a, const StudySession& b) { return a.startedAt > b.startedAt; });
    m_sessions = sorted;
    m_lastStepDay = m_localTime.at(now()).date;

    // The ambient levels follow settings at once; the current value passes immediately.
    updateAmbientLevels();
    // Sound that ends by itself (the output never opened, or was lost for good) is shown
    // as stopped, with the same word as a play that fails at once.
    m_services.ambient->setStopHandler([this] {
        if (!m_isAmbientPlaying)
            return;
        setAmbientPlaying(false);
        warn(kAmbientFailedToast.toString());
    });
    normalizeSettings();
    m_stepTimer.setResting(true);
    startFocusGuard();
    if (m_services.folderWatcher) {
        m_folderWatch = m_services.folderWatcher->watch(
            directory, QFileInfo(Persistence::dataFilePath(directory)).fileName(), [this] {
                m_refreshDebounce =
                    m_services.scheduler->after(kRefreshDebounce, [this] { refreshFromFile(); });
            });
    }
}

AppStore::~AppStore() {
    *m_alive = false;
    // Quitting gives the desktop's banners back, whatever the round was doing.
    if (m_notificationsHeld)
        m_services.notificationHold->setHeld(false);
    m_folderWatch.reset();
    m_refreshDebounce.reset();
    flushSaves();
}

void AppStore::flushSaves() {
    // The latest state reaches the disk before the application goes: a settings change
    // still waiting out its debounce is written now.
    if (m_saveDebounce && m_saveDebounce->isActive()) {
        m_saveDebounce.reset();
        m_settings = normalizedSettings(m_settings);
        saveNow();
    }
    m_saver->waitForIdle();
}

AppStore::FinalSave AppStore::saveBeforeQuit() {
    m_saveDebounce.reset();
    m_settings = normalizedSettings(m_settings);
    const DataFileSaver::Outcome outcome = m_saver->saveAndWait(
        m_services.dataLocation->directory(), persistedData(), now(), m_mergesTakenIn);
    if (outcome.merged)
        adoptMerged(outcome);
    m_lastSaveFailed = !outcome.saved;
    FinalSave result{outcome.saved, outcome.error, {}};
    const QString rescue = m_services.dataLocation->rescueDirectory();
    if (!outcome.saved && !rescue.isEmpty() && Persistence::save(rescue, m_settings, m_sessions))
        result.copyPath = Persistence::dataFilePath(rescue);
    return result;
}

QDateTime AppStore::now() const {
    return m_services.clock->now();
}

int AppStore::localHour() const {
    return m_localTime.at(now()).hour;
}

void AppStore::waitForSaves() {
    m_saver->waitForIdle();
}

qint64 AppStore::monotonicMs() const {
    return m_services.clock->monotonicMs();
}

QDateTime AppStore::dateInRound() const {
    const QDateTime wall = now();
    if (!m_draft)
        return wall;
    const QDateTime earliest =
        m_draft->startedAt.addMSecs(std::max<qint64>(monotonicMs() - m_roundStartMonotonicMs, 0));
    return std::max(wall, earliest);
}

// ---------------------------------------------------------------- published state

void AppStore::setSelectedSection(AppSection section) {
    m_selectedSection = section;
    Q_EMIT selectedSectionChanged();
}

void AppStore::setSettings(const AppSettings& settings) {
    if (!(settings == m_settings))
        m_ledger.settingsChangedAt = SyncLedger::stamp(now());
    m_settings = settings;
    Q_EMIT settingsChanged();
    updateAmbientLevels();
    updateNotificationHold();
    // Every assignment restarts the wait; only the last value of a burst is written.
    m_saveDebounce = m_services.scheduler->after(kSaveDebounce, [this] { onSettingsSettled(); });
}

bool AppStore::editSettings(const std::function<void(AppSettings&)>& edit, EditTime when) {
    if (when == EditTime::betweenRounds && isRoundDesignLocked())
        return false;
    AppSettings updated = m_settings;
    edit(updated);
    setSettings(normalizedSettings(updated));
    return true;
}

void AppStore::adoptRecommendedLength() {
    const qint64 minutes = recommendedMinutes();
    editSettings([minutes](AppSettings& s) { s.selectedDurationMinutes = minutes; });
}

void AppStore::setSessions(const QList<StudySession>& sessions) {
    m_sessions = sessions;
    Q_EMIT sessionsChanged();
    Q_EMIT statisticsChanged();
}

bool AppStore::isSessionActive() const {
    return m_phase == SessionPhase::focusing || m_phase == SessionPhase::paused ||
           m_phase == SessionPhase::microBreak;
}

bool AppStore::isReviewPending() const {
    return m_phase == SessionPhase::completed && m_draft.has_value();
}

void AppStore::setPhase(SessionPhase phase) {
    m_phase = phase;
    m_stepTimer.setResting(!isSessionActive());
    // Before anyone reacts to the new phase: the round-end notification must find the
    // banners given back.
    updateNotificationHold();
    Q_EMIT phaseChanged();
}

void AppStore::setRemainingSeconds(qint64 v) {
    // The step runs four times a second; the counters move once a second.
    if (std::exchange(m_remainingSeconds, v) != v)
        Q_EMIT remainingSecondsChanged();
}

void AppStore::setBreakRemainingSeconds(qint64 v) {
    if (std::exchange(m_breakRemainingSeconds, v) != v)
        Q_EMIT breakRemainingSecondsChanged();
}

void AppStore::setFocusedElapsedSeconds(qint64 v) {
    if (std::exchange(m_focusedElapsedSeconds, v) != v)
        Q_EMIT focusedElapsedSecondsChanged();
}

void AppStore::setCurrentEvents(const QList<FocusEvent>& events) {
    m_currentEvents = events;
    Q_EMIT currentEventsChanged();
}

void AppStore::setCurrentStartEnergy(qint64 energy) {
    m_currentStartEnergy = energy;
    Q_EMIT currentStartEnergyChanged();
}

void AppStore::setShowCompletionSheet(bool show) {
    m_showCompletionSheet = show;
    Q_EMIT showCompletionSheetChanged();
}

void AppStore::setShowSessionEndDialog(bool show) {
    m_showSessionEndDialog = show;
    Q_EMIT showSessionEndDialogChanged();
}

void AppStore::setMusicMessage(const std::optional<QString>& message) {
    m_musicMessage = message;
    Q_EMIT musicMessageChanged();
}

void AppStore::setToastMessage(const std::optional<QString>& message) {
    m_toastMessage = message;
    if (!message)
        m_toastIsWarning = false;
    Q_EMIT toastMessageChanged();
}

void AppStore::setAmbientPlaying(bool playing) {
    m_isAmbientPlaying = playing;
    Q_EMIT isAmbientPlayingChanged();
}

// ---------------------------------------------------------------- persistence

void AppStore::onSettingsSettled() {
    const AppSettings repaired = normalizedSettings(m_settings);
    if (repaired == m_settings)
        saveNow();
    else
        setSettings(repaired); // itself a change: written once it settles
}

std::uint64_t AppStore::saveNow() {
    // Serialising and writing happen on the work queue; the lists are shared, not copied.
    return m_saver->save(m_services.dataLocation->directory(), persistedData(), now(),
                         m_mergesTakenIn,
                         [this, alive = std::weak_ptr<bool>(m_alive)](const auto& outcome) {
                             if (auto a = alive.lock(); a && *a)
                                 onSaveFinished(outcome);
                         });
}

void AppStore::refreshFromFile() {
    m_saver->refresh(m_services.dataLocation->directory(), persistedData(), now(), m_mergesTakenIn,
                     [this, alive = std::weak_ptr<bool>(m_alive)](const auto& outcome) {
                         if (auto a = alive.lock(); a && *a)
                             onRefreshFinished(outcome);
                     });
}

void AppStore::onRefreshFinished(const DataFileSaver::Outcome& outcome) {
    // A refresh that wrote nothing says nothing of the last save; only its failure is told.
    if (outcome.saved) {
        if (outcome.merged)
            adoptMerged(outcome);
        return;
    }
    onSaveFinished(outcome);
}

void AppStore::adoptMerged(const DataFileSaver::Outcome& outcome) {
    const PersistedData result =
        DataMerge::adopt(*outcome.sent, persistedData(), *outcome.merged, now());
    m_mergesTakenIn = outcome.mergeNumber;
    m_ledger = result.ledger;
    if (!(result.settings == m_settings)) {
        m_settings = result.settings;
        Q_EMIT settingsChanged();
        updateAmbientLevels();
        normalizeSettings();
    }
    if (result.sessions != m_sessions)
        setSessions(result.sessions);
}

void AppStore::onSaveFinished(const DataFileSaver::Outcome& outcome) {
    if (outcome.merged)
        adoptMerged(outcome);
    m_lastSaveFailed = !outcome.saved;
    // A review is confirmed only once it is on disk; a failure to store it is always told.
    const bool review = m_reviewSave != 0 && outcome.serial >= m_reviewSave;
    if (review)
        m_reviewSave = 0;
    if (outcome.saved) {
        m_saveFailureShown = false;
        if (review)
            toast(QStringLiteral("这一轮已存入你的专注档案。"));
        return;
    }
    // Shown once; nothing is retried on a timer, the next change saves everything again.
    if (m_saveFailureShown && !review)
        return;
    m_saveFailureShown = true;
    warn(QStringLiteral("无法保存专注记录：") + outcome.error);
}

void AppStore::normalizeSettings() {
    const AppSettings repaired = normalizedSettings(m_settings);
    if (!(repaired == m_settings))
        setSettings(repaired);
}

void AppStore::updateAmbientLevels() {
    const AmbientLevels levels = m_settings.ambientLevels();
    if (m_lastLevels && *m_lastLevels == levels)
        return;
    m_lastLevels = levels;
    m_services.ambient->setLevels(levels);
}

// ---------------------------------------------------------------- the round

double AppStore::updateFocusCounters() {
    const double left = m_clock.focusLeft(monotonicMs());
    setRemainingSeconds(roundUp(left));
    setFocusedElapsedSeconds(std::max<qint64>(m_plannedSeconds - m_remainingSeconds, 0));
    return left;
}

bool AppStore::sleptSinceLastStep() {
    // Reading the two system clocks a moment apart can move their difference by a
    // millisecond; a real suspend lasts seconds.
    constexpr qint64 kSleepThresholdMs = 500;
    const qint64 suspended = m_services.clock->suspendedMs();
    const bool slept = suspended - m_lastSuspendedMs >= kSleepThresholdMs;
    m_lastSuspendedMs = std::max(m_lastSuspendedMs, suspended);
    return slept;
}

void AppStore::pauseAfterSleep() {
    // The round pauses where its net time stood when the computer went to sleep, since the
    // monotonic clock stood still meanwhile.
    pauseRunningRound(QStringLiteral("电脑休眠期间本轮已暂停。"));
}

void AppStore::pauseRunningRound(const QString& message) {
    // A break that was running ends as if skipped.
    if (m_phase == SessionPhase::microBreak)
        resumeAfterMicroBreak();
    if (m_phase != SessionPhase::focusing)
        return;
    if (updateFocusCounters() <= 0)
        return; // the round ran out already: the next step completes it
    togglePause();
    toast(message);
}

void AppStore::tick() {
    const QDate today = m_localTime.at(now()).date;
    if (today != m_lastStepDay) {
        m_lastStepDay = today;
        Q_EMIT statisticsChanged();
    }
    if (sleptSinceLastStep())
        pauseAfterSleep();

    switch (m_phase) {
    case SessionPhase::microBreak: {
        const double left = m_clock.breakLeft(monotonicMs());
        setBreakRemainingSeconds(roundUp(left));
        if (left <= 0)
            resumeAfterMicroBreak();
        break;
    }
    case SessionPhase::focusing: {
        const double left = updateFocusCounters();
        if (left <= 0)
            finishSession(true);
        else if (m_clock.reminderDue(monotonicMs()))
            beginMicroBreak();
        break;
    }
    case SessionPhase::idle:
    case SessionPhase::paused:
    case SessionPhase::completed:
        break;
    }
    Q_EMIT stepped();
}

void AppStore::startSession(std::optional<qint64> minutesArgument) {
    // A finished round waiting for its review is never thrown away by a new start.
    if (isSessionActive() || isReviewPending())
        return;
    normalizeSettings();

    const qint64 minutes = minutesArgument.value_or(m_settings.selectedDurationMinutes);
    AppSettings updated = m_settings;
    updated.selectedDurationMinutes = minutes;
    setSettings(updated);

    const QDateTime start = now();
    m_roundStartMonotonicMs = monotonicMs();
    SessionDraft draft;
    draft.startedAt = start;
    draft.plannedMinutes = minutes;
    draft.taskName = selectedTaskName();
    draft.startEnergy = m_currentStartEnergy;
    draft.endEnergy = 3;
    draft.focusRating = 4;
    m_draft = draft;

    setCurrentEvents({});
    m_plannedSeconds = minutes * 60;
    setRemainingSeconds(m_plannedSeconds);
    setFocusedElapsedSeconds(0);
    m_clock.start(m_roundStartMonotonicMs, m_plannedSeconds);
    m_pendingCompleted = false;
    setPhase(SessionPhase::focusing);
    scheduleNextReminder();

    if (m_settings.effectiveAmbientFollowsFocus())
        playAmbient();
    toast(QStringLiteral("开始这一轮。先只做好眼前的一小段。"));
}

void AppStore::scheduleNextReminder() {
    const qint64 lower = std::max<qint64>(m_settings.reminderMinimumMinutes * 60, 1);
    const qint64 upper = std::max<qint64>(m_settings.reminderMaximumMinutes * 60, lower);
    m_clock.scheduleReminder(monotonicMs(), m_services.random->between(lower, upper));
}

void AppStore::beginMicroBreak() {
    m_clock.pause(monotonicMs(), static_cast<double>(m_remainingSeconds));
    const qint64 breakSeconds = m_settings.microBreakSeconds;
    setBreakRemainingSeconds(breakSeconds);
    m_clock.startBreak(monotonicMs(), breakSeconds);
    appendEvent(FocusEventKind::reminder);
    setPhase(SessionPhase::microBreak);
    playSound(m_settings.reminderSound);
}

void AppStore::resumeAfterMicroBreak() {
    m_clock.resume(monotonicMs());
    setBreakRemainingSeconds(0);
    setPhase(SessionPhase::focusing);
    scheduleNextReminder();
}

void AppStore::skipMicroBreak() {
    if (m_phase == SessionPhase::microBreak)
        resumeAfterMicroBreak();
}

void AppStore::togglePause() {
    if (m_phase == SessionPhase::paused) {
        m_clock.resume(monotonicMs());
        appendEvent(FocusEventKind::resume);
        setPhase(SessionPhase::focusing);
        scheduleNextReminder();
        if (m_settings.effectiveAmbientFollowsFocus())
            playAmbient();
    } else if (m_phase == SessionPhase::focusing) {
        m_clock.pause(monotonicMs(), static_cast<double>(m_remainingSeconds));
        appendEvent(FocusEventKind::pause);
        setPhase(SessionPhase::paused);
        if (m_settings.effectiveAmbientFollowsFocus())
            stopAmbient();
    }
}

void AppStore::appendEvent(FocusEventKind kind) {
    FocusEvent event{QUuid::createUuid(), dateInRound(), m_focusedElapsedSeconds, kind};
    QList<FocusEvent> events = m_currentEvents;
    events.append(event);
    setCurrentEvents(events);
    if (m_draft)
        m_draft->events = m_currentEvents;
}

void AppStore::recordMindWander() {
    if (m_phase != SessionPhase::focusing && m_phase != SessionPhase::paused)
        return;
    appendEvent(FocusEventKind::mindWander);
    toast(QStringLiteral("记下了。发现走神，本身就是注意力回来了。"));
}

void AppStore::recordFatigue() {
    if (m_phase != SessionPhase::focusing && m_phase != SessionPhase::paused)
        return;
    appendEvent(FocusEventKind::fatigue);
    toast(QStringLiteral("已记录疲劳信号。必要时提前结束比硬撑更有价值。"));
}

QString AppStore::nextReminderDescription() const {
    const std::optional<qint64> left = m_clock.secondsToReminder(monotonicMs());
    if (m_phase != SessionPhase::focusing || !left)
        return QStringLiteral("—");
    const qint64 s = *left;
    return QString::asprintf("%02lld:%02lld", static_cast<long long>(s / 60),
                             static_cast<long long>(s % 60));
}

// ---------------------------------------------------------------- ending a round

void AppStore::finishSession(bool completed) {
    if (m_phase == SessionPhase::focusing)
        updateFocusCounters();
    m_pendingCompleted = completed;
    m_clock.clear();
    setPhase(SessionPhase::completed);
    setShowSessionEndDialog(false);
    playSound(m_settings.completionSound);
    setShowCompletionSheet(true);
    if (m_settings.effectiveAmbientFollowsFocus() || m_settings.autoPlayMusic)
        stopAmbient();
    if (m_settings.autoPlayMusic)
        testMusic();
}

void AppStore::endSessionForReview() {
    setShowSessionEndDialog(false);
    if (isSessionActive())
        finishSession(false);
}

void AppStore::continueSession() {
    setShowSessionEndDialog(false);
}

void AppStore::saveCompletion(qint64 focusRating, qint64 endEnergy, const QString& note) {
    if (!m_draft)
        return;
    m_draft->focusRating = focusRating;
    m_draft->endEnergy = endEnergy;
    m_draft->note = note;

    StudySession session;
    session.id = QUuid::createUuid();
    session.startedAt = m_draft->startedAt;
    session.endedAt = dateInRound();
    session.taskName = m_draft->taskName;
    session.plannedMinutes = m_draft->plannedMinutes;
    session.focusedSeconds = m_focusedElapsedSeconds;
    session.reminderMinimumMinutes = m_settings.reminderMinimumMinutes;
    session.reminderMaximumMinutes = m_settings.reminderMaximumMinutes;
    session.microBreakSeconds = m_settings.microBreakSeconds;
    session.events = m_currentEvents;
    session.startEnergy = m_draft->startEnergy;
    session.endEnergy = endEnergy;
    session.focusRating = focusRating;
    session.completed = m_pendingCompleted;
    session.note = note;

    QList<StudySession> sessions = m_sessions;
    sessions.prepend(session);
    setSessions(sessions);
    m_draft.reset();
    setPhase(SessionPhase::idle);
    setShowCompletionSheet(false);
    m_reviewSave = saveNow();
}

void AppStore::abandonSession() {
    if (!isSessionActive() && m_phase != SessionPhase::completed && !m_draft)
        return;
    m_clock.clear();
    m_plannedSeconds = 0;
    setRemainingSeconds(0);
    setBreakRemainingSeconds(0);
    setFocusedElapsedSeconds(0);
    setCurrentEvents({});
    m_draft.reset();
    m_pendingCompleted = false;
    setPhase(SessionPhase::idle);
    setShowSessionEndDialog(false);
    setShowCompletionSheet(false);
    setMusicMessage(std::nullopt);
    if (m_settings.effectiveAmbientFollowsFocus())
        stopAmbient();
    toast(QStringLiteral("这轮已放弃，不会计入任何专注数据。"));
}

} // namespace quill
