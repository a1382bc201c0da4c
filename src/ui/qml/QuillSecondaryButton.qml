import QtQuick
import Quillmere

// Quiet button: 14 medium on the neutral fill, radius 13, hairline outline, at least 42 tall.
QuillButtonBase {
    id: control
    property string symbol: ""
    property color textColor: Theme.primaryText
    // Shown after the hover delay when set.
    property string toolTip: ""
    property bool toolTipAbove: false
    implicitHeight: 42
    implicitWidth: Math.max(row.implicitWidth + leftPadding + rightPadding, implicitHeight)
    leftPadding: text === "" ? 0 : 16
    rightPadding: text === "" ? 0 : 16
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    opacity: enabled ? 1.0 : 0.45

    contentItem: Item {
        implicitWidth: row.implicitWidth
        implicitHeight: row.implicitHeight
        Row {
            id: row
            anchors.centerIn: parent
            spacing: 6
            SymbolIcon {
                name: control.symbol
                visible: control.symbol !== ""
                size: 14
                color: control.textColor
                anchors.verticalCenter: parent.verticalCenter
            }
            Text {
                text: control.text
                visible: control.text !== ""
                font.pixelSize: 14
                font.weight: Font.Medium
                color: control.textColor
                anchors.verticalCenter: parent.verticalCenter
            }
        }
    }
    scale: pressed ? 0.98 : 1.0
    Behavior on scale { NumberAnimation { duration: 120 * Theme.motion; easing.type: Easing.OutQuad } }
    QuillToolTip { text: control.toolTip; shown: control.hovered; above: control.toolTipAbove }

    background: Rectangle {
        radius: 13
        color: Theme.palette.neutralFill(control.pressed ? 0.13 : control.hovered ? 0.105 : 0.08)
        border.width: 1
        border.color: control.hovered ? Theme.alpha(Theme.primaryText, Theme.dark ? 0.16 : 0.18)
                                      : Theme.hairline
        Behavior on color { ColorAnimation { duration: 120 * Theme.motion; easing.type: Easing.OutQuad } }
        FocusRing { control: control; baseRadius: 13 }
    }
}
