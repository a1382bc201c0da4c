#pragma once

#include <QString>

namespace quill::text {

/// White space and line breaks removed from both ends.
QString trimmed(const QString& s);
/// The first `count` user-perceived characters (grapheme clusters) of `s`.
QString leftGraphemes(const QString& s, qsizetype count);
/// Trimmed, then cut to 40 user-perceived characters: how task names are cleaned. A cut that
/// ends in white space is trimmed again, so cleaning a cleaned name changes nothing.
QString cleanedTaskName(const QString& s);
/// Equal ignoring letter case and diacritics, independent of locale.
bool equalIgnoringCaseAndDiacritics(const QString& a, const QString& b);
/// The key under which names equal ignoring case and diacritics are the same: compute it
/// once per name when comparing many.
QString caseAndDiacriticFoldKey(const QString& s);
/// Same characters under Unicode canonical equivalence, case-sensitive.
bool canonicallyEqual(const QString& a, const QString& b);

inline constexpr qsizetype kTaskNameLimit = 40;

} // namespace quill::text
