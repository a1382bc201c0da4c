#include "audio/music/MprisProtocol.h"

#include <QDBusArgument>
#include <QStringList>
#include <algorithm>
#include <cstring>

namespace quill::mpris {

namespace {

QString busSuffix(const QString& busName) {
    const QString prefix = QString::fromLatin1(busNamePrefix);
    return busName.startsWith(prefix) ? busName.mid(prefix.size()) : busName;
}

bool mentionsAny(const PlayerInfo& player, const QStringList& words) {
    const QString suffix = busSuffix(player.busName).toLower();
    const QString entry = player.desktopEntry.toLower();
    return std::any_of(words.begin(), words.end(),
                       [&](const QString& w) { return suffix.contains(w) || entry.contains(w); });
}

int preferenceRank(const PlayerInfo& player) {
    static const QStringList musicPlayers{
        QStringLiteral("rhythmbox"),  QStringLiteral("elisa"),     QStringLiteral("lollypop"),
        QStringLiteral("gnomemusic"), QStringLiteral("amberol"),   QStringLiteral("strawberry"),
        QStringLiteral("clementine"), QStringLiteral("quodlibet"), QStringLiteral("audacious"),
        QStringLiteral("amarok"),     QStringLiteral("cantata"),   QStringLiteral("deadbeef"),
        QStringLiteral("exaile"),     QStringLiteral("tauon"),     QStringLiteral("juk"),
        QStringLiteral("guayadeque"), QStringLiteral("musique"),   QStringLiteral("gmusicbrowser"),
    };
    static const QStringList notMusicFirst{QStringLiteral("kdeconnect")};
    if (mentionsAny(player, musicPlayers))
        return 0;
    if (mentionsAny(player, notMusicFirst) || isBrowserOrVideoPlayer(player))
        return 2;
    return 1;
}

} // namespace

bool isBrowserOrVideoPlayer(const PlayerInfo& player) {
    static const QStringList words{
        QStringLiteral("firefox"),      QStringLiteral("chromium"),
        QStringLiteral("chrome"),       QStringLiteral("brave"),
        QStringLiteral("vivaldi"),      QStringLiteral("opera"),
        QStringLiteral("edge"),         QStringLiteral("epiphany"),
        QStringLiteral("falkon"),       QStringLiteral("qutebrowser"),
        QStringLiteral("librewolf"),    QStringLiteral("plasma-browser-integration"),
        QStringLiteral("vlc"),          QStringLiteral("mpv"),
        QStringLiteral("totem"),        QStringLiteral("celluloid"),
        QStringLiteral("smplayer"),     QStringLiteral("haruna"),
        QStringLiteral("dragonplayer"), QStringLiteral("parole"),
        QStringLiteral("mplayer"),      QStringLiteral("kodi"),
        QStringLiteral("showtime"),     QStringLiteral("videos"),
    };
    return mentionsAny(player, words);
}

bool isNetEaseClient(const PlayerInfo& player) {
    static const QStringList markers{
        QStringLiteral("netease"),      QStringLiteral("163music"), QStringLiteral("cloudmusic"),
        QStringLiteral("yesplaymusic"), QStringLiteral("musicfox"),
    };
    const QString suffix = busSuffix(player.busName).toLower();
    const QString entry = player.desktopEntry.toLower();
    const QString identity = player.identity.toLower();
    if (player.identity.contains(QStringLiteral("网易云音乐")))
        return true;
    return std::any_of(markers.begin(), markers.end(), [&](const QString& m) {
        return suffix.contains(m) || entry.contains(m) || identity.contains(m);
    });
}

void sortByMusicPreference(QList<PlayerInfo>& players) {
    std::stable_sort(players.begin(), players.end(), [](const PlayerInfo& a, const PlayerInfo& b) {
        const int ra = preferenceRank(a);
        const int rb = preferenceRank(b);
        if (ra != rb)
            return ra < rb;
        return a.busName < b.busName;
    });
}

QList<PlayerInfo> drivablePlayers(const QList<PlayerInfo>& players, MusicService service) {
    QList<PlayerInfo> out;
    for (const PlayerInfo& p : players) {
        const bool netEase = isNetEaseClient(p);
        if (service == MusicService::netEase ? netEase : !netEase && !isBrowserOrVideoPlayer(p))
            out.append(p);
    }
    if (service != MusicService::netEase)
        sortByMusicPreference(out);
    return out;
}

QString displayName(const PlayerInfo& player) {
    return player.identity.isEmpty() ? player.busName.mid(qsizetype(strlen(busNamePrefix)))
                                     : player.identity;
}

QVariantMap toVariantMap(const QVariant& value) {
    if (value.canConvert<QDBusArgument>() && value.userType() == qMetaTypeId<QDBusArgument>()) {
        const auto argument = value.value<QDBusArgument>();
        if (argument.currentType() != QDBusArgument::MapType ||
            argument.currentSignature() != QLatin1String("a{sv}"))
            return {};
        QVariantMap map;
        argument >> map;
        return map;
    }
    if (value.userType() == QMetaType::QVariantMap)
        return value.toMap();
    return {};
}

std::optional<PlayerState> playerStateFromProperties(const QVariant& properties) {
    const bool isMap =
        properties.userType() == QMetaType::QVariantMap ||
        (properties.userType() == qMetaTypeId<QDBusArgument>() &&
         properties.value<QDBusArgument>().currentSignature() == QLatin1String("a{sv}"));
    if (!isMap)
        return std::nullopt;
    const QVariantMap map = toVariantMap(properties);
    PlayerState state;
    state.playbackStatus = map.value(QStringLiteral("PlaybackStatus")).toString();
    const QVariant canPlay = map.value(QStringLiteral("CanPlay"));
    if (canPlay.userType() == QMetaType::Bool)
        state.canPlay = canPlay.toBool();
    state.metadata = toVariantMap(map.value(QStringLiteral("Metadata")));
    return state;
}

std::optional<QList<Playlist>> playlistsFromReply(const QVariant& reply) {
    if (reply.userType() != qMetaTypeId<QDBusArgument>())
        return std::nullopt;
    const auto argument = reply.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("a(oss)"))
        return std::nullopt;
    QList<Playlist> playlists;
    argument.beginArray();
    while (!argument.atEnd()) {
        Playlist playlist;
        QString icon;
        argument.beginStructure();
        argument >> playlist.id >> playlist.name >> icon;
        argument.endStructure();
        playlists.append(playlist);
    }
    argument.endArray();
    return playlists;
}

QString nowPlayingText(const QVariantMap& metadata) {
    const QString title = metadata.value(QStringLiteral("xesam:title")).toString().trimmed();
    if (title.isEmpty())
        return {};
    const QVariant artistValue = metadata.value(QStringLiteral("xesam:artist"));
    QStringList artists = artistValue.toStringList();
    if (artists.isEmpty() && artistValue.userType() == QMetaType::QString)
        artists << artistValue.toString();
    QStringList named;
    for (const QString& artist : std::as_const(artists))
        if (!artist.trimmed().isEmpty())
            named << artist.trimmed();
    if (named.isEmpty())
        return title;
    return title + QStringLiteral(" — ") + named.join(QStringLiteral(", "));
}

QString quotedName(const QString& name) {
    constexpr qsizetype limit = 60;
    QString shown = name;
    for (QChar& c : shown)
        if (c == u'\n' || c == u'\r' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            c = u' ';
    if (shown.size() <= limit)
        return shown;
    qsizetype cut = limit;
    if (shown.at(cut - 1).isHighSurrogate())
        --cut;
    return shown.left(cut) + QStringLiteral("…");
}

} // namespace quill::mpris
