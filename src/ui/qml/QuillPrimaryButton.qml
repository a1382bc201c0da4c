import QtQuick
import QtQuick.Controls.Basic
import Quillmere

// Filled accent button: 15 semibold on the accent, radius 14, at least 46 tall.
AbstractButton {
    id: control
    property color tint: Theme.mint
    property string symbol: ""
    implicitHeight: 46
    implicitWidth: row.implicitWidth + leftPadding + rightPadding
    leftPadding: 20
    rightPadding: 20
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.Button
    Accessible.name: text
    opacity: enabled ? 1.0 : 0.45
    scale: pressed ? 0.98 : 1.0
    Behavior on scale { NumberAnimation { duration: 120 * Theme.motion; easing.type: Easing.OutQuad } }

    contentItem: Item {
        implicitWidth: row.implicitWidth
        implicitHeight: row.implicitHeight
        Row {
            id: row
            anchors.centerIn: parent
            spacing: 7
            SymbolIcon {
                name: control.symbol
                visible: control.symbol !== ""
                size: 16
                color: Theme.onAccent
                anchors.verticalCenter: parent.verticalCenter
            }
            Text {
                text: control.text
                font.pixelSize: 15
                font.weight: Font.DemiBold
                color: Theme.onAccent
                anchors.verticalCenter: parent.verticalCenter
            }
        }
    }
    background: Rectangle {
        radius: 14
        color: Theme.alpha(control.tint, control.pressed ? 0.78 : 1.0)
        Behavior on color { ColorAnimation { duration: 120 * Theme.motion; easing.type: Easing.OutQuad } }
    }
}
