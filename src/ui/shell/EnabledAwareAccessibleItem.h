#pragma once

#include <QtGlobal>

// Qt 6.4 reports every Quick item as enabled to assistive technology, even one that is
// dimmed and ignores clicks. This interface adds the disabled state and announces its
// changes. It derives from Qt Quick's own item interface, whose layout is private to each
// Qt release, so it is built only against the release it was written for.
#if QT_VERSION >= QT_VERSION_CHECK(6, 4, 0) && QT_VERSION < QT_VERSION_CHECK(6, 5, 0)
#define QUILL_ENABLED_AWARE_ACCESSIBLE_ITEM 1
#include <QtQuick/private/qaccessiblequickitem_p.h>
#endif

namespace quill {

#ifdef QUILL_ENABLED_AWARE_ACCESSIBLE_ITEM
/// Qt Quick's item interface with the item's true enabled state, which follows a disabled
/// ancestor too (`QQuickItem::isEnabled` is the effective state).
class EnabledAwareAccessibleItem : public QAccessibleQuickItem {
public:
    explicit EnabledAwareAccessibleItem(QQuickItem* item);
    QAccessible::State state() const override;
};
#endif

/// Makes every Quick item's accessible interface report the disabled state; a no-op on a Qt
/// release whose own interface is not the one this was written for. Call before any
/// window is shown.
void installEnabledAwareAccessibility();

} // namespace quill
