#include "model/StudySession.h"

#include "model/TextRules.h"

#include <algorithm>

namespace quill {

QString uncategorizedTaskName() {
    return QStringLiteral("未分类");
}

QString StudySession::displayTaskName() const {
    if (!taskName)
        return uncategorizedTaskName();
    const QString trimmed = text::trimmed(*taskName);
    return trimmed.isEmpty() ? uncategorizedTaskName() : trimmed;
}

qint64 StudySession::roundedMinutes() const {
    // Integer form of round-half-away-from-zero for seconds / 60.
    // Quotient and remainder, so no stored value can overflow on the way.
    const qint64 whole = focusedSeconds / 60, rest = focusedSeconds % 60;
    return rest >= 30 ? whole + 1 : rest <= -30 ? whole - 1 : whole;
}

qint64 StudySession::count(FocusEventKind kind) const {
    return std::count_if(events.begin(), events.end(),
                         [kind](const FocusEvent& e) { return e.kind == kind; });
}

} // namespace quill
