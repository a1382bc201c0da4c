import QtQuick
import Quillmere

// A settings card: title over subtitle with the symbol at the right, then its rows.
QuillCard {
    id: card
    property string title
    property string subtitle
    property string symbol
    default property alias rows: body.data
    padding: 18
    height: implicitHeight

    Column {
        width: parent.width
        spacing: 10

        Item {
            width: parent.width
            height: Math.max(texts.implicitHeight, icon.implicitHeight)
            Column {
                id: texts
                spacing: 2
                QuillText {
                    objectName: card.objectName + ".title"
                    text: card.title
                    font.pixelSize: 16
                    font.weight: Font.Bold
                    color: Theme.primaryText
                }
                QuillText {
                    objectName: card.objectName + ".subtitle"
                    text: card.subtitle
                    font.pixelSize: 10
                    color: Theme.secondaryText
                }
            }
            SymbolIcon {
                id: icon
                objectName: card.objectName + ".symbol"
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                name: card.symbol
                size: 16
                color: Theme.mint
            }
        }
        Column {
            id: body
            width: parent.width
            spacing: 0
        }
    }
}
