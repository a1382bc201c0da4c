#include "SessionBusProbe.h"

#include <QByteArrayList>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace quill {

namespace {
/// The sockets of the address's unix entries in order, abstract names starting with NUL.
QByteArrayList socketPaths(const QByteArray& address) {
    QByteArrayList paths;
    for (const QByteArray& entry : address.split(';')) {
        if (!entry.startsWith("unix:"))
            continue;
        for (const QByteArray& pair : entry.mid(5).split(',')) {
            if (pair.startsWith("path="))
                paths << QByteArray::fromPercentEncoding(pair.mid(5));
            else if (pair.startsWith("abstract="))
                paths << '\0' + QByteArray::fromPercentEncoding(pair.mid(9));
        }
    }
    return paths;
}

using Clock = std::chrono::steady_clock;

int msLeft(Clock::time_point deadline) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
    return left.count() > 0 ? int(left.count()) : 0;
}

bool waitFor(int fd, short events, Clock::time_point deadline) {
    pollfd entry{fd, events, 0};
    for (;;) {
        const int ready = ::poll(&entry, 1, msLeft(deadline));
        if (ready > 0)
            return (entry.revents & events) != 0;
        if (ready == 0 || errno != EINTR)
            return false;
    }
}

enum class Probe { unreachable, silent, answered };

Probe probe(const QByteArray& path, Clock::time_point deadline) {
    const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (fd < 0)
        return Probe::unreachable;
    sockaddr_un where{};
    where.sun_family = AF_UNIX;
    std::memcpy(where.sun_path, path.constData(), std::size_t(path.size()));
    const socklen_t length = socklen_t(offsetof(sockaddr_un, sun_path) + std::size_t(path.size()) +
                                       (path.startsWith('\0') ? 0 : 1));
    const bool connected = ::connect(fd, reinterpret_cast<sockaddr*>(&where), length) == 0 ||
                           (errno == EINPROGRESS && waitFor(fd, POLLOUT, deadline));
    // The protocol's opening: a NUL byte, then an authentication request the bus must answer
    // (with the mechanisms it takes); any answer at all means it is serving clients.
    const QByteArray hello = QByteArray(1, '\0') + "AUTH\r\n";
    char reply[64];
    const bool answered =
        connected &&
        ::send(fd, hello.constData(), std::size_t(hello.size()), MSG_NOSIGNAL) == hello.size() &&
        waitFor(fd, POLLIN, deadline) && ::recv(fd, reply, sizeof reply, 0) > 0;
    ::close(fd);
    return answered ? Probe::answered : connected ? Probe::silent : Probe::unreachable;
}
} // namespace

bool sessionBusAnswers(const QByteArray& address, std::chrono::milliseconds limit) {
    const Clock::time_point deadline = Clock::now() + limit;
    const QByteArrayList paths = socketPaths(address);
    if (paths.isEmpty())
        return true; // no socket we can check
    // As libdbus does: the first entry that takes the connection is the bus.
    for (const QByteArray& path : paths) {
        if (path.isEmpty() || path.size() >= qsizetype(sizeof(sockaddr_un::sun_path)))
            return true;
        const Probe result = probe(path, deadline);
        if (result != Probe::unreachable)
            return result == Probe::answered;
    }
    return false;
}

} // namespace quill
