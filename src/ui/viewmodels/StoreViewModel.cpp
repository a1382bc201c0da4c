#include "StoreViewModel.h"

#include <QMetaProperty>

namespace quill {

bool StoreViewModel::editSettings(const std::function<void(AppSettings&)>& edit,
                                  AppStore::EditTime when) {
    const bool before = std::exchange(m_viewEdits, true);
    const bool done = m_store.editSettings(edit, when);
    m_viewEdits = before;
    return done;
}

QVariantList StoreViewModel::readAnnounced(int notifyIndex) const {
    QVariantList values;
    const QMetaObject* meta = metaObject();
    for (int i = 0; i < meta->propertyCount(); ++i) {
        const QMetaProperty p = meta->property(i);
        if (p.notifySignalIndex() == notifyIndex)
            values << p.read(this);
    }
    return values;
}

void StoreViewModel::remember(int notifyIndex) {
    if (!m_announcing)
        m_announced[notifyIndex] = readAnnounced(notifyIndex);
}

void StoreViewModel::announceIfChanged(int notifyIndex) {
    QVariantList now = readAnnounced(notifyIndex);
    QVariantList& last = m_announced[notifyIndex];
    // A view that proposed a value re-reads it even when the store kept the old one.
    if (now == last && !m_viewEdits)
        return;
    last = std::move(now);
    m_announcing = true;
    metaObject()->method(notifyIndex).invoke(this, Qt::DirectConnection);
    m_announcing = false;
}

} // namespace quill
