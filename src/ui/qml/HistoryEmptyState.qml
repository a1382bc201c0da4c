import QtQuick
import Quillmere

// The history before the first round: a leaf, an invitation and the way to the focus screen.
Column {
    id: empty
    signal startChosen()
    spacing: 12

    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        width: 72
        height: 72
        radius: 36
        color: Theme.alpha(Theme.mint, 0.1)
        SymbolIcon {
            anchors.centerIn: parent
            name: "leaf"
            size: 30
            color: Theme.mint
        }
    }
    QuillText {
        objectName: "history.empty.title"
        anchors.horizontalCenter: parent.horizontalCenter
        text: "还没有专注记录"
        font.pixelSize: 18
        font.weight: Font.DemiBold
        color: Theme.primaryText
    }
    QuillText {
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(implicitWidth, empty.width)
        text: "完成第一轮后，时长、走神、精力和复盘会出现在这里。"
        font.pixelSize: 12
        color: Theme.secondaryText
        wrapMode: Text.WordWrap
        horizontalAlignment: Text.AlignHCenter
    }
    Item { width: 1; height: 4 }
    QuillPrimaryButton {
        objectName: "history.empty.start"
        anchors.horizontalCenter: parent.horizontalCenter
        text: "去开始第一轮"
        onClicked: empty.startChosen()
    }
}
