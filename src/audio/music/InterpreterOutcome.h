#pragma once

#include "audio/music/ProcessLauncher.h"
#include "store/MusicPlayer.h"

#include <QByteArray>
#include <optional>

namespace quill {

/// Strict UTF-8: nothing when the bytes are not valid UTF-8.
std::optional<QString> decodeUtf8Strictly(const QByteArray& bytes);

/// The message an AppleScript interpreter line carries: trimmed, only what follows the first
/// "execution error: ", without the trailing " (-1728)"-style error number.
QString messageFromInterpreterError(const QString& standardError);

/// Turns a finished interpreter run into the music outcome: its trimmed output (or
/// "已开始随机播放") on exit status 0, otherwise the message from its standard error.
MusicOutcome outcomeFromInterpreter(const ProcessResult& result);

} // namespace quill
