import QtQuick
import Quillmere

// One settings row: title over detail at the left, the control at the right, a hairline
// above it.
Item {
    id: row
    property string title
    property string detail
    default property alias accessory: slot.data
    width: parent ? parent.width : 0
    height: Math.max(texts.implicitHeight, slot.childrenRect.height) + 18

    Rectangle {
        width: parent.width
        height: 1
        color: Theme.hairline
    }
    Column {
        id: texts
        anchors.left: parent.left
        anchors.right: slot.left
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2
        QuillText {
            width: parent.width
            text: row.title
            font.pixelSize: 11
            font.weight: Font.DemiBold
            color: Theme.primaryText
            elide: Text.ElideRight
        }
        QuillText {
            width: parent.width
            text: row.detail
            visible: text !== ""
            font.pixelSize: 9
            color: Theme.secondaryText
            wrapMode: Text.WordWrap
        }
    }
    Item {
        id: slot
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        width: childrenRect.width
        height: childrenRect.height
    }
}
