// Commands of the screens: tasks, appearance, history, export, toasts, sounds,
// the ambient card and the music test.
#include "store/AppStore.h"

#include "insights/Statistics.h"
#include "model/TextRules.h"
#include "storage/CsvExport.h"
#include "storage/Persistence.h"

#include <QTimeZone>
#include <algorithm>

namespace quill {

using namespace std::chrono_literals;

namespace {
constexpr auto kToastDuration = 3000ms;

bool containsExactly(const QList<QString>& list, const QString& name) {
    return std::any_of(list.begin(), list.end(),
                       [&](const QString& entry) { return text::canonicallyEqual(entry, name); });
}
} // namespace

std::optional<QString> AppStore::selectedTaskName() const {
    if (!m_settings.selectedTaskName)
        return std::nullopt;
    const QString trimmed = text::trimmed(*m_settings.selectedTaskName);
    if (trimmed.isEmpty() || !containsExactly(m_settings.effectiveTaskNames(), trimmed))
        return std::nullopt;
    return trimmed;
}

void AppStore::selectTask(const std::optional<QString>& name) {
    if (isSessionActive())
        return;
    AppSettings updated = m_settings;
    if (!name) {
        updated.selectedTaskName.reset();
    } else {
        const QString cleaned = text::cleanedTaskName(*name);
        if (containsExactly(m_settings.effectiveTaskNames(), cleaned))
            updated.selectedTaskName = cleaned;
        else
            updated.selectedTaskName.reset();
    }
    setSettings(updated);
}

bool AppStore::addTask(const QString& name) {
    if (isSessionActive())
        return false;
    const QString cleaned = text::cleanedTaskName(name);
    if (cleaned.isEmpty())
        return false;
    AppSettings updated = m_settings;
    for (const QString& existing : m_settings.effectiveTaskNames()) {
        if (text::equalIgnoringCaseAndDiacritics(existing, cleaned)) {
            updated.selectedTaskName = existing;
            setSettings(updated);
            toast(QStringLiteral("已选择任务“") + existing + QStringLiteral("”。"));
            return true;
        }
    }
    QList<QString> tasks = m_settings.effectiveTaskNames();
    tasks.append(cleaned);
    updated.taskNames = tasks;
    updated.selectedTaskName = cleaned;
    setSettings(updated);
    toast(QStringLiteral("已新增并选择任务“") + cleaned + QStringLiteral("”。"));
    return true;
}

void AppStore::removeTask(const QString& name) {
    AppSettings updated = m_settings;
    QList<QString> tasks = m_settings.effectiveTaskNames();
    tasks.removeIf([&](const QString& entry) { return text::canonicallyEqual(entry, name); });
    updated.taskNames = tasks;
    if (updated.selectedTaskName && text::canonicallyEqual(*updated.selectedTaskName, name))
        updated.selectedTaskName.reset();
    setSettings(updated);
    toast(QStringLiteral("已从任务列表移除“") + name + QStringLiteral("”，历史记录仍保留。"));
}

void AppStore::toggleAppearance() {
    AppSettings updated = m_settings;
    updated.appearanceMode = m_settings.effectiveAppearance() == AppearanceMode::dark
                                 ? AppearanceMode::light
                                 : AppearanceMode::dark;
    setSettings(updated);
}

void AppStore::clearHistory() {
    // Remembered one by one, so that a copy of the file elsewhere loses them too.
    for (const StudySession& s : m_sessions)
        m_ledger.recordDeletion(s.id, now());
    setSessions({});
    saveNow();
    toast(QStringLiteral("专注记录已清空。"));
}

void AppStore::removeSession(const StudySession& session) {
    QList<StudySession> kept = m_sessions;
    if (kept.removeIf([&](const StudySession& s) { return s.id == session.id; }) > 0)
        m_ledger.recordDeletion(session.id, now());
    setSessions(kept);
    saveNow();
}

void AppStore::exportSessions() {
    const bool written = CsvExport::exportSessions(m_sessions, *m_services.fileChooser);
    toast(written ? QStringLiteral("CSV 已导出。") : QStringLiteral("没有导出文件。"));
}

void AppStore::warn(const QString& message) {
    m_toastIsWarning = true;
    setToastMessage(message);
    scheduleToastEnd(message);
}

void AppStore::toast(const QString& message) {
    m_toastIsWarning = false;
    setToastMessage(message);
    scheduleToastEnd(message);
}

void AppStore::scheduleToastEnd(const QString& message) {
    // Drop the handles of checks that already ran so the list stays short.
    std::erase_if(m_toastChecks, [](const auto& handle) { return !handle->isActive(); });
    m_toastChecks.push_back(m_services.scheduler->after(kToastDuration, [this, message] {
        if (m_toastMessage && *m_toastMessage == message)
            setToastMessage(std::nullopt);
    }));
}

void AppStore::playSound(const QString& name) {
    QString resolved = name;
    if (name == randomSoundName()) {
        const QStringList pool = randomSoundPool();
        resolved = pool.at(m_services.random->between(0, pool.size() - 1));
    }
    m_services.sounds->play(resolved);
}

// ---------------------------------------------------------------- ambient

void AppStore::playAmbient() {
    if (m_settings.selectedAmbientSounds().isEmpty())
        return;
    setAmbientPlaying(m_services.ambient->play());
    if (!m_isAmbientPlaying)
        warn(kAmbientFailedToast.toString());
}

void AppStore::stopAmbient() {
    if (!m_isAmbientPlaying)
        return;
    m_services.ambient->stop();
    setAmbientPlaying(false);
}

void AppStore::toggleAmbientPlayback() {
    if (m_isAmbientPlaying) {
        stopAmbient();
        return;
    }
    if (m_settings.selectedAmbientSounds().isEmpty()) {
        AppSettings updated = m_settings;
        updated.ambientSounds = QList<QString>{rawValue(AmbientSound::rain)};
        setSettings(updated);
    }
    playAmbient();
}

void AppStore::prepareAmbientPlayback() {
    if (!m_isAmbientPlaying)
        m_services.ambient->prepare();
}

void AppStore::prepareRoundStart() {
    // Starting and resuming play only the selected sounds, and only when they follow focus.
    if (m_phase != SessionPhase::focusing && m_phase != SessionPhase::microBreak &&
        m_settings.effectiveAmbientFollowsFocus() && !m_settings.selectedAmbientSounds().isEmpty())
        prepareAmbientPlayback();
}

void AppStore::toggleAmbientSound(AmbientSound sound) {
    QList<AmbientSound> selected = m_settings.selectedAmbientSounds();
    const bool wasSelected = selected.contains(sound);
    if (wasSelected)
        selected.removeAt(selected.indexOf(sound));
    else
        selected.append(sound);

    QList<QString> raw;
    raw.reserve(selected.size());
    for (AmbientSound s : selected)
        raw.append(rawValue(s));
    AppSettings updated = m_settings;
    updated.ambientSounds = raw;
    setSettings(updated);

    if (!wasSelected)
        playAmbient();
    else if (selected.isEmpty())
        stopAmbient();
}

void AppStore::setAmbientVolume(double volume, AmbientSound sound) {
    AppSettings updated = m_settings;
    auto volumes = m_settings.ambientVolumes.value_or(std::map<QString, double>{});
    volumes[rawValue(sound)] = volume;
    updated.ambientVolumes = volumes;
    setSettings(updated);
}

bool AppStore::isAmbientSelected(AmbientSound sound) const {
    return m_settings.selectedAmbientSounds().contains(sound);
}

// ---------------------------------------------------------------- music

void AppStore::testMusic() {
    const MusicService service = m_settings.effectiveMusicService();
    setMusicMessage(QStringLiteral("正在连接“") + displayName(service) + QStringLiteral("”…"));
    std::weak_ptr<bool> alive = m_alive;
    m_services.music->playRandom(
        service, m_settings.musicSource, m_settings.playlistName,
        [this, alive](const MusicOutcome& outcome) {
            if (alive.expired())
                return;
            setMusicMessage(outcome.success ? QStringLiteral("正在播放：") + outcome.text
                                            : QStringLiteral("播放失败：") + outcome.text);
        });
}

// ---------------------------------------------------------------- statistics

QList<StudySession> AppStore::todaySessions() const {
    return Statistics::todaySessions(m_sessions, now());
}
qint64 AppStore::todayMinutes() const {
    return Statistics::todayMinutes(m_sessions, now());
}
qint64 AppStore::todayWanderCount() const {
    return Statistics::todayWanderCount(m_sessions, now());
}
qint64 AppStore::streakDays() const {
    return Statistics::streakDays(m_sessions, now());
}
qint64 AppStore::attentionCapacityMinutes() const {
    return Statistics::attentionCapacityMinutes(m_sessions);
}
qint64 AppStore::recommendedMinutes() const {
    return Statistics::recommendedMinutes(m_sessions);
}
qint64 AppStore::taskSessionCount(const QString& name) const {
    return Statistics::taskSessionCount(m_sessions, name);
}

} // namespace quill
