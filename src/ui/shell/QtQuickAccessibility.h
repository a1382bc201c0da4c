#pragma once

#include <QtGlobal>

// Qt 6.4's accessible interfaces for Quick windows and items report every item as enabled,
// even one that is dimmed and ignores clicks, and give extents in Qt's scaled pixels where
// assistive technology reads screen pixels (at a scale factor of 2 a highlight lands at half
// the place and size). The app's own interfaces correct both. They derive from Qt Quick's
// private ones, whose layout belongs to each Qt release, so they are built only against the
// release they were written for.
#if QT_VERSION >= QT_VERSION_CHECK(6, 4, 0) && QT_VERSION < QT_VERSION_CHECK(6, 5, 0)
#define QUILL_OWN_QUICK_ACCESSIBILITY 1
#endif

namespace quill {

/// Serves Quick windows and items with the app's corrected accessible interfaces; a no-op
/// on another Qt release. Call before any window is shown.
void installQtQuickAccessibility();

} // namespace quill
