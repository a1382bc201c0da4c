import QtQuick
import Quillmere

// One signal of the floating panel: the symbol in a circle of its tint, the title and the
// count. Dimmed and inactive during a micro-break.
QuillButtonBase {
    id: control
    property string title
    property int count
    property string symbol
    property color tint
    property string help
    height: 42
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1.0 : 0.45
    Accessible.role: Accessible.Button
    Accessible.name: help
    FloatingTip { owner: control; text: control.help; shown: control.hovered }

    background: Rectangle {
        radius: 13
        color: Theme.palette.neutralFill(control.pressed ? 0.13 : 0.06)
        border.width: control.activeFocus ? 2 : 1
        border.color: control.activeFocus ? Theme.mint : Theme.hairline
    }
    contentItem: Item {
        Row {
            anchors.left: parent.left
            anchors.leftMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            spacing: 7
            Rectangle {
                width: 24
                height: 24
                radius: 12
                color: Theme.alpha(control.tint, 0.16)
                SymbolIcon {
                    anchors.centerIn: parent
                    name: control.symbol
                    size: 12
                    color: control.tint
                }
            }
            QuillText {
                anchors.verticalCenter: parent.verticalCenter
                text: control.title
                font.pixelSize: 11
                font.weight: Font.DemiBold
                color: Theme.primaryText
            }
        }
        QuillText {
            objectName: control.objectName + ".count"
            anchors.right: parent.right
            anchors.rightMargin: 10
            anchors.verticalCenter: parent.verticalCenter
            text: control.count
            font.pixelSize: 11
            font.weight: Font.Bold
            color: control.tint
        }
    }
}
