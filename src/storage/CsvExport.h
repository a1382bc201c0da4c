#pragma once

#include "model/StudySession.h"
#include "storage/FileChooser.h"

#include <QList>

namespace quill::CsvExport {

/// The whole file text: header line, then one row per session, oldest first.
QString csvText(const QList<StudySession>& sessions);
/// Asks for a location, writes the file atomically; true when a file was written.
bool exportSessions(const QList<StudySession>& sessions, FileChooser& chooser);

QString suggestedFileName();

} // namespace quill::CsvExport
