import QtQuick
import Quillmere

// A control's title at the left and its current value at the right.
Item {
    id: label
    property string title
    property string value
    implicitHeight: 16
    QuillText {
        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        text: label.title
        font.pixelSize: 12
        font.weight: Font.DemiBold
        color: Theme.secondaryText
    }
    QuillText {
        objectName: label.objectName + ".value"
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        text: label.value
        font.pixelSize: 12
        font.weight: Font.DemiBold
        color: Theme.primaryText
    }
}
