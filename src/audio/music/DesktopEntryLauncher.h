#pragma once

#include "audio/music/NetEaseLauncher.h"

#include <QString>
#include <QStringList>

namespace quill {

/// Launches the NetEase client through its XDG desktop entry, detached from the app.
class DesktopEntryLauncher final : public NetEaseLauncher {
public:
    /// The desktop entry file names of the known NetEase clients, most common first.
    static QStringList knownEntryNames();

    /// Looks for `entryNames` in the XDG applications folders.
    explicit DesktopEntryLauncher(QStringList entryNames = knownEntryNames());

    Result launchInBackground() override;

    /// The program and its arguments from the "Exec" key of a desktop entry's main group,
    /// with field codes such as %U removed and "%%" turned into "%"; empty when there is none.
    static QStringList commandFromDesktopEntry(const QString& entryText);

private:
    QStringList m_entryNames;
};

} // namespace quill
