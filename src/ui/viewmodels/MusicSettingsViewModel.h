#pragma once

#include "MusicPlayerProbe.h"
#include "StoreViewModel.h"

#include <QStringList>
#include <memory>

namespace quill {

/// The settings screen's music card: the switch, the service and source pickers, the
/// playlist field, the hint naming the player that would be driven, the test button and
/// the music message.
class MusicSettingsViewModel : public StoreViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Built by ViewModels on the app's store")
    /// Start music when a round completes.
    Q_PROPERTY(bool autoPlay READ autoPlay WRITE setAutoPlay NOTIFY changed)
    /// "结束后自动播放当前队列" for NetEase, else "结束后自动随机播放".
    Q_PROPERTY(QString autoPlayTitle READ autoPlayTitle NOTIFY changed)
    /// The card's symbol: "cloud.fill" for NetEase, else "music.note".
    Q_PROPERTY(QString cardSymbol READ cardSymbol NOTIFY changed)
    /// The service is NetEase (absent counts as the music app).
    Q_PROPERTY(bool netEase READ netEase NOTIFY changed)
    /// Display names of the services, in declaration order.
    Q_PROPERTY(QStringList serviceOptions READ serviceOptions CONSTANT)
    /// Index of the effective service.
    Q_PROPERTY(int serviceIndex READ serviceIndex WRITE setServiceIndex NOTIFY changed)
    /// Display names of the sources.
    Q_PROPERTY(QStringList sourceOptions READ sourceOptions CONSTANT)
    /// Index of the stored source.
    Q_PROPERTY(int sourceIndex READ sourceIndex WRITE setSourceIndex NOTIFY changed)
    /// The playlist field and its caption are shown (music app, named playlist).
    Q_PROPERTY(bool playlistShown READ playlistShown NOTIFY changed)
    /// The playlist's name as stored.
    Q_PROPERTY(QString playlistName READ playlistName WRITE setPlaylistName NOTIFY changed)
    /// The caption under the playlist field.
    Q_PROPERTY(QString playlistCaption READ playlistCaption CONSTANT)
    /// The note shown instead of the source row for NetEase.
    Q_PROPERTY(QString netEaseNote READ netEaseNote CONSTANT)
    /// The hint's two lines beside the test button.
    Q_PROPERTY(QString hintTitle READ hintTitle NOTIFY hintChanged)
    Q_PROPERTY(QString hintDetail READ hintDetail NOTIFY hintChanged)
    /// "测试随机播放" accepts clicks: not the music app with a blank playlist name.
    Q_PROPERTY(bool testEnabled READ testEnabled NOTIFY changed)
    /// The store's music message; empty when none.
    Q_PROPERTY(QString message READ message NOTIFY messageChanged)
    /// Its tint name: "coral" when it reports a failure ("失败"), else "mint".
    Q_PROPERTY(QString messageTint READ messageTint NOTIFY messageChanged)

public:
    explicit MusicSettingsViewModel(AppStore& store, QObject* parent = nullptr);
    ~MusicSettingsViewModel() override;

    /// Replaces the player search (tests pass a scripted one).
    void setProbe(std::shared_ptr<MusicPlayerProbe> probe);

    bool autoPlay() const;
    void setAutoPlay(bool on);
    QString autoPlayTitle() const;
    QString cardSymbol() const;
    bool netEase() const;
    static QStringList serviceOptions();
    int serviceIndex() const;
    void setServiceIndex(int index);
    static QStringList sourceOptions();
    int sourceIndex() const;
    void setSourceIndex(int index);
    bool playlistShown() const;
    QString playlistName() const;
    void setPlaylistName(const QString& name);
    static QString playlistCaption();
    static QString netEaseNote();
    QString hintTitle() const;
    QString hintDetail() const;
    bool testEnabled() const;
    QString message() const;
    QString messageTint() const;

    /// Looks again for the running player (the screen calls this when it is shown).
    Q_INVOKABLE void refreshPlayer();
    Q_INVOKABLE void testMusic();

Q_SIGNALS:
    void changed();
    void hintChanged();
    void messageChanged();

private:
    AppSettings current() const;
    MusicService service() const;

    std::shared_ptr<MusicPlayerProbe> m_probe;
    /// Bumped per search, so only the latest answer counts.
    int m_search = 0;
    bool m_searched = false;
    QString m_player;
    MusicService m_lastService = MusicService::appleMusic;
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
};

} // namespace quill
