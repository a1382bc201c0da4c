#include "TaskSettingsViewModel.h"

#include "model/TextRules.h"

namespace quill {

TaskSettingsViewModel::TaskSettingsViewModel(QObject* parent) : StoreViewModel(parent) {}

void TaskSettingsViewModel::connectStore(AppStore* s) {
    connect(s, &AppStore::settingsChanged, this, &TaskSettingsViewModel::refreshRows);
    connect(s, &AppStore::sessionsChanged, this, &TaskSettingsViewModel::refreshRows);
    connect(s, &AppStore::phaseChanged, this, &TaskSettingsViewModel::inputChanged);
}

void TaskSettingsViewModel::refreshAll() {
    refreshRows();
    Q_EMIT inputChanged();
}

void TaskSettingsViewModel::refreshRows() {
    QVariantList rows;
    if (const AppStore* s = store()) {
        const std::optional<QString> selected = s->selectedTaskName();
        for (const QString& name : s->settings().effectiveTaskNames()) {
            rows.append(QVariantMap{{QStringLiteral("name"), name},
                                    {QStringLiteral("current"), selected && *selected == name},
                                    {QStringLiteral("countText"),
                                     QStringLiteral("%1 轮").arg(s->taskSessionCount(name))}});
        }
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
    return store() && !store()->isSessionActive();
}

bool TaskSettingsViewModel::addEnabled() const {
    return inputEnabled() && !text::trimmed(m_newTaskName).isEmpty();
}

bool TaskSettingsViewModel::addTask() {
    if (!addEnabled() || !store()->addTask(m_newTaskName))
        return false;
    setNewTaskName(QString());
    return true;
}

void TaskSettingsViewModel::removeTask(const QString& name) {
    if (store())
        store()->removeTask(name);
}

} // namespace quill
