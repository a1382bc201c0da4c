#include "ui/shell/SessionBusProbe.h"

#include "music/PrivateBus.h"

#include <QFile>
#include <QTemporaryDir>
#include <cstring>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace quill::test {
namespace {

using namespace std::chrono_literals;

/// A socket that takes connections (the kernel completes them) and never says a word.
class WedgedSocket {
public:
    WedgedSocket() {
        m_fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_un where{};
        where.sun_family = AF_UNIX;
        const QByteArray path = QFile::encodeName(path_());
        std::strncpy(where.sun_path, path.constData(), sizeof where.sun_path - 1);
        m_ok = ::bind(m_fd, reinterpret_cast<sockaddr*>(&where), sizeof where) == 0 &&
               ::listen(m_fd, 16) == 0;
    }
    ~WedgedSocket() { ::close(m_fd); }
    bool ok() const { return m_ok; }
    QByteArray address() const { return "unix:path=" + QFile::encodeName(path_()); }

private:
    QString path_() const { return m_dir.filePath(QStringLiteral("bus")); }
    QTemporaryDir m_dir;
    int m_fd = -1;
    bool m_ok = false;
};

TEST(SessionBusProbe, ARealBusAnswersAWedgedOneOrNoneDoesNot) {
    PrivateBus bus;
    ASSERT_TRUE(bus.isRunning()) << bus.error().toStdString();
    EXPECT_TRUE(sessionBusAnswers(bus.address().toUtf8(), 60s));

    WedgedSocket wedged;
    ASSERT_TRUE(wedged.ok());
    EXPECT_FALSE(sessionBusAnswers(wedged.address(), 100ms));
    EXPECT_FALSE(sessionBusAnswers(wedged.address() + ";unix:path=/elsewhere", 100ms))
        << "the first socket of the address is the one libdbus tries";

    EXPECT_FALSE(sessionBusAnswers("unix:path=/dev/null/nothing", 60s));
    EXPECT_TRUE(sessionBusAnswers("tcp:host=localhost,port=1", 60s)) << "not checked";
}

} // namespace
} // namespace quill::test
