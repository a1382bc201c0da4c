import QtQuick
import Quillmere

// "设计这一轮": task, length, reminder range, starting energy and the music line.
// Locked while a round runs.
QuillCard {
    id: card
    required property ControlCardViewModel controls
    required property SettingsBridge settings
    objectName: "control.card"
    padding: 20
    implicitHeight: body.implicitHeight + 2 * padding

    Column {
        id: body
        width: parent.width
        spacing: 16
        enabled: !card.controls.locked

        Row {
            spacing: 11
            Rectangle {
                width: 34
                height: 34
                radius: 17
                anchors.verticalCenter: parent.verticalCenter
                color: Theme.alpha(Theme.mint, 0.12)
                SymbolIcon {
                    anchors.centerIn: parent
                    name: "dial.medium"
                    size: 16
                    color: Theme.mint
                }
            }
            Column {
                anchors.verticalCenter: parent.verticalCenter
                spacing: 2
                QuillText {
                    objectName: "control.title"
                    text: card.controls.headingTitle
                    font.pixelSize: 17
                    font.weight: Font.Bold
                    color: Theme.primaryText
                }
                QuillText {
                    objectName: "control.subtitle"
                    text: card.controls.headingSubtitle
                    font.pixelSize: 11
                    color: Theme.secondaryText
                }
            }
        }

        Column {
            width: parent.width
            spacing: 8
            ControlLabel {
                objectName: "control.taskLabel"
                width: parent.width
                title: "本轮任务"
                value: card.controls.taskLabel
            }
            Row {
                width: parent.width
                spacing: 8
                QuillComboBox {
                    objectName: "control.taskPicker"
                    width: parent.width - taskToggle.width - parent.spacing
                    implicitHeight: 42
                    model: card.controls.taskOptions
                    currentIndex: card.controls.taskIndex
                    Accessible.name: "本轮任务"
                    onActivated: (index) => card.controls.chooseTask(index)
                }
                QuillSecondaryButton {
                    id: taskToggle
                    objectName: "control.taskToggle"
                    width: 42
                    symbol: card.controls.creatorToggleSymbol
                    Accessible.name: card.controls.creatorToggleHelp
                    toolTip: card.controls.creatorToggleHelp
                    // The row it opens lies below; the tip must not cover its 添加.
                    toolTipAbove: true
                    onClicked: {
                        card.controls.toggleTaskCreator()
                        // Opening the row puts the cursor in its field, ready to type.
                        if (card.controls.showTaskCreator)
                            newTaskField.forceActiveFocus(Qt.TabFocusReason)
                    }
                }
            }
            // Opens and closes by growing and fading, ease-in-out over 0.18 s.
            Item {
                id: newTaskSlot
                readonly property bool open: card.controls.showTaskCreator
                width: parent.width
                height: open ? newTaskRow.implicitHeight : 0
                opacity: open ? 1 : 0
                visible: height > 0
                clip: true
                Behavior on height { NumberAnimation { duration: 180 * Theme.motion; easing.type: Easing.InOutQuad } }
                Behavior on opacity { NumberAnimation { duration: 180 * Theme.motion; easing.type: Easing.InOutQuad } }
            Row {
                id: newTaskRow
                objectName: "control.newTaskRow"
                width: parent.width
                spacing: 8
                enabled: newTaskSlot.open
                QuillTextField {
                    id: newTaskField
                    objectName: "control.newTaskField"
                    width: parent.width - addButton.width - parent.spacing
                    height: addButton.height
                    placeholderText: "例如：力扣、AI 学习"
                    text: card.controls.newTaskName
                    onTextEdited: card.controls.newTaskName = text
                    onAccepted: card.controls.commitNewTask()
                }
                QuillPrimaryButton {
                    id: addButton
                    objectName: "control.addTask"
                    leftPadding: 16
                    rightPadding: 16
                    text: "添加"
                    enabled: card.controls.canAddTask
                    onClicked: card.controls.commitNewTask()
                }
            }
            }
        }

        Column {
            width: parent.width
            spacing: 8
            ControlLabel {
                objectName: "control.durationLabel"
                width: parent.width
                title: "专注时长"
                value: card.controls.durationLabel
            }
            Row {
                spacing: 6
                Repeater {
                    model: card.controls.durationChoices
                    delegate: QuillButtonBase {
                        id: chip
                        required property int modelData
                        readonly property bool chosen: card.controls.selectedDuration === modelData
                        objectName: "control.duration." + modelData
                        width: 44
                        height: 34
                        text: modelData
                        enabled: !card.controls.locked
                        opacity: enabled ? 1.0 : 0.45
                        hoverEnabled: true
                        Accessible.role: Accessible.Button
                        Accessible.name: modelData + " 分钟"
                        onClicked: card.controls.chooseDuration(modelData)
                        background: Rectangle {
                            radius: 10
                            color: chip.chosen ? (chip.pressed ? Theme.alpha(Theme.mint, 0.78) : Theme.mint)
                                 : Theme.palette.neutralFill(chip.pressed ? 0.13 : chip.hovered ? 0.1 : 0.06)
                            FocusRing { control: chip; baseRadius: 10 }
                        }
                        contentItem: QuillText {
                            text: chip.text
                            font.pixelSize: 13
                            font.weight: Font.DemiBold
                            color: chip.chosen ? Theme.onAccent : Theme.primaryText
                            horizontalAlignment: Text.AlignHCenter
                            verticalAlignment: Text.AlignVCenter
                        }
                    }
                }
                Item { width: 4; height: 1 }
                QuillTextField {
                    objectName: "control.durationField"
                    width: 54
                    height: 34
                    implicitHeight: 34
                    horizontalAlignment: Text.AlignHCenter
                    placeholderText: "分钟"
                    Accessible.name: "分钟"
                    // Digits only; a number out of 1…1440 is brought into range as the store's
                    // repair would, and the field then shows what the store holds.
                    validator: RegularExpressionValidator { regularExpression: /[0-9]{0,5}/ }
                    text: card.settings.selectedDurationMinutes
                    onEditingFinished: {
                        const minutes = parseInt(text)
                        if (!isNaN(minutes))
                            card.settings.selectedDurationMinutes = Math.max(1, Math.min(1440, minutes))
                        text = Qt.binding(() => card.settings.selectedDurationMinutes)
                    }
                }
                QuillText {
                    anchors.verticalCenter: parent.verticalCenter
                    text: "分"
                    font.pixelSize: 12
                    color: Theme.secondaryText
                }
                QuillStepper {
                    objectName: "control.durationStepper"
                    anchors.verticalCenter: parent.verticalCenter
                    accessibleName: "专注时长"
                    value: card.settings.selectedDurationMinutes
                    from: 1
                    to: 1440
                    onStepped: (newValue) => card.settings.selectedDurationMinutes = newValue
                }
            }
        }

        Column {
            width: parent.width
            spacing: 8
            ControlLabel {
                objectName: "control.reminderLabel"
                width: parent.width
                title: "随机提示区间"
                value: card.controls.reminderRangeLabel
            }
            Row {
                spacing: 12
                MinuteStepper {
                    objectName: "control.reminderMin"
                    title: "最早"
                    value: card.settings.reminderMinimumMinutes
                    from: 1
                    to: 60
                    onStepped: (newValue) => card.settings.reminderMinimumMinutes = newValue
                }
                SymbolIcon {
                    anchors.bottom: parent.bottom
                    anchors.bottomMargin: 4
                    name: "arrow.right"
                    size: 14
                    color: Theme.secondaryText
                }
                MinuteStepper {
                    objectName: "control.reminderMax"
                    title: "最晚"
                    value: card.settings.reminderMaximumMinutes
                    from: card.settings.reminderMaximumFloor
                    to: 90
                    onStepped: (newValue) => card.settings.reminderMaximumMinutes = newValue
                }
            }
        }

        Column {
            width: parent.width
            spacing: 8
            ControlLabel {
                objectName: "control.energyLabel"
                width: parent.width
                title: "开始前精力"
                value: card.controls.energyLabel
            }
            Row {
                spacing: 8
                Repeater {
                    model: 5
                    delegate: QuillButtonBase {
                        id: level
                        required property int index
                        readonly property int value: index + 1
                        objectName: "control.energy." + value
                        width: 30
                        height: 30
                        enabled: !card.controls.locked
                        opacity: enabled ? 1.0 : 0.45
                        hoverEnabled: true
                        Accessible.role: Accessible.Button
                        Accessible.name: "精力 " + value
                        onClicked: card.controls.setEnergy(value)
                        background: Rectangle {
                            radius: 15
                            color: Theme.palette.neutralFill(level.pressed ? 0.11 : level.hovered ? 0.08 : 0.04)
                            FocusRing { control: level; baseRadius: 15 }
                        }
                        contentItem: SymbolIcon {
                            name: level.value <= card.controls.energyLevel ? "circle.fill" : "circle"
                            size: 13
                            color: level.value <= card.controls.energyLevel ? Theme.mint : Theme.secondaryText
                        }
                    }
                }
            }
        }

        Row {
            spacing: 7
            SymbolIcon {
                anchors.verticalCenter: parent.verticalCenter
                name: card.controls.musicLineSymbol
                size: 12
                color: Theme.secondaryText
            }
            QuillText {
                objectName: "control.musicLine"
                anchors.verticalCenter: parent.verticalCenter
                text: card.controls.musicLineText
                font.pixelSize: 11
                color: Theme.secondaryText
            }
        }
    }
}
