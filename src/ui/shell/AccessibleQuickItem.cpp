#include "AccessibleQuickItem.h"

#ifdef QUILL_OWN_QUICK_ACCESSIBILITY
#include <QtGui/private/qhighdpiscaling_p.h>

namespace quill {

AccessibleQuickItem::AccessibleQuickItem(QQuickItem* item) : QAccessibleQuickItem(item) {
    // A listener keeps what it was told: the change has to be announced, not only answered.
    QObject::connect(item, &QQuickItem::enabledChanged, item, [item] {
        QAccessible::State changed;
        changed.disabled = true;
        QAccessibleStateChangeEvent event(item, changed);
        QAccessible::updateAccessibility(&event);
    });
}

QAccessible::State AccessibleQuickItem::state() const {
    QAccessible::State state = QAccessibleQuickItem::state();
    // Qt compares the item with its window in its own pixels; the item's extents are in
    // screen pixels here, so the window's have to be as well.
    const QRect view = QHighDpi::toNativePixels(viewRect(), item()->window());
    state.offscreen = !view.intersects(rect());
    if (!item()->isEnabled()) {
        state.disabled = true;
        state.focusable = false;
    }
    return state;
}

QRect AccessibleQuickItem::rect() const {
    return QHighDpi::toNativePixels(QAccessibleQuickItem::rect(), item()->window());
}

} // namespace quill
#endif
