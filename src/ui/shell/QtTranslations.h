#pragma once

#include <QLibraryInfo>
#include <QString>

namespace quill {

/// Installs Qt's own Simplified Chinese texts (the export's file dialog, standard buttons), the
/// interface's language whatever the system's, from the translations in `directory`. False
/// when they are not installed there; Qt's texts then stay English.
bool installQtTranslations(
    const QString& directory = QLibraryInfo::path(QLibraryInfo::TranslationsPath));

} // namespace quill
