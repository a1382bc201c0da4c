#include "model/TextRules.h"

#include <QTextBoundaryFinder>

namespace quill::text {

// NFD, combining marks dropped, then case folded: the comparison key for task names.
QString caseAndDiacriticFoldKey(const QString& s) {
    const QString decomposed = s.normalized(QString::NormalizationForm_D);
    QString stripped;
    stripped.reserve(decomposed.size());
    for (qsizetype i = 0; i < decomposed.size(); ++i) {
        const QChar c = decomposed.at(i);
        const auto cat = c.category();
        if (cat == QChar::Mark_NonSpacing || cat == QChar::Mark_SpacingCombining ||
            cat == QChar::Mark_Enclosing)
            continue;
        stripped.append(c);
    }
    return stripped.toCaseFolded();
}

QString trimmed(const QString& s) {
    return s.trimmed();
}

QString leftGraphemes(const QString& s, qsizetype count) {
    if (s.size() <= count)
        return s; // fewer code units than the limit means fewer graphemes too
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, s);
    qsizetype seen = 0;
    qsizetype pos = 0;
    while (seen < count) {
        const qsizetype next = finder.toNextBoundary();
        if (next < 0)
            return s;
        pos = next;
        ++seen;
    }
    return s.left(pos);
}

QString cleanedTaskName(const QString& s) {
    const QString cut = leftGraphemes(trimmed(s), kTaskNameLimit);
    return cut.size() > 0 && cut.back().isSpace() ? cut.trimmed() : cut;
}

bool equalIgnoringCaseAndDiacritics(const QString& a, const QString& b) {
    return caseAndDiacriticFoldKey(a) == caseAndDiacriticFoldKey(b);
}

bool canonicallyEqual(const QString& a, const QString& b) {
    return a == b ||
           a.normalized(QString::NormalizationForm_C) == b.normalized(QString::NormalizationForm_C);
}

} // namespace quill::text
