import QtQuick
import QtQuick.Templates as T
import QtQuick.Shapes
import Quillmere

// The review sheet. Modal, and only its own buttons close it: Escape and clicks outside
// do nothing.
T.Popup {
    id: sheet
    required property ViewModels models
    property bool shown: false
    visible: shown
    modal: true
    focus: true
    closePolicy: T.Popup.NoAutoClose
    anchors.centerIn: T.Overlay.overlay
    width: 610
    height: 620
    padding: 30

    readonly property CompletionViewModel review: models.completion

    T.Overlay.modal: Rectangle {
        objectName: "review.scrim"
        color: Theme.alpha("#000000", 0.28)
    }

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: 180 * Theme.motion; easing.type: Easing.OutQuad }
        NumberAnimation { property: "scale"; from: 0.96; to: 1; duration: 180 * Theme.motion; easing.type: Easing.OutQuad }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: 150 * Theme.motion; easing.type: Easing.OutQuad }
    }

    background: Rectangle {
        radius: 20
        SoftShadow {
            anchors.fill: parent
            radius: parent.radius
        }
        border.width: 1
        border.color: Theme.hairline
        gradient: Gradient {
            GradientStop { position: 0.0; color: Theme.background }
            GradientStop { position: 0.5; color: Theme.gradientMiddle }
            GradientStop { position: 1.0; color: Theme.gradientEnd }
        }
    }

    contentItem: Item {
        id: sheetContent
        objectName: "review.content"
        // Holds the keyboard while open; Escape does nothing here. The scope is the sheet's
        // own item, which is what takes the focus when the sheet opens.
        FocusTrap {
            scope: sheetContent.parent
            active: sheet.shown
            initialFocus: focusRating.chosenSegment
        }

        Column {
            id: body
            width: parent.width
            spacing: 20

            Row {
                width: parent.width
                spacing: 16
                Rectangle {
                    width: 54
                    height: 54
                    radius: 16
                    color: Theme.alpha(Theme.mint, 0.14)
                    SymbolIcon {
                        anchors.centerIn: parent
                        name: "checkmark"
                        size: 22
                        color: Theme.mint
                    }
                }
                Column {
                    width: parent.width - 70
                    spacing: 5
                    QuillText {
                        text: "本轮完成"
                        font.pixelSize: 30
                        font.weight: Font.Bold
                        color: Theme.primaryText
                    }
                    QuillText {
                        width: parent.width
                        text: "花一分钟复盘，注意力训练才会留下可比较的数据。"
                        font.pixelSize: 13
                        color: Theme.secondaryText
                        wrapMode: Text.WordWrap
                    }
                    Rectangle {
                        objectName: "review.taskChip"
                        width: chipRow.implicitWidth + 18
                        height: 22
                        radius: 11
                        color: review.taskChipIsTask ? Theme.alpha(Theme.blue, 0.09)
                                                     : Theme.palette.neutralFill(0.06)
                        Row {
                            id: chipRow
                            anchors.centerIn: parent
                            spacing: 4
                            SymbolIcon {
                                anchors.verticalCenter: parent.verticalCenter
                                name: "tag.fill"
                                size: 10
                                color: review.taskChipIsTask ? Theme.blue : Theme.secondaryText
                            }
                            QuillText {
                                objectName: "review.taskChip.text"
                                anchors.verticalCenter: parent.verticalCenter
                                text: review.taskChipText
                                font.pixelSize: Math.max(10, Theme.smallTextMinimum)
                                font.weight: Font.DemiBold
                                color: review.taskChipIsTask ? Theme.blue : Theme.secondaryText
                            }
                        }
                    }
                }
            }

            Row {
                width: parent.width
                spacing: 12
                SummaryBox {
                    objectName: "review.focusedMinutes"
                    width: (parent.width - 2 * parent.spacing) / 3
                    value: review.focusedMinutesText
                    label: "专注分钟"
                    tint: Theme.mint
                }
                SummaryBox {
                    objectName: "review.wanderCount"
                    width: (parent.width - 2 * parent.spacing) / 3
                    value: review.wanderCountText
                    label: "走神次数"
                    tint: Theme.coral
                }
                SummaryBox {
                    objectName: "review.reminderCount"
                    width: (parent.width - 2 * parent.spacing) / 3
                    value: review.reminderCountText
                    label: "微休息"
                    tint: Theme.blue
                }
            }

            RatingRow {
                id: focusRating
                objectName: "review.focus"
                width: parent.width
                title: "整体专注程度"
                value: review.focusRating
                low: "很散"
                high: "很稳"
                tint: Theme.mint
                onChosen: (newValue) => review.focusRating = newValue
            }
            RatingRow {
                objectName: "review.energy"
                width: parent.width
                title: "结束时的精力"
                value: review.endEnergy
                low: "耗尽"
                high: "充沛"
                tint: Theme.amber
                onChosen: (newValue) => review.endEnergy = newValue
            }

            Row {
                objectName: "review.music"
                visible: review.musicMessage !== ""
                spacing: 6
                SymbolIcon {
                    anchors.verticalCenter: parent.verticalCenter
                    name: "music.note"
                    size: 11
                    color: Theme.secondaryText
                }
                QuillText {
                    objectName: "review.music.text"
                    anchors.verticalCenter: parent.verticalCenter
                    text: review.musicMessage
                    font.pixelSize: 11
                    color: Theme.secondaryText
                }
            }

            Column {
                width: parent.width
                spacing: 8
                QuillText {
                    text: "一句话记录（可选）"
                    font.pixelSize: 12
                    font.weight: Font.DemiBold
                    color: Theme.primaryText
                }
                QuillTextField {
                    objectName: "review.note"
                    width: parent.width
                    implicitHeight: 40
                    radius: 12
                    placeholderText: "例如：30 分钟后开始费力，做题比看课更容易保持注意…"
                    Accessible.name: "一句话记录"
                    text: review.note
                    onTextEdited: review.note = text
                }
            }
        }

        Item {
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            height: 46
            QuillText {
                anchors.left: parent.left
                anchors.verticalCenter: parent.verticalCenter
                text: "记录感觉，不给今天的自己打分。"
                font.pixelSize: Math.max(10, Theme.smallTextMinimum)
                color: Theme.secondaryText
            }
            Row {
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                spacing: 10
                QuillSecondaryButton {
                    objectName: "review.abandon"
                    anchors.verticalCenter: parent.verticalCenter
                    text: "放弃且不保存"
                    textColor: Theme.coral
                    onClicked: review.showAbandonConfirmation = true
                }
                QuillPrimaryButton {
                    objectName: "review.save"
                    text: "保存复盘"
                    tint: Theme.mint
                    onClicked: review.save()
                }
            }
        }

        // The abandon confirmation covers the whole sheet, its dark area cancels.
        Item {
            id: abandonLayer
            objectName: "abandonDialog"
            x: -sheet.leftPadding
            y: -sheet.topPadding
            width: sheet.width
            height: sheet.height
            z: 10
            readonly property bool shown: review.showAbandonConfirmation
            opacity: shown ? 1 : 0
            visible: shown || opacity > 0
            enabled: shown
            Behavior on opacity { NumberAnimation { duration: 180 * Theme.motion; easing.type: Easing.OutQuad } }

            // Over the sheet's own trap: Escape here means "back to the review".
            FocusTrap {
                scope: abandonLayer
                active: abandonLayer.shown
                initialFocus: abandonPanel.cancelButton
                onEscapePressed: review.showAbandonConfirmation = false
            }

            Rectangle {
                objectName: "abandonDialog.scrim"
                anchors.fill: parent
                radius: 20
                color: Theme.alpha("#000000", 0.3)
                MouseArea {
                    anchors.fill: parent
                    acceptedButtons: Qt.AllButtons
                    onClicked: review.showAbandonConfirmation = false
                }
            }
            AbandonSessionDialog {
                id: abandonPanel
                objectName: "abandonDialog.panel"
                anchors.centerIn: parent
                scale: abandonLayer.shown ? 1.0 : 0.96
                Behavior on scale { NumberAnimation { duration: 180 * Theme.motion; easing.type: Easing.OutQuad } }
                onCancelChosen: review.showAbandonConfirmation = false
                onConfirmChosen: review.confirmAbandon()
            }
        }
    }
}
