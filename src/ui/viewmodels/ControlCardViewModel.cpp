#include "ControlCardViewModel.h"

#include "ViewText.h"
#include "model/StudySession.h"

namespace quill {

ControlCardViewModel::ControlCardViewModel(AppStore& store, QObject* parent)
    : StoreViewModel(store, parent), m_locked(store.isRoundDesignLocked()) {
    connect(&store, &AppStore::phaseChanged, this, &ControlCardViewModel::refreshLock);
    follow(&AppStore::settingsChanged, &ControlCardViewModel::settingsDerivedChanged);
    follow(&AppStore::currentStartEnergyChanged, &ControlCardViewModel::energyChanged);
}

void ControlCardViewModel::refreshLock() {
    if (assign(m_locked, store().isRoundDesignLocked()))
        Q_EMIT lockChanged();
}

const AppSettings& ControlCardViewModel::settings() const {
    return store().settings();
}

QString ControlCardViewModel::headingTitle() const {
    return m_locked ? QStringLiteral("本轮设置") : QStringLiteral("设计这一轮");
}

QString ControlCardViewModel::headingSubtitle() const {
    return m_locked ? QStringLiteral("开始后锁定，避免反复调整。")
                    : QStringLiteral("先选一个今天愿意完成的长度。");
}

QString ControlCardViewModel::taskLabel() const {
    return store().selectedTaskName().value_or(uncategorizedTaskName());
}

QStringList ControlCardViewModel::taskOptions() const {
    return QStringList{uncategorizedTaskName()} + settings().effectiveTaskNames();
}

int ControlCardViewModel::taskIndex() const {
    const auto selected = store().selectedTaskName();
    if (!selected)
        return 0;
    const int at = int(settings().effectiveTaskNames().indexOf(*selected));
    return at < 0 ? 0 : at + 1;
}

QString ControlCardViewModel::durationLabel() const {
    return QString::number(settings().selectedDurationMinutes) + QStringLiteral(" 分钟");
}

int ControlCardViewModel::selectedDuration() const {
    return int(settings().selectedDurationMinutes);
}

int ControlCardViewModel::reminderMinimum() const {
    return int(settings().reminderMinimumMinutes);
}

int ControlCardViewModel::reminderMaximum() const {
    return int(settings().reminderMaximumMinutes);
}

int ControlCardViewModel::reminderMaximumFloor() const {
    return int(settings().reminderMaximumFloor());
}

QVariantList ControlCardViewModel::durationChoices() {
    return {30, 60, 90};
}

QString ControlCardViewModel::reminderRangeLabel() const {
    const AppSettings s = settings();
    return QStringLiteral("%1–%2 分钟").arg(s.reminderMinimumMinutes).arg(s.reminderMaximumMinutes);
}

int ControlCardViewModel::energyLevel() const {
    return int(store().currentStartEnergy());
}

QString ControlCardViewModel::energyLabel() const {
    return viewtext::energyLabel(energyLevel());
}

QString ControlCardViewModel::musicLineText() const {
    const AppSettings s = settings();
    if (!s.autoPlayMusic)
        return QStringLiteral("可在设置中开启结束音乐");
    if (s.effectiveMusicService() == MusicService::netEase)
        return QStringLiteral("结束后播放网易云音乐");
    const QString name = displayName(MusicService::appleMusic);
    // A Latin name is set off by a space; a Chinese one runs on.
    return QStringLiteral("结束后随机播放") +
           (name.front().unicode() < 0x80 ? QStringLiteral(" ") : QString()) + name;
}

QString ControlCardViewModel::musicLineSymbol() const {
    const AppSettings s = settings();
    return s.autoPlayMusic && s.effectiveMusicService() == MusicService::netEase
               ? QStringLiteral("cloud.fill")
               : QStringLiteral("music.note");
}

void ControlCardViewModel::setShowTaskCreator(bool show) {
    if (assign(m_showTaskCreator, show))
        Q_EMIT creatorChanged();
}

void ControlCardViewModel::setNewTaskName(const QString& name) {
    if (assign(m_newTaskName, name))
        Q_EMIT creatorChanged();
}

QString ControlCardViewModel::creatorToggleSymbol() const {
    return m_showTaskCreator ? QStringLiteral("xmark") : QStringLiteral("plus");
}

QString ControlCardViewModel::creatorToggleHelp() const {
    return m_showTaskCreator ? QStringLiteral("取消新增任务") : QStringLiteral("新增任务");
}

void ControlCardViewModel::chooseTask(int index) {
    if (m_locked)
        return;
    const QStringList names = settings().effectiveTaskNames();
    if (index >= 1 && index <= names.size())
        store().selectTask(names.at(index - 1));
    else
        store().selectTask(std::nullopt);
}

void ControlCardViewModel::chooseDuration(int minutes) {
    editSettings([minutes](AppSettings& s) { s.selectedDurationMinutes = minutes; },
                 AppStore::EditTime::betweenRounds);
}

void ControlCardViewModel::chooseReminderMinimum(int minutes) {
    editSettings([minutes](AppSettings& s) { s.reminderMinimumMinutes = minutes; },
                 AppStore::EditTime::betweenRounds);
}

void ControlCardViewModel::chooseReminderMaximum(int minutes) {
    editSettings([minutes](AppSettings& s) { s.reminderMaximumMinutes = minutes; },
                 AppStore::EditTime::betweenRounds);
}

void ControlCardViewModel::setEnergy(int level) {
    if (!m_locked)
        store().setCurrentStartEnergy(level);
}

void ControlCardViewModel::toggleTaskCreator() {
    setShowTaskCreator(!m_showTaskCreator);
}

bool ControlCardViewModel::commitNewTask() {
    if (!store().addTask(m_newTaskName))
        return false;
    m_newTaskName.clear();
    m_showTaskCreator = false;
    Q_EMIT creatorChanged();
    return true;
}

} // namespace quill
