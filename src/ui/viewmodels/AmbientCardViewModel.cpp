#include "AmbientCardViewModel.h"

#include <cmath>

namespace quill {

AmbientCardViewModel::AmbientCardViewModel(QObject* parent)
    : StoreViewModel(parent), m_tiles(new AmbientTileModel(this)) {
    refreshAll();
}

void AmbientCardViewModel::connectStore(AppStore* s) {
    connect(s, &AppStore::settingsChanged, this, &AmbientCardViewModel::refreshAll);
    connect(s, &AppStore::isAmbientPlayingChanged, this, &AmbientCardViewModel::refreshAll);
}

void AmbientCardViewModel::refreshAll() {
    const AppStore* s = store();
    m_tiles->update(s);
    const bool playing = s && s->isAmbientPlaying();
    const QList<AmbientSound> selected =
        s ? s->settings().selectedAmbientSounds() : QList<AmbientSound>{};
    QString status = QStringLiteral("点选下面的声音即可试听，可以叠加多种一起放。");
    if (!selected.isEmpty()) {
        QStringList titles;
        for (AmbientSound sound : selected)
            titles << title(sound);
        status = (playing ? QStringLiteral("正在播放：") : QStringLiteral("已选：")) +
                 titles.join(QStringLiteral(" + "));
    }
    bool changed = assign(m_statusText, status);
    changed |= assign(m_playing, playing);
    if (changed)
        Q_EMIT this->changed();
}

QString AmbientCardViewModel::playTitle() const {
    return m_playing ? QStringLiteral("暂停") : QStringLiteral("播放");
}

QString AmbientCardViewModel::playSymbol() const {
    return m_playing ? QStringLiteral("pause.fill") : QStringLiteral("play.fill");
}

void AmbientCardViewModel::toggleSound(const QString& raw) {
    if (store() && ambientSoundFromRaw(raw))
        store()->toggleAmbientSound(*ambientSoundFromRaw(raw));
}

void AmbientCardViewModel::setVolume(const QString& raw, double volume) {
    const auto sound = ambientSoundFromRaw(raw);
    if (store() && sound && std::isfinite(volume))
        store()->setAmbientVolume(volume, *sound);
}

void AmbientCardViewModel::prepare() {
    if (store())
        store()->prepareAmbientPlayback();
}

void AmbientCardViewModel::togglePlayback() {
    if (store())
        store()->toggleAmbientPlayback();
}

} // namespace quill
