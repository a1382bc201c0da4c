import QtQuick
import QtQuick.Controls.Basic
import Quillmere

// The layer asking how to end a round: a dark scrim (a tap on it means "continue") with
// the dialog centred on it. Fades and scales in from 0.96.
Item {
    id: layer
    property bool shown: false
    signal continueChosen()
    signal reviewChosen()
    signal abandonChosen()

    opacity: shown ? 1 : 0
    visible: shown || opacity > 0
    enabled: shown
    Behavior on opacity { NumberAnimation { duration: 180 * Theme.motion; easing.type: Easing.OutQuad } }

    Rectangle {
        objectName: "endDialog.scrim"
        anchors.fill: parent
        color: Theme.alpha("#000000", 0.28)
        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.AllButtons
            onClicked: layer.continueChosen()
            onWheel: (wheel) => wheel.accepted = true
        }
    }

    DialogPanel {
        id: panel
        objectName: "endDialog.panel"
        anchors.centerIn: parent
        width: 440
        height: implicitHeight
        padding: 26
        scale: layer.shown ? 1.0 : 0.96
        Behavior on scale { NumberAnimation { duration: 180 * Theme.motion; easing.type: Easing.OutQuad } }

        Column {
            width: parent.width
            spacing: 18

            Item {
                width: parent.width
                height: Math.max(leaf.height, headTexts.implicitHeight)
                Rectangle {
                    id: leaf
                    width: 40
                    height: 40
                    radius: 20
                    color: Theme.alpha(Theme.mint, 0.13)
                    SymbolIcon {
                        anchors.centerIn: parent
                        name: "leaf.fill"
                        size: 19
                        color: Theme.mint
                    }
                }
                Column {
                    id: headTexts
                    anchors.left: leaf.right
                    anchors.leftMargin: 12
                    anchors.right: closeButton.left
                    anchors.rightMargin: 8
                    spacing: 4
                    Text {
                        text: "如何结束这一轮？"
                        font.pixelSize: 21
                        font.weight: Font.Bold
                        color: Theme.primaryText
                    }
                    Text {
                        width: parent.width
                        text: "你可以保留已经完成的部分，也可以把这次尝试当作没有发生。"
                        font.pixelSize: 11
                        color: Theme.secondaryText
                        wrapMode: Text.WordWrap
                    }
                }
                AbstractButton {
                    id: closeButton
                    objectName: "endDialog.close"
                    anchors.right: parent.right
                    anchors.top: parent.top
                    width: 22
                    height: 22
                    Accessible.role: Accessible.Button
                    Accessible.name: "继续专注"
                    ToolTip.visible: hovered
                    ToolTip.text: "继续专注"
                    hoverEnabled: true
                    onClicked: layer.continueChosen()
                    background: Rectangle {
                        radius: 11
                        color: Theme.palette.neutralFill(closeButton.hovered ? 0.09 : 0.05)
                    }
                    contentItem: SymbolIcon {
                        name: "xmark"
                        size: 10
                        color: Theme.secondaryText
                    }
                }
            }

            Column {
                width: parent.width
                spacing: 10
                DecisionButton {
                    objectName: "endDialog.review"
                    width: parent.width
                    text: "结束并记录"
                    detail: "进入复盘，保留已经完成的专注时间"
                    symbol: "checkmark.circle.fill"
                    tint: Theme.mint
                    onClicked: layer.reviewChosen()
                }
                DecisionButton {
                    objectName: "endDialog.abandon"
                    width: parent.width
                    text: "放弃本轮"
                    detail: "不保存时间、走神、疲劳和微休息记录"
                    symbol: "trash.fill"
                    tint: Theme.coral
                    onClicked: layer.abandonChosen()
                }
            }

            AbstractButton {
                id: backButton
                objectName: "endDialog.continue"
                anchors.horizontalCenter: parent.horizontalCenter
                height: 22
                text: "返回继续专注"
                Accessible.role: Accessible.Button
                Accessible.name: text
                onClicked: layer.continueChosen()
                background: Item {}
                contentItem: Text {
                    text: backButton.text
                    font.pixelSize: 11
                    color: Theme.secondaryText
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                }
            }
        }
    }
}
