#include "PanelPlacement.h"

#include <algorithm>

namespace quill {

QPoint panelPosition(QPoint cursor, QSize panel, QRect available) {
    constexpr int kGap = 8;
    int x = cursor.x() - panel.width() / 2;
    const bool trayAtTop = !available.isValid() || cursor.y() < available.center().y();
    int y = trayAtTop ? cursor.y() + kGap : cursor.y() - kGap - panel.height();
    if (!available.isValid())
        return {x, y};
    // A panel larger than the screen keeps its top-left corner on screen.
    x = std::max(available.left(), std::min(x, available.right() + 1 - panel.width()));
    y = std::max(available.top(), std::min(y, available.bottom() + 1 - panel.height()));
    return {x, y};
}

} // namespace quill
