#pragma once

#include "model/FocusEvent.h"

#include <QList>
#include <optional>

namespace quill {

/// A round that has ended (or still runs) and waits for its review.
struct SessionDraft {
    QDateTime startedAt;
    qint64 plannedMinutes = 0;
    std::optional<QString> taskName;
    QList<FocusEvent> events;
    qint64 startEnergy = 4;
    qint64 endEnergy = 3;
    qint64 focusRating = 4;
    QString note;
};

} // namespace quill
