#pragma once

class QQuickWindow;

namespace quill {

/// Gives back what start-up left resident but the running app no longer needs: the free
/// heap that building the screens left behind, and the pages of libraries and fonts read
/// only to start (the kernel reads a page again from its cache when it is next used).
/// Runs once, a moment after the window's first frame.
void trimAfterFirstFrame(QQuickWindow* window);

/// The trim itself; returns the resident kilobytes it let go of (0 where unsupported).
long trimResidentMemory();

} // namespace quill
