#pragma once

#include "QtQuickAccessibility.h"

#ifdef QUILL_OWN_QUICK_ACCESSIBILITY
#include <QtQuick/private/qaccessiblequickview_p.h>

namespace quill {

/// Qt Quick's window interface with the window's extents in screen pixels, as its items'.
class AccessibleQuickWindow : public QAccessibleQuickWindow {
public:
    using QAccessibleQuickWindow::QAccessibleQuickWindow;
    QRect rect() const override;
};

} // namespace quill
#endif
