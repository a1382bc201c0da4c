import QtQuick
import Quillmere

// A rounded tile: the symbol in a tinted circle, the title and this round's count.
QuillButtonBase {
    id: control
    property string symbol
    property string countText
    property color tint: Theme.mint
    implicitHeight: 66
    hoverEnabled: true
    Accessible.role: Accessible.Button
    Accessible.name: text + "，" + countText
    opacity: enabled ? 1.0 : 0.45

    background: Rectangle {
        radius: 16
        color: Theme.alpha(control.tint, control.pressed ? 0.12 : (control.hovered ? 0.07 : 0.04))
        border.width: 1
        border.color: Theme.alpha(control.tint, 0.2)
        FocusRing { control: control; baseRadius: 16 }
    }
    contentItem: Item {
        Rectangle {
            id: badge
            x: 14
            width: 36
            height: 36
            radius: 18
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.alpha(control.tint, 0.09)
            SymbolIcon {
                anchors.centerIn: parent
                name: control.symbol
                size: 16
                color: control.tint
            }
        }
        Column {
            anchors.left: badge.right
            anchors.leftMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            spacing: 2
            QuillText {
                text: control.text
                font.pixelSize: 14
                font.weight: Font.DemiBold
                color: Theme.primaryText
            }
            QuillText {
                objectName: control.objectName + ".count"
                text: control.countText
                font.pixelSize: 11
                color: Theme.secondaryText
            }
        }
    }
}
