#pragma once

#include "StoreViewModel.h"

#include <QVariantList>

namespace quill {

/// The settings screen's task card: the new-task input and the list with each task's
/// "当前" badge and its count of stored rounds.
class TaskSettingsViewModel : public StoreViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Built by ViewModels on the app's store")
    /// The text typed for a new task.
    Q_PROPERTY(QString newTaskName READ newTaskName WRITE setNewTaskName NOTIFY inputChanged)
    /// The input row accepts typing: no round is running.
    Q_PROPERTY(bool inputEnabled READ inputEnabled NOTIFY inputChanged)
    /// The plus button accepts clicks: input enabled and the text not blank.
    Q_PROPERTY(bool addEnabled READ addEnabled NOTIFY inputChanged)
    /// One map per task in list order: "name", "current" (bool) and "countText" ("N 轮").
    Q_PROPERTY(QVariantList rows READ rows NOTIFY rowsChanged)

public:
    explicit TaskSettingsViewModel(AppStore& store, QObject* parent = nullptr);

    QString newTaskName() const { return m_newTaskName; }
    void setNewTaskName(const QString& name);
    bool inputEnabled() const;
    bool addEnabled() const;
    QVariantList rows() const { return m_rows; }

    /// Return in the field or the plus button: adds the typed task and clears the field when
    /// the store took it; a rejected name stays in the field.
    Q_INVOKABLE bool addTask();
    Q_INVOKABLE void removeTask(const QString& name);

Q_SIGNALS:
    void inputChanged();
    void rowsChanged();

private:
    void refreshRows();

    QString m_newTaskName;
    QVariantList m_rows;
};

} // namespace quill
