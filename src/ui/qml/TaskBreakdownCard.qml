import QtQuick
import Quillmere

// Focus per task: a table of the tasks with most minutes, each with a bar scaled to the
// largest row, or an empty state before the first round.
QuillCard {
    id: card
    required property InsightsViewModel vm
    padding: 20
    implicitHeight: column.implicitHeight + 2 * padding

    readonly property real nameWidth: 130
    readonly property real figureWidth: 52

    // Figures of a row, right-aligned; as wide as `figureWidth`.
    component Cell: QuillText {
        width: 52
        horizontalAlignment: Text.AlignRight
        font.pixelSize: 11
        color: Theme.primaryText
    }

    Column {
        id: column
        width: parent.width
        spacing: 14

        InsightCardHeader {
            width: parent.width
            title: "任务专注分布"
            subtitle: "按任务汇总全部专注记录；已从任务列表移除的历史任务仍会保留"
            symbol: "tag.fill"
        }

        InsightEmptyState {
            objectName: "insights.tasks.empty"
            width: parent.width
            height: 90
            visible: card.vm.taskRows.length === 0
            symbol: "tag"
            text: "完成一轮后，这里会出现任务统计"
        }

        Column {
            objectName: "insights.tasks.table"
            width: parent.width
            spacing: 10
            visible: card.vm.taskRows.length > 0
            Accessible.role: Accessible.Table
            Accessible.name: "任务专注分布"

            Row {
                width: parent.width
                spacing: 12
                QuillText {
                    width: card.nameWidth
                    text: "任务"
                    font.pixelSize: 10
                    color: Theme.secondaryText
                }
                QuillText {
                    width: parent.width - card.nameWidth - 3 * card.figureWidth - 4 * parent.spacing
                    text: "专注占比"
                    font.pixelSize: 10
                    color: Theme.secondaryText
                }
                Cell { text: "分钟"; font.pixelSize: 10; color: Theme.secondaryText }
                Cell { text: "轮次"; font.pixelSize: 10; color: Theme.secondaryText }
                Cell { text: "评分"; font.pixelSize: 10; color: Theme.secondaryText }
            }

            Repeater {
                model: card.vm.taskRows
                Row {
                    objectName: "insights.tasks.row." + index
                    width: column.width
                    height: 20
                    spacing: 12
                    Accessible.role: Accessible.Row
                    Accessible.name: modelData.name + "，" + modelData.minutes + " 分钟，"
                                     + modelData.sessions + " 轮，评分 " + modelData.rating

                    Row {
                        width: card.nameWidth
                        anchors.verticalCenter: parent.verticalCenter
                        spacing: 6
                        SymbolIcon {
                            anchors.verticalCenter: parent.verticalCenter
                            name: "tag.fill"
                            size: 9
                            color: modelData.uncategorized ? Theme.secondaryText : Theme.blue
                        }
                        QuillText {
                            objectName: "insights.tasks.row." + index + ".name"
                            anchors.verticalCenter: parent.verticalCenter
                            width: card.nameWidth - 15
                            text: modelData.name
                            font.pixelSize: 11
                            font.weight: Font.DemiBold
                            color: Theme.primaryText
                            elide: Text.ElideRight
                            // A name cut short shows in full on hover.
                            HoverHandler { id: nameHover; enabled: parent.truncated }
                            QuillToolTip { text: parent.text; shown: nameHover.hovered }
                        }
                    }
                    Rectangle {
                        anchors.verticalCenter: parent.verticalCenter
                        width: parent.width - card.nameWidth - 3 * card.figureWidth - 4 * parent.spacing
                        height: 8
                        radius: 4
                        color: Theme.palette.neutralFill(0.06)
                        Rectangle {
                            objectName: "insights.tasks.row." + index + ".bar"
                            width: parent.width * modelData.fraction
                            height: parent.height
                            radius: 4
                            color: Theme.mint
                        }
                    }
                    Cell { anchors.verticalCenter: parent.verticalCenter; text: modelData.minutes }
                    Cell { anchors.verticalCenter: parent.verticalCenter; text: modelData.sessions }
                    Cell { anchors.verticalCenter: parent.verticalCenter; text: modelData.rating }
                }
            }

            QuillText {
                objectName: "insights.tasks.footnote"
                visible: text !== ""
                text: card.vm.taskFootnote
                font.pixelSize: 10
                color: Theme.secondaryText
            }
        }
    }
}
