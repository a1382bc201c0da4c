import QtQuick
import Quillmere

// A card's placeholder before there is anything to show: a faint symbol above one line.
Item {
    id: empty
    property string symbol
    property string text
    property real symbolSize: 24
    implicitHeight: column.implicitHeight
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Column {
        id: column
        anchors.centerIn: parent
        spacing: 8
        SymbolIcon {
            anchors.horizontalCenter: parent.horizontalCenter
            name: empty.symbol
            size: empty.symbolSize
            color: Theme.secondaryText
            opacity: 0.5
        }
        QuillText {
            objectName: empty.objectName + ".text"
            anchors.horizontalCenter: parent.horizontalCenter
            text: empty.text
            font.pixelSize: 11
            color: Theme.secondaryText
        }
    }
}
