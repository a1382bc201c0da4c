#include "StoreViewModel.h"

namespace quill {

void StoreViewModel::setStore(AppStore* store) {
    if (m_store == store)
        return;
    if (m_store)
        disconnect(m_store, nullptr, this, nullptr);
    m_store = store;
    if (m_store) {
        connectStore(m_store);
        connect(m_store, &QObject::destroyed, this, [this] { refreshAll(); });
    }
    refreshAll();
    Q_EMIT storeChanged();
}

} // namespace quill
