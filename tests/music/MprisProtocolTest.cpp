#include "audio/music/MprisProtocol.h"

#include <QStringList>
#include <gtest/gtest.h>

using namespace quill;
using mpris::PlayerInfo;

namespace {
PlayerInfo player(const QString& suffix, const QString& identity = {}, const QString& entry = {}) {
    return {u"org.mpris.MediaPlayer2."_qs + suffix, identity, entry};
}
} // namespace

TEST(MprisNetEase, RecognisedByBusNameIdentityOrDesktopEntry) {
    EXPECT_TRUE(mpris::isNetEaseClient(player(u"netease-cloud-music"_qs)));
    EXPECT_TRUE(mpris::isNetEaseClient(player(u"NeteaseCloudMusicGtk4"_qs)));
    EXPECT_TRUE(mpris::isNetEaseClient(player(u"yesplaymusic"_qs)));
    EXPECT_TRUE(mpris::isNetEaseClient(player(u"chromium.instance42"_qs, u"网易云音乐"_qs)));
    EXPECT_TRUE(mpris::isNetEaseClient(player(u"electron"_qs, {}, u"com.netease.163music"_qs)));
    EXPECT_FALSE(mpris::isNetEaseClient(player(u"rhythmbox"_qs, u"Rhythmbox"_qs)));
    EXPECT_FALSE(mpris::isNetEaseClient(player(u"spotify"_qs, u"Spotify"_qs, u"spotify"_qs)));
}

TEST(MprisPreference, MusicPlayersFirstBrowsersLastStableByName) {
    QList<PlayerInfo> players{player(u"firefox.instance_1_2"_qs),
                              player(u"vlc"_qs),
                              player(u"zplayer"_qs),
                              player(u"rhythmbox"_qs),
                              player(u"aplayer"_qs),
                              player(u"elisa"_qs)};
    mpris::sortByMusicPreference(players);
    QStringList order;
    for (const PlayerInfo& p : players)
        order << p.busName.mid(23);
    EXPECT_EQ(order, (QStringList{u"elisa"_qs, u"rhythmbox"_qs, u"aplayer"_qs, u"zplayer"_qs,
                                  u"firefox.instance_1_2"_qs, u"vlc"_qs}));
}

TEST(MprisNowPlaying, TitleAndArtists) {
    QVariantMap m{{u"xesam:title"_qs, u"晴天"_qs}, {u"xesam:artist"_qs, QStringList{u"周杰伦"_qs}}};
    EXPECT_EQ(mpris::nowPlayingText(m), u"晴天 — 周杰伦"_qs);

    m[u"xesam:artist"_qs] = QStringList{u"A"_qs, u" "_qs, u"B "_qs};
    EXPECT_EQ(mpris::nowPlayingText(m), u"晴天 — A, B"_qs);

    m[u"xesam:artist"_qs] = u"Solo"_qs; // some players send a plain string
    EXPECT_EQ(mpris::nowPlayingText(m), u"晴天 — Solo"_qs);

    m.remove(u"xesam:artist"_qs);
    EXPECT_EQ(mpris::nowPlayingText(m), u"晴天"_qs);

    m[u"xesam:title"_qs] = u"  "_qs;
    EXPECT_EQ(mpris::nowPlayingText(m), QString());
    EXPECT_EQ(mpris::nowPlayingText({}), QString());
}

TEST(MprisPlayerState, ReadsStatusCanPlayAndMetadata) {
    const QVariantMap props{{u"PlaybackStatus"_qs, u"Paused"_qs},
                            {u"CanPlay"_qs, false},
                            {u"Metadata"_qs, QVariantMap{{u"xesam:title"_qs, u"T"_qs}}}};
    const auto state = mpris::playerStateFromProperties(props);
    ASSERT_TRUE(state);
    EXPECT_EQ(state->playbackStatus, u"Paused"_qs);
    EXPECT_FALSE(state->canPlay);
    EXPECT_EQ(state->metadata.value(u"xesam:title"_qs).toString(), u"T"_qs);

    const auto sparse = mpris::playerStateFromProperties(QVariantMap{});
    ASSERT_TRUE(sparse);
    EXPECT_TRUE(sparse->canPlay) << "a player that leaves CanPlay out may still play";

    EXPECT_FALSE(mpris::playerStateFromProperties(u"not a map"_qs));
    EXPECT_FALSE(mpris::playlistsFromReply(u"not a list"_qs));
}

TEST(MprisQuotedName, OneLineAndBounded) {
    EXPECT_EQ(mpris::quotedName(u"a\nb\r\nc"_qs), u"a b  c"_qs);
    EXPECT_EQ(mpris::quotedName(u"短"_qs), u"短"_qs);

    const QString longName(1000, u'x');
    const QString shown = mpris::quotedName(longName);
    EXPECT_EQ(shown.size(), 61);
    EXPECT_TRUE(shown.endsWith(u'…'));

    // An emoji straddling the cut is dropped whole, never halved.
    const QString straddling = QString(59, u'x') + u"🎧🎧"_qs;
    const QString cut = mpris::quotedName(straddling);
    EXPECT_EQ(cut, QString(59, u'x') + u"…"_qs);
    EXPECT_FALSE(cut.at(cut.size() - 2).isHighSurrogate());
}
