import QtQuick
import Quillmere

// Confirms abandoning a round: from the review, or before quitting.
DialogPanel {
    id: dialog
    signal cancelChosen()
    signal confirmChosen()
    // The way back: to the review, or on with the round.
    property string cancelTitle: "返回复盘"
    // Names the buttons for tests and tools: "<prefix>.cancel", "<prefix>.confirm".
    property string buttonPrefix: "abandonDialog"
    // The safe choice, which takes the focus when the question opens.
    readonly property Item cancelButton: cancelButton
    width: 390
    height: implicitHeight
    padding: 24

    Column {
        width: parent.width
        spacing: 16

        Rectangle {
            width: 40
            height: 40
            radius: 20
            color: Theme.alpha(Theme.coral, 0.12)
            SymbolIcon {
                anchors.centerIn: parent
                name: "trash.fill"
                size: 18
                color: Theme.coral
            }
        }
        Column {
            width: parent.width
            spacing: 5
            QuillText {
                text: "放弃这轮专注？"
                font.pixelSize: 20
                font.weight: Font.Bold
                color: Theme.primaryText
            }
            QuillText {
                width: parent.width
                text: "本轮时间和事件不会写入统计或历史记录。"
                font.pixelSize: 11
                color: Theme.secondaryText
                wrapMode: Text.WordWrap
            }
        }
        Row {
            width: parent.width
            spacing: 10
            QuillSecondaryButton {
                id: cancelButton
                objectName: dialog.buttonPrefix + ".cancel"
                width: (parent.width - parent.spacing) / 2
                text: dialog.cancelTitle
                onClicked: dialog.cancelChosen()
            }
            QuillDestructiveButton {
                objectName: dialog.buttonPrefix + ".confirm"
                width: (parent.width - parent.spacing) / 2
                text: "确认放弃"
                onClicked: dialog.confirmChosen()
            }
        }
    }
}
