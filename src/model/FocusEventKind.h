#pragma once

#include <QAnyStringView>
#include <QString>
#include <optional>

namespace quill {

/// What a logged event inside a round records. The raw value is the stored form.
enum class FocusEventKind { reminder, mindWander, fatigue, pause, resume };

QString rawValue(FocusEventKind kind);
/// Exactly the five raw strings, case-sensitive; anything else gives no value.
std::optional<FocusEventKind> focusEventKindFromRaw(QAnyStringView raw);

} // namespace quill
