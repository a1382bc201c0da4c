#pragma once

#include "AmbientTileModel.h"
#include "StoreViewModel.h"

namespace quill {

/// The ambient sounds card: the status line, the play/pause button and the tiles.
/// It holds no state; everything follows the store and its settings.
class AmbientCardViewModel : public StoreViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Built by ViewModels on the app's store")
    /// What is selected or playing, or the hint when nothing is selected.
    Q_PROPERTY(QString statusText READ statusText NOTIFY changed)
    /// The store's playing flag.
    Q_PROPERTY(bool playing READ playing NOTIFY changed)
    /// "暂停" while playing, else "播放".
    Q_PROPERTY(QString playTitle READ playTitle NOTIFY changed)
    /// "pause.fill" while playing, else "play.fill".
    Q_PROPERTY(QString playSymbol READ playSymbol NOTIFY changed)
    /// One row per sound, in catalogue order.
    Q_PROPERTY(quill::AmbientTileModel* tiles READ tiles CONSTANT)

public:
    explicit AmbientCardViewModel(AppStore& store, QObject* parent = nullptr);

    QString statusText() const { return m_statusText; }
    bool playing() const { return m_playing; }
    QString playTitle() const;
    QString playSymbol() const;
    AmbientTileModel* tiles() const { return m_tiles; }

    /// Adds the sound to the mix or removes it (the store may start or stop playback).
    Q_INVOKABLE void toggleSound(const QString& raw);
    /// Sets one sound's volume, on every change while a slider is dragged.
    Q_INVOKABLE void setVolume(const QString& raw, double volume);
    Q_INVOKABLE void togglePlayback();
    /// The pointer or the keyboard is on the card: a play may follow.
    Q_INVOKABLE void prepare();

Q_SIGNALS:
    void changed();

private:
    void connectStore();
    void refreshAll();
    AmbientTileModel* m_tiles;
    QString m_statusText;
    bool m_playing = false;
};

} // namespace quill
