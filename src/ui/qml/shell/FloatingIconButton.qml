import QtQuick
import Quillmere

// A round icon button of the floating panel; its help text is its tooltip and its name.
QuillButtonBase {
    id: control
    property string symbol
    property string help
    width: 30
    height: 30
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.Button
    Accessible.name: help
    FloatingTip { owner: control; text: control.help; shown: control.hovered }

    background: Rectangle {
        radius: width / 2
        color: Theme.palette.neutralFill(control.pressed ? 0.13 : 0.07)
        border.width: control.activeFocus ? 2 : 1
        border.color: control.activeFocus ? Theme.mint : Theme.hairline
    }
    contentItem: SymbolIcon {
        name: control.symbol
        size: 10
        color: Theme.primaryText
    }
}
