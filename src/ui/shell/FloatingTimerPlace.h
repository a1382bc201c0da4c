#pragma once

#include <QList>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <optional>

namespace quill {

/// Where the floating timer appears: where the user last left it, in this session or an
/// earlier one, or the top-right corner of the primary screen when there is no such place or
/// it lies on no screen any more. The place is kept in a small state file of its own, apart
/// from the data file, replaced whole on each change.
class FloatingTimerPlace {
public:
    explicit FloatingTimerPlace(QString filePath);

    /// "$XDG_STATE_HOME/Quillmere/floating-timer-position" (~/.local/state when unset).
    static QString defaultFilePath();

    /// The top-left corner for a window of `size`, given the screens' usable areas (the
    /// primary one first).
    QPoint position(QSize size, const QList<QRect>& screens);
    /// The user left the window with its top-left corner here.
    void remember(QPoint topLeft);

private:
    const QString m_filePath;
    bool m_loaded = false;
    std::optional<QPoint> m_place;
};

} // namespace quill
