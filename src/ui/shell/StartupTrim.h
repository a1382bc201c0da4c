#pragma once

class QQuickWindow;

namespace quill {

/// Gives back what start-up left resident but the running app no longer needs: the free
/// heap that building the screens left behind, and the font file pages read while the
/// first frame's glyphs were drawn (they are cached as images now; a new glyph reads its
/// page again). Runs once, a moment after the window's first frame.
void trimAfterFirstFrame(QQuickWindow* window);

/// The trim itself; returns the resident kilobytes it let go of (0 where unsupported).
long trimResidentMemory();

} // namespace quill
