#include "model/SettingsEnums.h"

namespace quill {

QString rawValue(AppSection section) {
    switch (section) {
    case AppSection::focus:
        return QStringLiteral("专注");
    case AppSection::insights:
        return QStringLiteral("洞察");
    case AppSection::history:
        return QStringLiteral("记录");
    case AppSection::settings:
        return QStringLiteral("设置");
    }
    return {};
}

QString rawValue(AppearanceMode mode) {
    return mode == AppearanceMode::dark ? QStringLiteral("dark") : QStringLiteral("light");
}

QString rawValue(MusicService service) {
    return service == MusicService::appleMusic ? QStringLiteral("Apple Music")
                                               : QStringLiteral("网易云音乐");
}

QString displayName(MusicService service) {
#ifndef Q_OS_MACOS
    if (service == MusicService::appleMusic)
        return QStringLiteral("本机音乐播放器");
#endif
    return rawValue(service);
}

QString rawValue(MusicSource source) {
    return source == MusicSource::library ? QStringLiteral("整个资料库")
                                          : QStringLiteral("指定播放列表");
}

std::optional<AppearanceMode> appearanceModeFromRaw(const QString& raw) {
    for (auto m : {AppearanceMode::dark, AppearanceMode::light})
        if (raw == rawValue(m))
            return m;
    return std::nullopt;
}

std::optional<MusicService> musicServiceFromRaw(const QString& raw) {
    for (auto s : {MusicService::appleMusic, MusicService::netEase})
        if (raw == rawValue(s))
            return s;
    return std::nullopt;
}

std::optional<MusicSource> musicSourceFromRaw(const QString& raw) {
    for (auto s : {MusicSource::library, MusicSource::playlist})
        if (raw == rawValue(s))
            return s;
    return std::nullopt;
}

QStringList randomSoundPool() {
    return {QStringLiteral("Glass"), QStringLiteral("Ping"),      QStringLiteral("Pop"),
            QStringLiteral("Tink"),  QStringLiteral("Submarine"), QStringLiteral("Purr"),
            QStringLiteral("Morse")};
}

QString randomSoundName() {
    return QStringLiteral("随机");
}

QStringList reminderSoundOptions() {
    return QStringList{randomSoundName()} + randomSoundPool();
}

QStringList completionSoundOptions() {
    return randomSoundPool() << QStringLiteral("Hero");
}

} // namespace quill
