import QtQuick
import Quillmere

// The confirming button of a destructive question: 13 semibold on coral, radius 13.
QuillButtonBase {
    id: control
    property string symbol: "trash.fill"
    property color tint: Theme.coral
    implicitHeight: 42
    implicitWidth: row.implicitWidth + 32
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1.0 : 0.45
    scale: pressed ? 0.98 : 1.0
    Behavior on scale { NumberAnimation { duration: 120 * Theme.motion; easing.type: Easing.OutQuad } }

    background: Rectangle {
        radius: 13
        color: control.pressed ? Theme.alpha(control.tint, 0.78)
             : control.hovered ? Qt.lighter(control.tint, Theme.dark ? 1.06 : 1.1) : control.tint
        Behavior on color { ColorAnimation { duration: 120 * Theme.motion; easing.type: Easing.OutQuad } }
        FocusRing { control: control; baseRadius: 13 }
    }
    contentItem: Item {
        implicitWidth: row.implicitWidth
        implicitHeight: row.implicitHeight
        Row {
            id: row
            anchors.centerIn: parent
            spacing: 6
            SymbolIcon {
                anchors.verticalCenter: parent.verticalCenter
                name: control.symbol
                visible: control.symbol !== ""
                size: 13
                color: Theme.onAccent
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: control.text
                font.pixelSize: 13
                font.weight: Font.DemiBold
                color: Theme.onAccent
            }
        }
    }
}
