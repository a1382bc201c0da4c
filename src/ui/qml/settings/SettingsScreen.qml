import QtQuick
import QtQuick.Controls.Basic
import Quillmere

// The "设置" section: the defaults of every new round, the floating window, the end music,
// the task list and the data; built the first time it is shown.
Item {
    id: screen
    required property ViewModels models

    readonly property SettingsViewModel vm: models.settings
    readonly property MusicSettingsViewModel music: models.music
    readonly property TaskSettingsViewModel tasks: models.tasks
    readonly property FocusGuardViewModel guard: models.focusGuard

    // The running player may have changed while the screen was away.
    onVisibleChanged: if (visible) music.refreshPlayer()
    Component.onCompleted: music.refreshPlayer()

    Flickable {
        id: flick
        KeepFocusInView { flickable: flick }
        objectName: "settings.scroll"
        anchors.fill: parent
        contentWidth: width
        contentHeight: content.height + 34 + 34
        boundsBehavior: Flickable.StopAtBounds
        clip: true
        ScrollBar.vertical: QuillScrollBar {}

        Column {
            id: content
            x: 30
            y: 34
            width: flick.width - 60
            spacing: 22

            SectionHeading {
                objectName: "settings.heading"
                eyebrow: "Preferences"
                title: "让工具适应你"
                subtitle: "这些是每一轮开始时使用的默认值，开始后不会改变当前轮次。"
            }

            Row {
                width: parent.width
                spacing: 16

                Column {
                    id: left
                    width: parent.width - right.width - parent.spacing
                    spacing: 16

                    SettingsCard {
                        objectName: "settings.reminder"
                        width: parent.width
                        title: "随机提示"
                        subtitle: "控制微休息出现的节律"
                        symbol: "bell.badge.fill"

                        SettingRow {
                            title: "最早响起"
                            detail: "每次提示后重新随机"
                            SettingStepper {
                                objectName: "settings.reminderMinimum"
                                value: vm.reminderMinimum
                                from: 1
                                to: 60
                                label: vm.reminderMinimumText
                                accessibleName: "最早响起"
                                onStepped: (v) => vm.reminderMinimum = v
                            }
                        }
                        SettingRow {
                            title: "最晚响起"
                            detail: "必须晚于或等于最早时间"
                            SettingStepper {
                                objectName: "settings.reminderMaximum"
                                value: vm.reminderMaximum
                                from: vm.reminderMaximumFrom
                                to: 90
                                label: vm.reminderMaximumText
                                accessibleName: "最晚响起"
                                onStepped: (v) => vm.reminderMaximum = v
                            }
                        }
                        SettingRow {
                            title: "微休息长度"
                            detail: "建议闭眼、松肩，不碰手机"
                            SettingStepper {
                                objectName: "settings.microBreak"
                                value: vm.microBreakSeconds
                                from: 5
                                to: 60
                                label: vm.microBreakText
                                accessibleName: "微休息长度"
                                onStepped: (v) => vm.microBreakSeconds = v
                            }
                        }
                        SettingRow {
                            title: "提示音"
                            detail: "短促但不刺耳"
                            SoundPicker {
                                objectName: "settings.reminderSound"
                                options: vm.reminderSoundOptions
                                currentIndex: vm.reminderSoundIndex
                                accessibleName: "提示音"
                                onChosen: (index) => vm.reminderSoundIndex = index
                                onPreview: vm.previewReminderSound()
                            }
                        }
                        Item {
                            width: parent.width
                            height: nextReminder.implicitHeight + 16
                            Rectangle { width: parent.width; height: 1; color: Theme.hairline }
                            QuillSwitch {
                                id: nextReminder
                                objectName: "settings.showNextReminder"
                                width: parent.width
                                anchors.verticalCenter: parent.verticalCenter
                                anchors.verticalCenterOffset: 4
                                text: "显示下一次提示的倒计时"
                                font.pixelSize: 12
                                checked: vm.showNextReminder
                                onToggled: vm.showNextReminder = checked
                            }
                        }
                    }

                    MusicSettingsCard {
                        objectName: "settings.music"
                        width: parent.width
                        music: screen.music
                    }

                    FocusGuardCard {
                        objectName: "settings.guard"
                        width: parent.width
                        guard: screen.guard
                    }
                }

                Column {
                    id: right
                    width: 370
                    spacing: 16

                    SettingsCard {
                        objectName: "settings.session"
                        width: parent.width
                        title: "专注轮次"
                        subtitle: "默认时长与结束反馈"
                        symbol: "timer"

                        SettingRow {
                            title: "默认时长"
                            detail: "仍可在专注页快速选择"
                            Row {
                                spacing: 6
                                QuillTextField {
                                    id: durationField
                                    objectName: "settings.duration.field"
                                    width: 64
                                    implicitHeight: 28
                                    font.pixelSize: 12
                                    horizontalAlignment: TextInput.AlignRight
                                    text: vm.selectedDuration
                                    validator: IntValidator { bottom: 0; top: 999999 }
                                    Accessible.name: "默认时长（分钟）"
                                    onEditingFinished: vm.commitDurationText(text)
                                }
                                QuillText {
                                    anchors.verticalCenter: parent.verticalCenter
                                    text: "分钟"
                                    font.pixelSize: 10
                                    color: Theme.secondaryText
                                }
                                QuillStepper {
                                    objectName: "settings.duration"
                                    anchors.verticalCenter: parent.verticalCenter
                                    value: vm.selectedDuration
                                    from: 1
                                    to: 1440
                                    accessibleName: "默认时长"
                                    onStepped: (v) => vm.selectedDuration = v
                                }
                            }
                        }
                        SettingRow {
                            title: "结束提示音"
                            detail: "音乐开始前的完成信号"
                            SoundPicker {
                                objectName: "settings.completionSound"
                                options: vm.completionSoundOptions
                                currentIndex: vm.completionSoundIndex
                                accessibleName: "结束提示音"
                                onChosen: (index) => vm.completionSoundIndex = index
                                onPreview: vm.previewCompletionSound()
                            }
                        }
                        SettingRow {
                            title: "最小化时悬浮倒计时"
                            detail: "仅在计时中显示；可拖动，恢复主窗口后自动隐藏"
                            QuillSwitch {
                                objectName: "settings.floatingTimer"
                                Accessible.name: "最小化时悬浮倒计时"
                                checked: vm.floatingTimerOnMinimize
                                onToggled: vm.floatingTimerOnMinimize = checked
                            }
                        }
                        SettingRow {
                            title: "最小化时悬浮状态按钮"
                            detail: "可单独显示“我走神了”和“我开始累了”，无需倒计时"
                            QuillSwitch {
                                objectName: "settings.floatingButtons"
                                Accessible.name: "最小化时悬浮状态按钮"
                                checked: vm.floatingSignalButtons
                                onToggled: vm.floatingSignalButtons = checked
                            }
                        }
                    }

                    TaskSettingsCard {
                        objectName: "settings.tasks"
                        width: parent.width
                        tasks: screen.tasks
                    }

                    SettingsCard {
                        objectName: "settings.data"
                        width: parent.width
                        title: "数据"
                        subtitle: vm.dataSubtitle
                        symbol: "internaldrive.fill"

                        Column {
                            width: parent.width
                            spacing: 8
                            QuillSecondaryButton {
                                objectName: "settings.export"
                                width: parent.width
                                text: "导出全部记录"
                                symbol: "square.and.arrow.up"
                                onClicked: vm.exportSessions()
                                QuillText {
                                    anchors.right: parent.right
                                    anchors.rightMargin: 16
                                    anchors.verticalCenter: parent.verticalCenter
                                    text: "CSV"
                                    font.pixelSize: 9
                                    font.weight: Font.Bold
                                    color: Theme.secondaryText
                                }
                            }
                            QuillSecondaryButton {
                                objectName: "settings.clear"
                                width: parent.width
                                text: "清空专注记录"
                                symbol: "trash"
                                textColor: Theme.coral
                                enabled: vm.clearEnabled
                                onClicked: vm.requestClear()
                            }
                        }
                    }

                    QuillCard {
                        objectName: "settings.philosophy"
                        width: parent.width
                        height: implicitHeight
                        Column {
                            width: parent.width
                            spacing: 8
                            SymbolIcon { name: "quote.opening"; size: 18; color: Theme.mint }
                            QuillText {
                                width: parent.width
                                text: "训练注意力，不是逼自己忽略疲劳；是更早发现疲劳、更准确地选择继续或休息。"
                                font.pixelSize: 12
                                font.weight: Font.Medium
                                color: Theme.primaryText
                                wrapMode: Text.WordWrap
                            }
                            QuillText {
                                text: "Quillmere · 本地优先 · 无账号"
                                font.pixelSize: 9
                                font.weight: Font.DemiBold
                                color: Theme.secondaryText
                            }
                        }
                    }
                }
            }
        }
    }

    ConfirmAlert {
        objectName: "settings.clearAlert"
        shown: vm.clearConfirmationShown
        title: "清空全部专注记录？"
        message: "此操作无法撤销。建议先导出 CSV 备份。"
        confirmText: "永久清空"
        symbol: "trash.fill"
        onConfirmed: vm.confirmClear()
        onCancelled: vm.cancelClear()
    }
}
