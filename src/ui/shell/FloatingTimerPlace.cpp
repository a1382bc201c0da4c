#include "FloatingTimerPlace.h"

#include "ui/UiLog.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace quill {

namespace {
constexpr int kCornerInset = 24;
// A place counts as on a screen when this much of the window (or all of a smaller one) is.
constexpr int kVisibleEnough = 48;

bool onSomeScreen(const QRect& window, const QList<QRect>& screens) {
    const int wide = std::min(window.width(), kVisibleEnough);
    const int tall = std::min(window.height(), kVisibleEnough);
    for (const QRect& screen : screens) {
        const QRect seen = window.intersected(screen);
        if (seen.width() >= wide && seen.height() >= tall)
            return true;
    }
    return false;
}

std::optional<QPoint> parse(const QByteArray& text) {
    const QList<QByteArray> parts = text.simplified().split(' ');
    if (parts.size() != 2)
        return std::nullopt;
    bool okX = false, okY = false;
    const int x = parts[0].toInt(&okX);
    const int y = parts[1].toInt(&okY);
    if (!okX || !okY)
        return std::nullopt;
    return QPoint(x, y);
}
} // namespace

FloatingTimerPlace::FloatingTimerPlace(QString filePath) : m_filePath(std::move(filePath)) {}

QString FloatingTimerPlace::defaultFilePath() {
    QString state = qEnvironmentVariable("XDG_STATE_HOME");
    if (state.isEmpty() || QDir::isRelativePath(state))
        state = QDir::homePath() + QStringLiteral("/.local/state");
    return state + QStringLiteral("/Quillmere/floating-timer-position");
}

QPoint FloatingTimerPlace::position(QSize size, const QList<QRect>& screens) {
    if (!m_loaded) {
        m_loaded = true;
        QFile file(m_filePath);
        // Only a small regular file is ours to read.
        const QFileInfo info(m_filePath);
        if (info.isFile() && info.size() < 64 && file.open(QIODevice::ReadOnly))
            m_place = parse(file.readAll());
    }
    if (m_place && onSomeScreen(QRect(*m_place, size), screens))
        return *m_place;
    const QRect primary = screens.isEmpty() ? QRect(0, 0, 800, 600) : screens.first();
    return QPoint(primary.right() + 1 - size.width() - kCornerInset, primary.top() + kCornerInset);
}

void FloatingTimerPlace::remember(QPoint topLeft) {
    m_loaded = true;
    if (m_place == topLeft)
        return;
    m_place = topLeft;
    if (m_filePath.isEmpty() || !QDir().mkpath(QFileInfo(m_filePath).absolutePath()))
        return;
    QSaveFile file(m_filePath);
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(QByteArray::number(topLeft.x()) + ' ' + QByteArray::number(topLeft.y()) + '\n') <
            0 ||
        !file.commit())
        qCWarning(lcUi) << "Could not keep the floating timer's place in" << m_filePath;
}

} // namespace quill
