#pragma once

#include "store/AppStore.h"

#include <QHash>
#include <QMetaMethod>
#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace quill {

/// Base of the screens' view models: holds the app's one store, given at construction.
/// Change signals go out only when a value they announce really changed, so a step that
/// changes nothing redraws nothing: view models that keep their values compare them with
/// `assign`, and those that compute on read `follow` the store through a gate that compares
/// what their getters read.
class StoreViewModel : public QObject {
    Q_OBJECT
    QML_ANONYMOUS

public:
    explicit StoreViewModel(AppStore& store, QObject* parent = nullptr)
        : QObject(parent), m_store(store) {}

    AppStore& store() const { return m_store; }

protected:
    /// Edits the settings through the store's one command; false when the store refuses.
    /// The view that proposed the value is told what came of it, repaired or refused.
    bool editSettings(const std::function<void(AppSettings&)>& edit,
                      AppStore::EditTime when = AppStore::EditTime::anyTime);

    /// Assigns and reports whether the value changed.
    template <class T> static bool assign(T& field, const T& value) {
        if (field == value)
            return false;
        field = value;
        return true;
    }

    /// After the store's `trigger`, emits `notify` only if a property it announces now reads
    /// differently from the last time it was announced. Call once the getters can be read.
    template <class Trigger, class Notify> void follow(Trigger trigger, Notify notify) {
        using Self = typename QtPrivate::FunctionPointer<Notify>::Object;
        const int index = QMetaMethod::fromSignal(notify).methodIndex();
        if (!m_announced.contains(index)) {
            m_announced.insert(index, readAnnounced(index));
            // Announced some other way (a view's own edit): remember what it showed then.
            connect(static_cast<Self*>(this), notify, this, [this, index] { remember(index); });
        }
        connect(&m_store, trigger, this, [this, index] { announceIfChanged(index); });
    }

private:
    QVariantList readAnnounced(int notifyIndex) const;
    void remember(int notifyIndex);
    void announceIfChanged(int notifyIndex);

    AppStore& m_store;
    QHash<int, QVariantList> m_announced; // per change signal, what its properties last read
    bool m_announcing = false;
    bool m_viewEdits = false; // a view's proposed value is being applied
};

} // namespace quill
