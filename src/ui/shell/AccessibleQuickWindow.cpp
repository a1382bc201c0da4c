#include "AccessibleQuickWindow.h"

#ifdef QUILL_OWN_QUICK_ACCESSIBILITY
#include <QtGui/private/qhighdpiscaling_p.h>

namespace quill {

QRect AccessibleQuickWindow::rect() const {
    return QHighDpi::toNativePixels(QAccessibleQuickWindow::rect(),
                                    qobject_cast<QWindow*>(object()));
}

} // namespace quill
#endif
