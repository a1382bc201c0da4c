import QtQuick
import Quillmere

// One figure of the round's summary on a tinted tile.
Rectangle {
    id: box
    property string value
    property string label
    property color tint: Theme.mint
    implicitHeight: 74
    radius: 16
    color: Theme.alpha(tint, 0.075)
    Accessible.role: Accessible.StaticText
    Accessible.name: label + " " + value

    Column {
        anchors.left: parent.left
        anchors.leftMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        spacing: 3
        QuillText {
            objectName: box.objectName + ".value"
            text: box.value
            font.pixelSize: 23
            font.weight: Font.Bold
            color: Theme.primaryText
        }
        QuillText {
            text: box.label
            font.pixelSize: Math.max(10, Theme.smallTextMinimum)
            font.weight: Font.Medium
            color: Theme.secondaryText
        }
    }
}
