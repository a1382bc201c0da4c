#pragma once

#include "model/FocusEventKind.h"

#include <QDateTime>
#include <QUuid>

namespace quill {

/// One timestamped event inside a round.
struct FocusEvent {
    QUuid id;
    QDateTime date;
    qint64 elapsedSeconds = 0; ///< net focus seconds done when it was recorded
    FocusEventKind kind = FocusEventKind::reminder;

    bool operator==(const FocusEvent&) const = default;
};

} // namespace quill
