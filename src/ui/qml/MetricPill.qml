import QtQuick
import Quillmere

// A symbol in a tinted circle beside a value over its label.
Row {
    id: pill
    property string symbol
    property string value
    property string label
    property color tint: Theme.mint
    spacing: 10
    Accessible.role: Accessible.StaticText
    Accessible.name: label + " " + value

    Rectangle {
        width: 28
        height: 28
        radius: 14
        color: Theme.alpha(pill.tint, 0.12)
        anchors.verticalCenter: parent.verticalCenter
        SymbolIcon {
            anchors.centerIn: parent
            name: pill.symbol
            size: 13
            color: pill.tint
        }
    }
    Column {
        anchors.verticalCenter: parent.verticalCenter
        spacing: 1
        QuillText {
            objectName: pill.objectName + ".value"
            text: pill.value
            font.pixelSize: 14
            font.weight: Font.DemiBold
            color: Theme.primaryText
        }
        QuillText {
            text: pill.label
            font.pixelSize: Math.max(10, Theme.smallTextMinimum)
            font.weight: Font.Medium
            color: Theme.secondaryText
        }
    }
}
