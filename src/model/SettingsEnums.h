#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <optional>

namespace quill {
Q_NAMESPACE

/// Phase of the live round; never stored. Lives beside the settings enumerations because
/// moc allows one meta-object per namespace.
enum class SessionPhase { idle, focusing, paused, microBreak, completed };
Q_ENUM_NS(SessionPhase)

/// The sidebar's sections; the raw value is also the display title.
enum class AppSection { focus, insights, history, settings };
Q_ENUM_NS(AppSection)

enum class AppearanceMode { dark, light };
Q_ENUM_NS(AppearanceMode)

/// Raw values are the stored form; displayName() is what the screens call the service.
enum class MusicService { appleMusic, netEase };
Q_ENUM_NS(MusicService)

enum class MusicSource { library, playlist };
Q_ENUM_NS(MusicSource)

QString rawValue(AppSection section);
QString rawValue(AppearanceMode mode);
QString rawValue(MusicService service);
QString rawValue(MusicSource source);

/// The service as the screens name it: on Linux "Apple Music" drives the desktop's own
/// player, so it reads "本机音乐播放器" there.
QString displayName(MusicService service);

std::optional<AppearanceMode> appearanceModeFromRaw(const QString& raw);
std::optional<MusicService> musicServiceFromRaw(const QString& raw);
std::optional<MusicSource> musicSourceFromRaw(const QString& raw);

/// The seven sound names "Glass" … "Morse": the pool "随机" draws from.
QStringList randomSoundPool();
/// "随机" followed by the pool.
QStringList reminderSoundOptions();
/// The pool followed by "Hero".
QStringList completionSoundOptions();
/// The name that means "draw one from the pool".
QString randomSoundName();

} // namespace quill
