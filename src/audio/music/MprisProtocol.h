#pragma once

#include "model/SettingsEnums.h"

#include <QDBusObjectPath>
#include <QList>
#include <QString>
#include <QVariant>
#include <QVariantMap>
#include <optional>

namespace quill::mpris {

inline constexpr auto busNamePrefix = "org.mpris.MediaPlayer2.";
inline constexpr auto objectPath = "/org/mpris/MediaPlayer2";
inline constexpr auto rootInterface = "org.mpris.MediaPlayer2";
inline constexpr auto playerInterface = "org.mpris.MediaPlayer2.Player";
inline constexpr auto playlistsInterface = "org.mpris.MediaPlayer2.Playlists";
inline constexpr auto propertiesInterface = "org.freedesktop.DBus.Properties";

/// One player seen on the bus, with what its root interface says about itself.
struct PlayerInfo {
    QString busName;
    QString identity;
    QString desktopEntry;
};

/// The player's state as one Properties.GetAll of the Player interface reports it.
struct PlayerState {
    QString playbackStatus; ///< "Playing", "Paused" or "Stopped"
    bool canPlay = true;    ///< absent counts as true: many players leave it out
    QVariantMap metadata;
};

struct Playlist {
    QDBusObjectPath id;
    QString name;
};

/// A NetEase Cloud Music client, recognised by its bus name, desktop entry or identity.
bool isNetEaseClient(const PlayerInfo& player);

/// A web browser or a video player: never asked to play music, whatever else is running.
bool isBrowserOrVideoPlayer(const PlayerInfo& player);

/// Orders the desktop players: dedicated music players first, browsers and video players
/// last, the bus name breaking ties so the choice is stable.
void sortByMusicPreference(QList<PlayerInfo>& players);

/// The players a request for `service` may drive, the one to try first leading: NetEase clients
/// for NetEase; otherwise the desktop's music players, never a browser or a video player.
QList<PlayerInfo> drivablePlayers(const QList<PlayerInfo>& players, MusicService service);

/// What to call a player: its identity, or its bus name without the MPRIS prefix.
QString displayName(const PlayerInfo& player);

/// A variant that holds a{sv}, whether already converted or still a QDBusArgument.
QVariantMap toVariantMap(const QVariant& value);

/// The Player interface's properties as a state; nothing when they are not a{sv}.
std::optional<PlayerState> playerStateFromProperties(const QVariant& properties);

/// GetPlaylists' a(oss) answer; nothing when the player answered something else.
std::optional<QList<Playlist>> playlistsFromReply(const QVariant& reply);

/// "title — artist" from xesam metadata; just the title without artists; empty without title.
QString nowPlayingText(const QVariantMap& metadata);

/// A user-supplied name fit to quote in a one-line message: line breaks shown as blanks and
/// anything past 60 characters elided, never splitting a surrogate pair.
QString quotedName(const QString& name);

} // namespace quill::mpris
