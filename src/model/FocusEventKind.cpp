#include "model/FocusEventKind.h"

#include <array>

namespace quill {

namespace {
struct Entry {
    FocusEventKind kind;
    const char* raw;
};
constexpr std::array<Entry, 5> kEntries{{{FocusEventKind::reminder, "reminder"},
                                         {FocusEventKind::mindWander, "mindWander"},
                                         {FocusEventKind::fatigue, "fatigue"},
                                         {FocusEventKind::pause, "pause"},
                                         {FocusEventKind::resume, "resume"}}};
} // namespace

QString rawValue(FocusEventKind kind) {
    for (const auto& e : kEntries)
        if (e.kind == kind)
            return QString::fromLatin1(e.raw);
    return {};
}

std::optional<FocusEventKind> focusEventKindFromRaw(QAnyStringView raw) {
    for (const auto& e : kEntries)
        if (QAnyStringView::equal(raw, QLatin1StringView(e.raw)))
            return e.kind;
    return std::nullopt;
}

} // namespace quill
