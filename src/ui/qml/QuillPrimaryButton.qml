import QtQuick
import Quillmere

// Filled accent button: 15 semibold on the accent, radius 14, at least 46 tall.
QuillButtonBase {
    id: control
    property color tint: Theme.mint
    property string symbol: ""
    // Shown after the hover delay when set.
    property string toolTip: ""
    implicitHeight: 46
    implicitWidth: row.implicitWidth + leftPadding + rightPadding
    leftPadding: 20
    rightPadding: 20
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1.0 : 0.45
    QuillToolTip { text: control.toolTip; shown: control.hovered }
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
        // Hover lifts the fill a little; pressing dims it to 0.78.
        color: control.pressed ? Theme.alpha(control.tint, 0.78)
             : control.hovered ? Qt.lighter(control.tint, Theme.dark ? 1.07 : 1.12) : control.tint
        Behavior on color { ColorAnimation { duration: 120 * Theme.motion; easing.type: Easing.OutQuad } }
        FocusRing { control: control; baseRadius: 14 }
    }
}
