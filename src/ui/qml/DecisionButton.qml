import QtQuick
import Quillmere

// A full-width choice: tinted symbol square, title over detail, a trailing chevron.
QuillButtonBase {
    id: control
    property string detail
    property string symbol
    property color tint: Theme.mint
    implicitHeight: Math.max(64, texts.implicitHeight + 24)
    hoverEnabled: true
    Accessible.description: detail

    scale: pressed ? 0.99 : 1.0
    Behavior on scale { NumberAnimation { duration: 120 * Theme.motion; easing.type: Easing.OutQuad } }

    background: Rectangle {
        radius: 16
        color: Theme.alpha(control.tint, control.pressed ? 0.14 : (control.hovered ? 0.1 : 0.075))
        border.width: 1
        border.color: Theme.alpha(control.tint, control.hovered ? 0.32 : 0.2)
        FocusRing { control: control; baseRadius: 16 }
    }
    contentItem: Item {
        Rectangle {
            id: square
            x: 14
            anchors.verticalCenter: parent.verticalCenter
            width: 36
            height: 36
            radius: 10
            color: Theme.alpha(control.tint, 0.12)
            SymbolIcon {
                anchors.centerIn: parent
                name: control.symbol
                size: 16
                color: control.tint
            }
        }
        Column {
            id: texts
            anchors.left: square.right
            anchors.leftMargin: 12
            anchors.right: chevron.left
            anchors.verticalCenter: parent.verticalCenter
            spacing: 3
            Text {
                width: parent.width
                text: control.text
                elide: Text.ElideRight
                font.pixelSize: 14
                font.weight: Font.DemiBold
                color: Theme.primaryText
            }
            Text {
                width: parent.width
                text: control.detail
                font.pixelSize: 11
                color: Theme.secondaryText
                wrapMode: Text.WordWrap
                maximumLineCount: 2
                elide: Text.ElideRight
            }
        }
        SymbolIcon {
            id: chevron
            anchors.right: parent.right
            anchors.rightMargin: 14
            anchors.verticalCenter: parent.verticalCenter
            name: "chevron.right"
            size: 16
            color: Theme.secondaryText
        }
    }
}
