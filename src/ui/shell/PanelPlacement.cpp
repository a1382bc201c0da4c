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

QPoint trayAnchor(const TrayClick& click) {
    const QRect area = click.available.isValid() ? click.available : click.screen;
    if (click.icon.isValid()) {
        const bool iconAtTop = !area.isValid() || click.icon.center().y() < area.center().y();
        return {click.icon.center().x(), iconAtTop ? click.icon.bottom() : click.icon.top()};
    }
    if (click.cursor)
        return *click.cursor;
    bool atTop = click.desktopTrayAtTop;
    if (click.available.isValid() && click.screen.isValid()) {
        if (click.available.top() > click.screen.top())
            atTop = true;
        else if (click.available.bottom() < click.screen.bottom())
            atTop = false;
    }
    return {area.right(), atTop ? area.top() : area.bottom()};
}

} // namespace quill
