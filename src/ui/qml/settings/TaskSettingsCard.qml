import QtQuick
import QtQuick.Controls.Basic
import Quillmere

// The "任务管理" card: add a task, and the list with each task's badge, count and remove.
SettingsCard {
    id: card
    required property TaskSettingsViewModel tasks
    title: "任务管理"
    subtitle: "用于每轮选择与分类统计"
    symbol: "tag.fill"

    Row {
        width: parent.width
        spacing: 8
        enabled: card.tasks.inputEnabled
        bottomPadding: 6
        QuillTextField {
            id: field
            objectName: "settings.tasks.field"
            width: parent.width - add.width - parent.spacing
            implicitHeight: 34
            font.pixelSize: 11
            placeholderText: "新增任务名称"
            text: card.tasks.newTaskName
            onTextEdited: card.tasks.newTaskName = text
            onAccepted: card.tasks.addTask()
        }
        QuillSecondaryButton {
            id: add
            objectName: "settings.tasks.add"
            implicitHeight: 34
            width: 42
            symbol: "plus"
            Accessible.name: "新增任务"
            enabled: card.tasks.addEnabled
            onClicked: card.tasks.addTask()
        }
    }
    QuillText {
        width: parent.width
        bottomPadding: 8
        text: "移除任务不会删除已经归档的专注记录和统计。"
        font.pixelSize: 9
        color: Theme.alpha(Theme.secondaryText, 0.82)
        wrapMode: Text.WordWrap
    }
    Row {
        objectName: "settings.tasks.empty"
        visible: card.tasks.rows.length === 0
        spacing: 6
        topPadding: 4
        bottomPadding: 4
        SymbolIcon { name: "tag"; size: 11; color: Theme.secondaryText; anchors.verticalCenter: parent.verticalCenter }
        QuillText {
            text: "还没有自定义任务，可在这里或专注页新增。"
            font.pixelSize: 10
            color: Theme.secondaryText
        }
    }
    Repeater {
        model: card.tasks.rows
        Item {
            id: taskRow
            required property var modelData
            required property int index
            objectName: "settings.tasks.row." + index
            width: parent.width
            height: 32
            Rectangle { width: parent.width; height: 1; color: Theme.hairline }
            Row {
                anchors.left: parent.left
                anchors.right: trailing.left
                anchors.verticalCenter: parent.verticalCenter
                spacing: 7
                SymbolIcon {
                    anchors.verticalCenter: parent.verticalCenter
                    name: "tag.fill"; size: 10; color: Theme.mint
                }
                QuillText {
                    objectName: taskRow.objectName + ".name"
                    anchors.verticalCenter: parent.verticalCenter
                    text: taskRow.modelData.name
                    font.pixelSize: 11
                    font.weight: Font.DemiBold
                    color: Theme.primaryText
                    elide: Text.ElideRight
                    width: Math.min(implicitWidth, parent.width - 60)
                }
                Rectangle {
                    objectName: taskRow.objectName + ".current"
                    visible: taskRow.modelData.current
                    anchors.verticalCenter: parent.verticalCenter
                    width: badge.implicitWidth + 12
                    height: badge.implicitHeight + 4
                    radius: height / 2
                    color: Theme.alpha(Theme.mint, 0.1)
                    QuillText {
                        id: badge
                        anchors.centerIn: parent
                        text: "当前"
                        font.pixelSize: 8
                        font.weight: Font.Bold
                        color: Theme.mint
                    }
                }
            }
            Row {
                id: trailing
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                spacing: 6
                QuillText {
                    objectName: taskRow.objectName + ".count"
                    anchors.verticalCenter: parent.verticalCenter
                    text: taskRow.modelData.countText
                    font.pixelSize: 9
                    font.weight: Font.Medium
                    color: Theme.secondaryText
                }
                QuillButtonBase {
                    id: remove
                    objectName: taskRow.objectName + ".remove"
                    width: 22
                    height: 22
                    hoverEnabled: true
                    focusPolicy: Qt.StrongFocus
                    Accessible.name: "移除任务" + taskRow.modelData.name
                    Accessible.description: "从任务列表移除；历史记录仍保留"
                    // On hover only: the keyboard hears the description, and a tip on focus
                    // would cover the rows below.
                    QuillToolTip { text: remove.Accessible.description; shown: remove.hovered }
                    onClicked: card.tasks.removeTask(taskRow.modelData.name)
                    background: Rectangle {
                        radius: 6
                        color: remove.hovered ? Theme.palette.neutralFill(0.07) : "transparent"
                        FocusRing { control: remove; baseRadius: 6 }
                    }
                    contentItem: SymbolIcon {
                        name: "xmark"; size: 9; color: Theme.secondaryText
                    }
                }
            }
        }
    }
}
