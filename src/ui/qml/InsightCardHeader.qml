import QtQuick
import Quillmere

// The header every insights card opens with: bold title over a secondary subtitle, the
// symbol at the trailing side in mint.
Item {
    id: header
    property string title
    property string subtitle
    property string symbol
    implicitHeight: Math.max(texts.implicitHeight, icon.implicitHeight)

    Column {
        id: texts
        anchors.left: parent.left
        anchors.right: icon.left
        anchors.rightMargin: 10
        spacing: 3
        QuillText {
            objectName: header.objectName + ".title"
            width: parent.width
            text: header.title
            font.pixelSize: 15
            font.weight: Font.Bold
            color: Theme.primaryText
            elide: Text.ElideRight
        }
        QuillText {
            width: parent.width
            text: header.subtitle
            font.pixelSize: 11
            color: Theme.secondaryText
            wrapMode: Text.WordWrap
        }
    }
    SymbolIcon {
        id: icon
        anchors.right: parent.right
        anchors.top: parent.top
        name: header.symbol
        size: 17
        color: Theme.mint
    }
}
