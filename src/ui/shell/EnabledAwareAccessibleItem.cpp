#include "EnabledAwareAccessibleItem.h"

#ifdef QUILL_ENABLED_AWARE_ACCESSIBLE_ITEM
#include <QtQuick/private/qquickitem_p.h>
#endif

namespace quill {

#ifdef QUILL_ENABLED_AWARE_ACCESSIBLE_ITEM

EnabledAwareAccessibleItem::EnabledAwareAccessibleItem(QQuickItem* item)
    : QAccessibleQuickItem(item) {
    // A listener keeps what it was told: the change has to be announced, not only answered.
    QObject::connect(item, &QQuickItem::enabledChanged, item, [item] {
        QAccessible::State changed;
        changed.disabled = true;
        QAccessibleStateChangeEvent event(item, changed);
        QAccessible::updateAccessibility(&event);
    });
}

QAccessible::State EnabledAwareAccessibleItem::state() const {
    QAccessible::State state = QAccessibleQuickItem::state();
    if (!item()->isEnabled()) {
        state.disabled = true;
        state.focusable = false;
    }
    return state;
}

namespace {

// Asked before Qt Quick's own factory, for the same items it would serve: those marked
// accessible, reached when the class walk arrives at QQuickItem.
QAccessibleInterface* enabledAwareFactory(const QString& className, QObject* object) {
    if (className != QLatin1String("QQuickItem"))
        return nullptr;
    auto* item = qobject_cast<QQuickItem*>(object);
    if (!item || !QQuickItemPrivate::get(item)->isAccessible)
        return nullptr;
    return new EnabledAwareAccessibleItem(item);
}

} // namespace

void installEnabledAwareAccessibility() {
    static const bool installed = [] {
        QAccessible::installFactory(enabledAwareFactory);
        return true;
    }();
    Q_UNUSED(installed);
}

#else

void installEnabledAwareAccessibility() {}

#endif

} // namespace quill
