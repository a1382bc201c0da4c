#pragma once

#include <QByteArray>
#include <chrono>

namespace quill {

/// Whether the session bus at `address` (a D-Bus address such as "unix:path=/run/user/1000/bus")
/// takes a client: it connects and starts the authentication, waiting at most `limit` for the
/// bus's answer. A bus that accepts and never answers would hold every D-Bus call Qt makes on
/// the UI thread (the tray check, the accessibility bridge) for its full timeout, so the app
/// asks this first and leaves such a bus alone. Addresses other than unix sockets count as
/// answering: they are not checked.
bool sessionBusAnswers(const QByteArray& address, std::chrono::milliseconds limit);

} // namespace quill
