#pragma once

#include "StoreViewModel.h"

#include <QStringList>
#include <QVariantList>

namespace quill {

/// The focus screen's "设计这一轮" card: labels, the task picker, the inline new-task row
/// (the screen's only own state), duration chips, starting energy and the music line.
class ControlCardViewModel : public StoreViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Built by ViewModels on the app's store")
    /// "设计这一轮" when idle, "本轮设置" during a round.
    Q_PROPERTY(QString headingTitle READ headingTitle NOTIFY lockChanged)
    /// The hint under the heading.
    Q_PROPERTY(QString headingSubtitle READ headingSubtitle NOTIFY lockChanged)
    /// A round is running: every control of the card is disabled.
    Q_PROPERTY(bool locked READ locked NOTIFY lockChanged)
    /// The chosen task or "未分类".
    Q_PROPERTY(QString taskLabel READ taskLabel NOTIFY settingsDerivedChanged)
    /// "未分类" followed by the task list.
    Q_PROPERTY(QStringList taskOptions READ taskOptions NOTIFY settingsDerivedChanged)
    /// Index of the chosen task in `taskOptions` (0 for none).
    Q_PROPERTY(int taskIndex READ taskIndex NOTIFY settingsDerivedChanged)
    /// "N 分钟" of the selected length.
    Q_PROPERTY(QString durationLabel READ durationLabel NOTIFY settingsDerivedChanged)
    /// The selected length in minutes.
    Q_PROPERTY(int selectedDuration READ selectedDuration NOTIFY settingsDerivedChanged)
    /// Earliest and latest reminder, minutes; the latest stepper starts at the floor.
    Q_PROPERTY(int reminderMinimum READ reminderMinimum NOTIFY settingsDerivedChanged)
    Q_PROPERTY(int reminderMaximum READ reminderMaximum NOTIFY settingsDerivedChanged)
    Q_PROPERTY(int reminderMaximumFloor READ reminderMaximumFloor NOTIFY settingsDerivedChanged)
    /// The chip values: 30, 60, 90.
    Q_PROPERTY(QVariantList durationChoices READ durationChoices CONSTANT)
    /// "min–max 分钟" of the reminder range.
    Q_PROPERTY(QString reminderRangeLabel READ reminderRangeLabel NOTIFY settingsDerivedChanged)
    /// The starting energy, 1–5 as stored.
    Q_PROPERTY(int energyLevel READ energyLevel NOTIFY energyChanged)
    /// Label of the starting energy ("很低" … "充沛").
    Q_PROPERTY(QString energyLabel READ energyLabel NOTIFY energyChanged)
    /// The end-of-round music line.
    Q_PROPERTY(QString musicLineText READ musicLineText NOTIFY settingsDerivedChanged)
    /// Its symbol.
    Q_PROPERTY(QString musicLineSymbol READ musicLineSymbol NOTIFY settingsDerivedChanged)
    /// The inline new-task row is open.
    Q_PROPERTY(
        bool showTaskCreator READ showTaskCreator WRITE setShowTaskCreator NOTIFY creatorChanged)
    /// The name typed into the new-task field.
    Q_PROPERTY(QString newTaskName READ newTaskName WRITE setNewTaskName NOTIFY creatorChanged)
    /// "添加" accepts a click (something was typed).
    Q_PROPERTY(bool canAddTask READ canAddTask NOTIFY creatorChanged)
    /// "plus" while the row is closed, "xmark" while open.
    Q_PROPERTY(QString creatorToggleSymbol READ creatorToggleSymbol NOTIFY creatorChanged)
    /// "新增任务" or "取消新增任务".
    Q_PROPERTY(QString creatorToggleHelp READ creatorToggleHelp NOTIFY creatorChanged)

public:
    explicit ControlCardViewModel(AppStore& store, QObject* parent = nullptr);

    QString headingTitle() const;
    QString headingSubtitle() const;
    bool locked() const { return m_locked; }
    QString taskLabel() const;
    QStringList taskOptions() const;
    int taskIndex() const;
    QString durationLabel() const;
    int selectedDuration() const;
    int reminderMinimum() const;
    int reminderMaximum() const;
    int reminderMaximumFloor() const;
    static QVariantList durationChoices();
    QString reminderRangeLabel() const;
    int energyLevel() const;
    QString energyLabel() const;
    QString musicLineText() const;
    QString musicLineSymbol() const;
    bool showTaskCreator() const { return m_showTaskCreator; }
    void setShowTaskCreator(bool show);
    QString newTaskName() const { return m_newTaskName; }
    void setNewTaskName(const QString& name);
    bool canAddTask() const { return !m_newTaskName.isEmpty(); }
    QString creatorToggleSymbol() const;
    QString creatorToggleHelp() const;

    /// Chooses `taskOptions[index]`; index 0 (and anything out of range) means no task.
    Q_INVOKABLE void chooseTask(int index);
    /// The card's length and reminder edits, held while a round runs; the store repairs them.
    Q_INVOKABLE void chooseDuration(int minutes);
    Q_INVOKABLE void chooseReminderMinimum(int minutes);
    Q_INVOKABLE void chooseReminderMaximum(int minutes);
    Q_INVOKABLE void setEnergy(int level);
    Q_INVOKABLE void toggleTaskCreator();
    /// Adds the typed task; on success clears the text and closes the row. A refusal leaves
    /// both as they are (the store explains through its toast).
    Q_INVOKABLE bool commitNewTask();

Q_SIGNALS:
    void lockChanged();
    void settingsDerivedChanged();
    void energyChanged();
    void creatorChanged();

private:
    void refreshLock();
    const AppSettings& settings() const;

    bool m_locked = false;
    bool m_showTaskCreator = false;
    QString m_newTaskName;
};

} // namespace quill
