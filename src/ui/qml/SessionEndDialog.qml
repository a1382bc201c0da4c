import QtQuick
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

    // A tap on the scrim means "continue", and so does Escape.
    FocusTrap {
        scope: layer
        active: layer.shown
        initialFocus: reviewButton
        onEscapePressed: layer.continueChosen()
    }

    Rectangle {
        objectName: "endDialog.scrim"
        anchors.fill: parent
        color: Theme.alpha("#000000", 0.28)
        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.AllButtons
            hoverEnabled: true
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
                    // The subtitle runs under the close button, which only spans the title.
                    anchors.right: parent.right
                    spacing: 4
                    QuillText {
                        width: parent.width - closeButton.width - 8
                        text: "如何结束这一轮？"
                        font.pixelSize: 21
                        font.weight: Font.Bold
                        color: Theme.primaryText
                        elide: Text.ElideRight
                    }
                    QuillText {
                        id: subtitle
                        objectName: "endDialog.subtitle"
                        readonly property string full: "你可以保留已经完成的部分，也可以把这次尝试当作没有发生。"
                        width: parent.width
                        // Too long for one line, it breaks at the comma: two balanced lines
                        // instead of a lone "生。" on the second.
                        text: subtitleMetrics.width <= width ? full
                              : "你可以保留已经完成的部分，\n也可以把这次尝试当作没有发生。"
                        font.pixelSize: 11
                        color: Theme.secondaryText
                        wrapMode: Text.WordWrap
                        TextMetrics {
                            id: subtitleMetrics
                            font: subtitle.font
                            text: subtitle.full
                        }
                    }
                }
                QuillButtonBase {
                    id: closeButton
                    objectName: "endDialog.close"
                    anchors.right: parent.right
                    anchors.top: parent.top
                    width: 22
                    height: 22
                    Accessible.role: Accessible.Button
                    Accessible.name: "继续专注"
                    QuillToolTip { text: "继续专注"; shown: closeButton.hovered }
                    hoverEnabled: true
                    onClicked: layer.continueChosen()
                    background: Rectangle {
                        radius: 11
                        color: Theme.palette.neutralFill(closeButton.pressed ? 0.13
                                                         : closeButton.hovered ? 0.09 : 0.05)
                        FocusRing { control: closeButton; baseRadius: 11 }
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
                    id: reviewButton
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

            QuillButtonBase {
                id: backButton
                objectName: "endDialog.continue"
                anchors.horizontalCenter: parent.horizontalCenter
                height: 22
                text: "返回继续专注"
                Accessible.role: Accessible.Button
                Accessible.name: text
                onClicked: layer.continueChosen()
                hoverEnabled: true
                background: FocusRing { control: backButton; baseRadius: 6 }
                contentItem: QuillText {
                    text: backButton.text
                    font.pixelSize: 11
                    font.underline: backButton.hovered
                    color: backButton.pressed ? Theme.primaryText : Theme.secondaryText
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                }
            }
        }
    }
}
