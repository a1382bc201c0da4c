#pragma once

#include "store/AppStore.h"

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace quill {

/// Base of the screens' view models: holds the store, reconnects when it changes and
/// asks the subclass to recompute. Subclasses emit their change signals only when a
/// derived value really changed, so a timer step that changes nothing redraws nothing.
class StoreViewModel : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    /// The store the view reads and commands.
    Q_PROPERTY(quill::AppStore* store READ store WRITE setStore NOTIFY storeChanged)

public:
    explicit StoreViewModel(QObject* parent = nullptr) : QObject(parent) {}

    AppStore* store() const { return m_store; }
    void setStore(AppStore* store);

Q_SIGNALS:
    void storeChanged();

protected:
    /// Connects the store signals the subclass follows; called for each new store.
    virtual void connectStore(AppStore* store) { Q_UNUSED(store); }
    /// Recomputes every derived value (also with no store, to fall back to empty values).
    virtual void refreshAll() {}

    /// Edits the settings through the store's one command; false without a store or when the
    /// store refuses the edit.
    bool editSettings(const std::function<void(AppSettings&)>& edit,
                      AppStore::EditTime when = AppStore::EditTime::anyTime) const {
        return store() && store()->editSettings(edit, when);
    }

    /// Assigns and reports whether the value changed.
    template <class T> static bool assign(T& field, const T& value) {
        if (field == value)
            return false;
        field = value;
        return true;
    }

private:
    QPointer<AppStore> m_store;
};

} // namespace quill
