#include "QtTranslations.h"

#include "ui/UiLog.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

namespace quill {

bool installQtTranslations(const QString& directory) {
    auto* translator = new QTranslator(QCoreApplication::instance());
    // "qtbase" covers the widgets and dialogs; Debian ships it with qt6-translations-l10n.
    if (!translator->load(QLocale(QLocale::Chinese, QLocale::China), QStringLiteral("qtbase"),
                          QStringLiteral("_"), directory)) {
        qCDebug(lcUi) << "No Chinese Qt translations in" << directory;
        delete translator;
        return false;
    }
    QCoreApplication::installTranslator(translator);
    return true;
}

} // namespace quill
