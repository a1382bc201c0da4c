#include "StartupTrim.h"

#include <QFile>
#include <QPointer>
#include <QQuickWindow>
#include <QTimer>

#include <algorithm>
#include <memory>

#ifdef Q_OS_LINUX
#include <malloc.h>
#include <sys/mman.h>
#endif

namespace quill {

namespace {
constexpr int kDelayMs = 2000; // past the first frames and the first idle layout passes

#ifdef Q_OS_LINUX
long residentKb() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toLong();
    return 0;
}

// A read-only mapping of a file: a library's code and constants, or a font. Dropping our
// pages of it is always safe, as the kernel reads a page again from the page cache when it
// is next touched; a mapping with pages of its own (relocations written before it was made
// read-only) is never dropped, as that would lose them.
struct Mapping {
    quintptr start = 0;
    quintptr end = 0;
    bool droppable = false;
};

bool isSharedFile(const QByteArray& path) {
    return path.startsWith('/') && !path.startsWith("/dev/") && !path.startsWith("/memfd:") &&
           !path.endsWith("(deleted)");
}

// Start-up runs much code once (loading the QML types, first layout, the first frame), and
// the kernel maps a file's neighbouring pages with every page touched. What the running app
// uses it touches again within moments; the rest stays in the page cache, unmapped.
void dropReadOnlyFilePages() {
    QFile smaps(QStringLiteral("/proc/self/smaps"));
    if (!smaps.open(QIODevice::ReadOnly))
        return;
    QList<Mapping> mappings;
    for (const QByteArray& line : smaps.readAll().split('\n')) {
        const QList<QByteArray> fields = line.simplified().split(' ');
        if (fields.isEmpty() || fields[0].isEmpty())
            continue;
        if (fields[0] == "Anonymous:" && !mappings.isEmpty() && fields.value(1) != "0") {
            mappings.last().droppable = false;
            continue;
        }
        const int dash = fields[0].indexOf('-');
        if (dash <= 0 || fields.size() < 5 || fields[0].endsWith(':'))
            continue;
        bool okStart = false, okEnd = false;
        Mapping m;
        m.start = fields[0].left(dash).toULongLong(&okStart, 16);
        m.end = fields[0].mid(dash + 1).toULongLong(&okEnd, 16);
        m.droppable = okStart && okEnd && m.end > m.start && !fields[1].contains('w') &&
                      fields.size() >= 6 && isSharedFile(fields[5]);
        mappings.append(m);
    }
    for (const Mapping& m : mappings)
        if (m.droppable)
            madvise(reinterpret_cast<void*>(m.start), m.end - m.start, MADV_DONTNEED);
}
#endif
} // namespace

long trimResidentMemory() {
#ifdef Q_OS_LINUX
    const long before = residentKb();
    malloc_trim(0);
    dropReadOnlyFilePages();
    return std::max(0L, before - residentKb());
#else
    return 0;
#endif
}

void trimAfterFirstFrame(QQuickWindow* window) {
    if (!window)
        return;
    auto connection = std::make_shared<QMetaObject::Connection>();
    *connection =
        QObject::connect(window, &QQuickWindow::frameSwapped, window, [window, connection] {
            QObject::disconnect(*connection);
            QTimer::singleShot(kDelayMs, window, [] { trimResidentMemory(); });
        });
}

} // namespace quill
