#pragma once

#include "model/SettingsEnums.h"

#include <QString>

namespace quill::applescript {

/// The NetEase Cloud Music client on macOS; the script and the workspace look-ups share it.
QString netEaseBundleIdentifier();

/// The interpreter the app runs on macOS.
QString defaultInterpreter();

/// `text` made safe between the double quotes of an AppleScript string literal: every
/// backslash doubled first, then every double quote preceded by a backslash.
QString escapedForStringLiteral(const QString& text);

/// Picks one enabled track of the library or of the named playlist at random, plays it and
/// returns "name — artist". The playlist name is used as given (not trimmed).
QString appleMusicScript(MusicSource source, const QString& playlistName);

/// Drives the NetEase client's "控制" menu through System Events until it plays or
/// `timeoutSeconds` have passed.
QString netEaseScript(int timeoutSeconds);

} // namespace quill::applescript
