#include "FakeMprisPlayer.h"

#include <QDBusError>
#include <QDBusMetaType>
#include <atomic>

QDBusArgument& operator<<(QDBusArgument& argument, const quill::test::FakePlaylist& playlist) {
    argument.beginStructure();
    argument << playlist.id << playlist.name << playlist.icon;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument,
                                quill::test::FakePlaylist& playlist) {
    argument.beginStructure();
    argument >> playlist.id >> playlist.name >> playlist.icon;
    argument.endStructure();
    return argument;
}

namespace quill::test {

namespace {
QDBusObjectPath playlistPath(qsizetype index) {
    return QDBusObjectPath(QStringLiteral("/org/quill/fake/playlist%1").arg(index));
}
} // namespace

FakeMprisPlayer::FakeMprisPlayer(const QString& busAddress, Options opts)
    : options(std::move(opts)), m_connectionName([] {
          static std::atomic_int serial{0};
          return QStringLiteral("quill-fake-player-%1").arg(++serial);
      }()),
      m_connection(QDBusConnection::connectToBus(busAddress, m_connectionName)) {
    qDBusRegisterMetaType<FakePlaylist>();
    qDBusRegisterMetaType<QList<FakePlaylist>>();
    new FakeRootAdaptor(this);
    new FakePlayerAdaptor(this);
    if (options.playlists)
        new FakePlaylistsAdaptor(this);
}

FakeMprisPlayer::~FakeMprisPlayer() {
    m_connection.unregisterObject(QStringLiteral("/org/mpris/MediaPlayer2"));
    QDBusConnection::disconnectFromBus(m_connectionName);
}

QString FakeMprisPlayer::busName() const {
    return QStringLiteral("org.mpris.MediaPlayer2.") + options.busSuffix;
}

bool FakeMprisPlayer::publish() {
    return m_connection.isConnected() &&
           m_connection.registerObject(QStringLiteral("/org/mpris/MediaPlayer2"), this,
                                       QDBusConnection::ExportAdaptors) &&
           m_connection.registerService(busName());
}

// ---- org.mpris.MediaPlayer2 ----

FakeRootAdaptor::FakeRootAdaptor(FakeMprisPlayer* player)
    : QDBusAbstractAdaptor(player), m_player(player) {}

QString FakeRootAdaptor::identity() const {
    ++m_player->reads;
    return m_player->options.identity;
}

QString FakeRootAdaptor::desktopEntry() const {
    ++m_player->reads;
    return m_player->options.desktopEntry;
}

void FakeRootAdaptor::Raise() {
    m_player->calls << QStringLiteral("Raise");
}
void FakeRootAdaptor::Quit() {
    m_player->calls << QStringLiteral("Quit");
}

// ---- org.mpris.MediaPlayer2.Player ----

FakePlayerAdaptor::FakePlayerAdaptor(FakeMprisPlayer* player)
    : QDBusAbstractAdaptor(player), m_player(player) {}

QString FakePlayerAdaptor::playbackStatus() const {
    ++m_player->reads;
    return m_player->playbackStatus;
}

QVariantMap FakePlayerAdaptor::metadata() const {
    return m_player->metadata;
}
bool FakePlayerAdaptor::shuffle() const {
    return m_player->shuffle;
}
bool FakePlayerAdaptor::canPlay() const {
    return m_player->canPlay;
}

void FakePlayerAdaptor::setShuffle(bool on) {
    m_player->calls << QStringLiteral("Set Shuffle %1").arg(on ? u"true" : u"false");
    m_player->shuffle = on;
}

void FakePlayerAdaptor::Play() {
    m_player->calls << QStringLiteral("Play");
    if (m_player->playNeverAnswers) {
        m_player->holdReply(); // and no reply is ever sent: a hung player
        return;
    }
    if (m_player->canPlay && m_player->playStartsPlayback)
        m_player->playbackStatus = QStringLiteral("Playing");
}

void FakePlayerAdaptor::Pause() {
    m_player->calls << QStringLiteral("Pause");
}
void FakePlayerAdaptor::PlayPause() {
    m_player->calls << QStringLiteral("PlayPause");
}
void FakePlayerAdaptor::Stop() {
    m_player->calls << QStringLiteral("Stop");
}
void FakePlayerAdaptor::Next() {
    m_player->calls << QStringLiteral("Next");
}
void FakePlayerAdaptor::Previous() {
    m_player->calls << QStringLiteral("Previous");
}

// ---- org.mpris.MediaPlayer2.Playlists ----

FakePlaylistsAdaptor::FakePlaylistsAdaptor(FakeMprisPlayer* player)
    : QDBusAbstractAdaptor(player), m_player(player) {}

uint FakePlaylistsAdaptor::playlistCount() const {
    return uint(m_player->playlists.size());
}

QStringList FakePlaylistsAdaptor::orderings() const {
    return {QStringLiteral("Alphabetical"), QStringLiteral("UserDefined")};
}

QList<FakePlaylist> FakePlaylistsAdaptor::GetPlaylists(uint index, uint maxCount, const QString&,
                                                       bool) {
    ++m_player->reads;
    QList<FakePlaylist> result;
    for (qsizetype i = index; i < m_player->playlists.size() && result.size() < maxCount; ++i)
        result.append({playlistPath(i), m_player->playlists.at(i).name, QString()});
    return result;
}

void FakePlaylistsAdaptor::ActivatePlaylist(const QDBusObjectPath& id) {
    for (qsizetype i = 0; i < m_player->playlists.size(); ++i) {
        if (playlistPath(i) != id)
            continue;
        const auto& playlist = m_player->playlists.at(i);
        m_player->calls << QStringLiteral("ActivatePlaylist ") + playlist.name;
        if (playlist.tracks.isEmpty()) {
            m_player->canPlay = false;
            m_player->playbackStatus = QStringLiteral("Stopped");
            m_player->metadata.clear();
        } else {
            m_player->canPlay = true;
            m_player->metadata = {
                {QStringLiteral("xesam:title"), playlist.tracks.first()},
                {QStringLiteral("xesam:artist"), QStringList{QStringLiteral("歌手")}}};
        }
        return;
    }
    m_player->calls << QStringLiteral("ActivatePlaylist ?") + id.path();
    m_player->refuse(QStringLiteral("no such playlist"));
}

} // namespace quill::test
