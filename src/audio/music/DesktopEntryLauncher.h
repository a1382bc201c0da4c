#pragma once

#include "audio/music/NetEaseLauncher.h"

#include <QString>
#include <QStringList>

namespace quill {

/// Launches a program through its XDG desktop entry, detached from the app: the NetEase client,
/// or the desktop's music player.
class DesktopEntryLauncher final : public NetEaseLauncher {
public:
    /// The desktop entry file names of the known NetEase clients, most common first.
    static QStringList knownEntryNames();
    /// The desktop's music players: the default application for music files in the user's
    /// and the system's mimeapps.list (unless it is a browser or a video player), then the
    /// well-known music players.
    static QStringList musicPlayerEntryNames();

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
