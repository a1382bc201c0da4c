#include "TaskSettingsViewModel.h"

#include "model/TextRules.h"

namespace quill {

TaskSettingsViewModel::TaskSettingsViewModel(AppStore& store, QObject* parent)
    : StoreViewModel(store, parent) {
    connect(&store, &AppStore::settingsChanged, this, &TaskSettingsViewModel::refreshRows);
    connect(&store, &AppStore::sessionsChanged, this, &TaskSettingsViewModel::refreshRows);
    follow(&AppStore::phaseChanged, &TaskSettingsViewModel::inputChanged);
    refreshRows();
}

void TaskSettingsViewModel::refreshRows() {
    QVariantList rows;
    const AppStore& s = store();
    const std::optional<QString> selected = s.selectedTaskName();
    for (const QString& name : s.settings().effectiveTaskNames()) {
        rows.append(QVariantMap{
            {QStringLiteral("name"), name},
            {QStringLiteral("current"), selected && *selected == name},
            {QStringLiteral("countText"), QStringLiteral("%1 轮").arg(s.taskSessionCount(name))}});
    }
    // Settings change on every ambient slider move; the list redraws only when it changed.
    if (assign(m_rows, rows))
        Q_EMIT rowsChanged();
}

void TaskSettingsViewModel::setNewTaskName(const QString& name) {
    if (assign(m_newTaskName, name))
        Q_EMIT inputChanged();
}

bool TaskSettingsViewModel::inputEnabled() const {
    return !store().isSessionActive();
}

bool TaskSettingsViewModel::addEnabled() const {
    return inputEnabled() && !text::trimmed(m_newTaskName).isEmpty();
}

bool TaskSettingsViewModel::addTask() {
    if (!addEnabled() || !store().addTask(m_newTaskName))
        return false;
    setNewTaskName(QString());
    return true;
}

void TaskSettingsViewModel::removeTask(const QString& name) {
    store().removeTask(name);
}

} // namespace quill
