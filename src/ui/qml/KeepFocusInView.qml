import QtQuick

// Scrolls a flickable just enough to show the control the keyboard moved to: Tab reaches
// controls below the fold, and a focus ring out of sight is no focus at all. Pointer focus
// is left alone, the pointer is already where the user looks.
Item {
    id: keeper
    required property Flickable flickable
    property real margin: 16
    visible: false

    Connections {
        target: keeper.Window.window
        function onActiveFocusItemChanged() {
            keeper.reveal(keeper.Window.window.activeFocusItem)
        }
    }

    function inside(item) {
        for (let it = item; it; it = it.parent)
            if (it === flickable.contentItem)
                return true
        return false
    }

    function reveal(item) {
        if (!item || !flickable.visible || !inside(item))
            return
        if (item.focusReason !== undefined && item.focusReason !== Qt.TabFocusReason
                && item.focusReason !== Qt.BacktabFocusReason)
            return
        const top = item.mapToItem(flickable.contentItem, 0, 0).y
        const bottom = top + item.height
        const maxY = Math.max(0, flickable.contentHeight - flickable.height)
        if (top - margin < flickable.contentY)
            flickable.contentY = Math.max(0, top - margin)
        else if (bottom + margin > flickable.contentY + flickable.height)
            flickable.contentY = Math.min(maxY, bottom + margin - flickable.height)
    }
}
