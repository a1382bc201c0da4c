import QtQuick
import Quillmere

// Sections whose screens are not built yet.
Item {
    id: screen
    property string sectionTitle
    property string sectionSymbol

    Column {
        anchors.centerIn: parent
        spacing: 14
        Rectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 64
            height: 64
            radius: 32
            color: Theme.alpha(Theme.mint, 0.12)
            SymbolIcon {
                anchors.centerIn: parent
                name: screen.sectionSymbol
                size: 28
                color: Theme.mint
            }
        }
        QuillText {
            anchors.horizontalCenter: parent.horizontalCenter
            objectName: "placeholder.title"
            text: screen.sectionTitle + "，即将推出"
            font.pixelSize: 22
            font.weight: Font.Bold
            color: Theme.primaryText
        }
        QuillText {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "这一部分还在打磨中，先回到“专注”练习一轮吧。"
            font.pixelSize: 13
            color: Theme.secondaryText
        }
    }
}
