#include "AmbientCardViewModel.h"

#include <cmath>

namespace quill {

AmbientCardViewModel::AmbientCardViewModel(AppStore& store, QObject* parent)
    : StoreViewModel(store, parent), m_tiles(new AmbientTileModel(this)) {
    connectStore();
    refreshAll();
}

void AmbientCardViewModel::connectStore() {
    AppStore* s = &store();
    connect(s, &AppStore::settingsChanged, this, &AmbientCardViewModel::refreshAll);
    connect(s, &AppStore::isAmbientPlayingChanged, this, &AmbientCardViewModel::refreshAll);
}

void AmbientCardViewModel::refreshAll() {
    const AppStore& s = store();
    m_tiles->update(s);
    const bool playing = s.isAmbientPlaying();
    const QList<AmbientSound> selected = s.settings().selectedAmbientSounds();
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
    if (ambientSoundFromRaw(raw))
        store().toggleAmbientSound(*ambientSoundFromRaw(raw));
}

void AmbientCardViewModel::setVolume(const QString& raw, double volume) {
    const auto sound = ambientSoundFromRaw(raw);
    if (sound && std::isfinite(volume))
        store().setAmbientVolume(volume, *sound);
}

void AmbientCardViewModel::prepare() {
    store().prepareAmbientPlayback();
}

void AmbientCardViewModel::togglePlayback() {
    store().toggleAmbientPlayback();
}

} // namespace quill
