#pragma once

#include "QtQuickAccessibility.h"

#ifdef QUILL_OWN_QUICK_ACCESSIBILITY
#include <QtQuick/private/qaccessiblequickitem_p.h>

namespace quill {

/// Qt Quick's item interface with the item's true enabled state, which follows a disabled
/// ancestor too (`QQuickItem::isEnabled` is the effective state), and its extents in
/// screen pixels.
class AccessibleQuickItem : public QAccessibleQuickItem {
public:
    explicit AccessibleQuickItem(QQuickItem* item);
    QAccessible::State state() const override;
    QRect rect() const override;
};

} // namespace quill
#endif
