#include "QtQuickAccessibility.h"

#ifdef QUILL_OWN_QUICK_ACCESSIBILITY
#include "AccessibleQuickItem.h"
#include "AccessibleQuickWindow.h"

#include <QtQuick/private/qquickitem_p.h>
#endif

namespace quill {

#ifdef QUILL_OWN_QUICK_ACCESSIBILITY

namespace {

// Asked before Qt Quick's own factory, for what it would serve: windows, and the items marked
// accessible once the class walk reaches QQuickItem. A popup's item is taken at its own
// class, before Qt Quick Controls' page interface, so it reports in the same pixels as
// what it holds.
QAccessibleInterface* quickFactory(const QString& className, QObject* object) {
    if (className == QLatin1String("QQuickWindow"))
        return new AccessibleQuickWindow(qobject_cast<QQuickWindow*>(object));
    if (className != QLatin1String("QQuickItem") && className != QLatin1String("QQuickPopupItem"))
        return nullptr;
    auto* item = qobject_cast<QQuickItem*>(object);
    if (!item || !QQuickItemPrivate::get(item)->isAccessible)
        return nullptr;
    return new AccessibleQuickItem(item);
}

} // namespace

void installQtQuickAccessibility() {
    static const bool installed = [] {
        QAccessible::installFactory(quickFactory);
        return true;
    }();
    Q_UNUSED(installed);
}

#else

void installQtQuickAccessibility() {}

#endif

} // namespace quill
