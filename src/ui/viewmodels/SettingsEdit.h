#pragma once

#include "store/AppStore.h"

namespace quill {

/// Writes one change to the store's settings, already repaired: a stepper or a field then
/// shows at once the value the store would otherwise repair to after its debounce.
template <class Edit> void editRepairedSettings(AppStore* store, Edit edit) {
    if (!store)
        return;
    AppSettings updated = store->settings();
    edit(updated);
    store->setSettings(normalizedSettings(updated));
}

} // namespace quill
