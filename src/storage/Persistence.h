#pragma once

#include "storage/FileStamp.h"
#include "storage/PersistedData.h"

#include <QString>

namespace quill::Persistence {

struct LoadResult {
    PersistedData data;
    /// A file exists but could not be decoded; it must be kept before anything replaces it.
    bool unreadableFileExists = false;
    /// The version of the file that was read; `exists` is false when there was none.
    FileStamp stamp;
};

/// "focus-data.json" inside `directory`.
QString dataFilePath(const QString& directory);
/// Reads and decodes the file; any failure gives default settings and no sessions. Anything
/// but a regular file of at most 512 MB (a FIFO, a device, a folder) counts as unreadable
/// without being read.
LoadResult load(const QString& directory);
/// Writes the whole file atomically, creating the directory; failures are logged, never
/// thrown, and their system description is put in `error` when given.
bool save(const QString& directory, const AppSettings& settings,
          const QList<StudySession>& sessions, QString* error = nullptr);
/// The same with the ledger; `written`, when given, receives the version of the file written.
bool save(const QString& directory, const PersistedData& data, QString* error,
          FileStamp* written = nullptr);
/// Renames an unreadable data file to "focus-data.json.unreadable-<UTC time>" beside it.
bool preserveUnreadable(const QString& directory, const QDateTime& now, QString* error = nullptr);
/// Whether `fileName` is one of the temporaries an atomic write of the data file leaves
/// behind when the process dies mid-write ("focus-data.json.quillmere-save-" and six letters
/// or digits); a file of the user's with any other name is never one.
bool isStaleTemporaryName(const QString& fileName);
/// Deletes those temporaries in `directory` and nothing else; returns how many went.
int removeStaleTemporaries(const QString& directory);
/// Writes `bytes` to `path` atomically (a 0600 temporary file, then replace); `written`: the
/// stamp of the file as written, so a later change by someone else can be told apart.
bool writeAtomically(const QString& path, const QByteArray& bytes, QString* error,
                     FileStamp* written = nullptr);

} // namespace quill::Persistence
