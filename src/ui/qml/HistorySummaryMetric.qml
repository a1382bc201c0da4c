import QtQuick
import Quillmere

// One total above the history: the symbol in a tinted circle, the value over its label.
Row {
    id: metric
    property string symbol
    property string value
    property string label
    property color tint: Theme.mint
    spacing: 11
    Accessible.role: Accessible.StaticText
    Accessible.name: label + " " + value

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        width: 38
        height: 38
        radius: 19
        color: Theme.alpha(metric.tint, 0.1)
        SymbolIcon {
            anchors.centerIn: parent
            name: metric.symbol
            size: 15
            color: metric.tint
        }
    }
    Column {
        anchors.verticalCenter: parent.verticalCenter
        spacing: 1
        QuillText {
            objectName: metric.objectName + ".value"
            text: metric.value
            font.pixelSize: 20
            font.weight: Font.Bold
            color: Theme.primaryText
        }
        QuillText {
            text: metric.label
            font.pixelSize: 10
            color: Theme.secondaryText
        }
    }
}
