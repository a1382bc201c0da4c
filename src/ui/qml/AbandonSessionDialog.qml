import QtQuick
import Quillmere

// Confirms abandoning from the review.
DialogPanel {
    id: dialog
    signal cancelChosen()
    signal confirmChosen()
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
                objectName: "abandonDialog.cancel"
                width: (parent.width - parent.spacing) / 2
                text: "返回复盘"
                onClicked: dialog.cancelChosen()
            }
            QuillDestructiveButton {
                objectName: "abandonDialog.confirm"
                width: (parent.width - parent.spacing) / 2
                text: "确认放弃"
                onClicked: dialog.confirmChosen()
            }
        }
    }
}
