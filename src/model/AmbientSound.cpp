#include "model/AmbientSound.h"

namespace quill {

namespace {
constexpr std::array<AmbientSoundInfo, kAmbientSoundCount> kCatalogue{{
    {AmbientSound::rain, "rain", "雨声", "雨落在树叶上", "cloud.rain.fill", ThemeTint::blue},
    {AmbientSound::waves, "waves", "海浪", "沙滩上的浪花", "water.waves", ThemeTint::blue},
    {AmbientSound::stream, "stream", "溪流", "林间的小溪", "drop.fill", ThemeTint::mint},
    {AmbientSound::wind, "wind", "风声", "松林里的风", "wind", ThemeTint::mint},
    {AmbientSound::fire, "fire", "篝火", "壁炉里的柴火", "flame.fill", ThemeTint::coral},
    {AmbientSound::birds, "birds", "鸟鸣", "清晨湖边的鸟鸣", "bird.fill", ThemeTint::mint},
    {AmbientSound::crickets, "crickets", "虫鸣", "夏夜花园的蟋蟀", "moon.stars.fill",
     ThemeTint::amber},
    {AmbientSound::brownNoise, "brownNoise", "棕噪音", "低沉平稳的底噪", "waveform",
     ThemeTint::amber},
}};
} // namespace

const AmbientSoundInfo& info(AmbientSound sound) {
    return kCatalogue[indexOf(sound)];
}
QString rawValue(AmbientSound sound) {
    return QString::fromLatin1(info(sound).raw);
}
QString title(AmbientSound sound) {
    return QString::fromUtf8(info(sound).title);
}
QString subtitle(AmbientSound sound) {
    return QString::fromUtf8(info(sound).subtitle);
}

std::optional<AmbientSound> ambientSoundFromRaw(const QString& raw) {
    for (const auto& entry : kCatalogue)
        if (raw == QLatin1String(entry.raw))
            return entry.sound;
    return std::nullopt;
}

} // namespace quill
