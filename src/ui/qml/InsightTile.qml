import QtQuick
import Quillmere

// One headline figure: symbol and a dot in the tile's colour, the value large, the label
// and a footnote small.
QuillCard {
    id: tile
    property string symbol
    property string value
    property string label
    property string footnote
    property color tint: Theme.mint
    padding: 16
    implicitHeight: column.implicitHeight + 2 * padding
    Accessible.role: Accessible.StaticText
    Accessible.name: label + " " + value

    Column {
        id: column
        width: parent.width
        spacing: 6
        Row {
            spacing: 8
            SymbolIcon {
                anchors.verticalCenter: parent.verticalCenter
                name: tile.symbol
                size: 15
                color: tile.tint
            }
            Rectangle {
                anchors.verticalCenter: parent.verticalCenter
                width: 6
                height: 6
                radius: 3
                color: tile.tint
            }
        }
        QuillText {
            objectName: tile.objectName + ".value"
            width: parent.width
            text: tile.value
            font.pixelSize: 23
            font.weight: Font.Bold
            color: Theme.primaryText
            elide: Text.ElideRight
        }
        QuillText {
            width: parent.width
            text: tile.label
            font.pixelSize: 12
            font.weight: Font.Medium
            color: Theme.primaryText
            elide: Text.ElideRight
        }
        QuillText {
            width: parent.width
            text: tile.footnote
            font.pixelSize: 10
            color: Theme.secondaryText
            elide: Text.ElideRight
        }
    }
}
