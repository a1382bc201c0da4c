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

bool isFontFile(const QByteArray& path) {
    static const char* const kSuffixes[] = {".ttc", ".ttf", ".otf", ".otc"};
    for (const char* suffix : kSuffixes)
        if (path.endsWith(suffix))
            return true;
    return false;
}

// FreeType maps font files read-only and private; dropping our pages of them is always
// safe, the kernel reads a page again when a glyph needs it.
void dropFontPages() {
    QFile maps(QStringLiteral("/proc/self/maps"));
    if (!maps.open(QIODevice::ReadOnly))
        return;
    for (const QByteArray& line : maps.readAll().split('\n')) {
        const QList<QByteArray> fields = line.simplified().split(' ');
        if (fields.size() < 6 || !isFontFile(fields[5]) || fields[1].contains('w'))
            continue;
        const QList<QByteArray> range = fields[0].split('-');
        bool okStart = false, okEnd = false;
        const quintptr start = range.value(0).toULongLong(&okStart, 16);
        const quintptr end = range.value(1).toULongLong(&okEnd, 16);
        if (okStart && okEnd && end > start)
            madvise(reinterpret_cast<void*>(start), end - start, MADV_DONTNEED);
    }
}
#endif
} // namespace

long trimResidentMemory() {
#ifdef Q_OS_LINUX
    const long before = residentKb();
    malloc_trim(0);
    dropFontPages();
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
