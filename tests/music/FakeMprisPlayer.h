#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusError>
#include <QDBusObjectPath>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace quill::test {

/// One entry of GetPlaylists' a(oss) answer.
struct FakePlaylist {
    QDBusObjectPath id;
    QString name;
    QString icon;
};

} // namespace quill::test

Q_DECLARE_METATYPE(quill::test::FakePlaylist)

QDBusArgument& operator<<(QDBusArgument& argument, const quill::test::FakePlaylist& playlist);
const QDBusArgument& operator>>(const QDBusArgument& argument, quill::test::FakePlaylist& playlist);

namespace quill::test {

/// An MPRIS player on a test bus, on its own connection like a real one. It records every
/// command it receives (property writes included) and counts reads; its state is plain fields
/// the test sets.
class FakeMprisPlayer final : public QObject, protected QDBusContext {
    Q_OBJECT
public:
    struct Options {
        QString busSuffix; ///< after "org.mpris.MediaPlayer2."
        QString identity;
        QString desktopEntry;
        bool playlists = false; ///< exports the Playlists interface
    };
    struct Playlist {
        QString name;
        QStringList tracks; ///< titles; none means an empty playlist
    };

    FakeMprisPlayer(const QString& busAddress, Options options);
    ~FakeMprisPlayer() override;

    /// Registers the player object and claims its bus name.
    bool publish();
    QString busName() const;

    // Calls reach the adaptors, but QtDBus keeps the call's context on the exported object.
    void holdReply() { setDelayedReply(true); }
    void refuse(const QString& why) { sendErrorReply(QDBusError::InvalidArgs, why); }

    int count(const QString& command) const { return int(calls.count(command)); }

    // What the player reports and how it behaves.
    QString playbackStatus = QStringLiteral("Paused");
    bool canPlay = true;
    bool shuffle = false;
    QVariantMap metadata;
    bool playStartsPlayback = true;
    bool playNeverAnswers = false;
    QList<Playlist> playlists;

    // What it received.
    QStringList calls; ///< "Play", "Set Shuffle true", "ActivatePlaylist <name>" …
    int reads = 0;     ///< property reads and playlist listings

    Options options;

private:
    QString m_connectionName;
    QDBusConnection m_connection;
};

class FakeRootAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2")
    Q_PROPERTY(QString Identity READ identity)
    Q_PROPERTY(QString DesktopEntry READ desktopEntry)
    Q_PROPERTY(bool CanQuit READ no)
    Q_PROPERTY(bool CanRaise READ no)
    Q_PROPERTY(bool HasTrackList READ no)
public:
    explicit FakeRootAdaptor(FakeMprisPlayer* player);
    QString identity() const;
    QString desktopEntry() const;
    bool no() const { return false; }
public Q_SLOTS:
    void Raise();
    void Quit();

private:
    FakeMprisPlayer* m_player;
};

class FakePlayerAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2.Player")
    Q_PROPERTY(QString PlaybackStatus READ playbackStatus)
    Q_PROPERTY(QVariantMap Metadata READ metadata)
    Q_PROPERTY(bool Shuffle READ shuffle WRITE setShuffle)
    Q_PROPERTY(bool CanPlay READ canPlay)
    Q_PROPERTY(bool CanControl READ canControl)
public:
    explicit FakePlayerAdaptor(FakeMprisPlayer* player);
    QString playbackStatus() const;
    QVariantMap metadata() const;
    bool shuffle() const;
    void setShuffle(bool on);
    bool canPlay() const;
    bool canControl() const { return true; }
public Q_SLOTS:
    void Play();
    void Pause();
    void PlayPause();
    void Stop();
    void Next();
    void Previous();

private:
    FakeMprisPlayer* m_player;
};

class FakePlaylistsAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2.Playlists")
    Q_PROPERTY(uint PlaylistCount READ playlistCount)
    Q_PROPERTY(QStringList Orderings READ orderings)
public:
    explicit FakePlaylistsAdaptor(FakeMprisPlayer* player);
    uint playlistCount() const;
    QStringList orderings() const;
public Q_SLOTS:
    QList<quill::test::FakePlaylist> GetPlaylists(uint index, uint maxCount, const QString& order,
                                                  bool reverseOrder);
    void ActivatePlaylist(const QDBusObjectPath& id);

private:
    FakeMprisPlayer* m_player;
};

} // namespace quill::test
