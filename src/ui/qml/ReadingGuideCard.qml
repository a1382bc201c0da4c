import QtQuick
import Quillmere

// How to read the figures: three zones with their colour, and a disclaimer.
QuillCard {
    id: card
    padding: 20
    implicitHeight: column.implicitHeight + 2 * padding

    Column {
        id: column
        width: parent.width
        spacing: 14

        InsightCardHeader {
            width: parent.width
            title: "怎么读这些数据"
            subtitle: "重要的不是越久越好"
            symbol: "text.magnifyingglass"
        }

        Repeater {
            model: [
                { tint: "mint", title: "稳定区", text: "评分稳定、走神率下降、结束时仍有余力。可以小幅增加时长。" },
                { tint: "amber", title: "训练边缘", text: "后半程更费力，但仍能完成且次日状态正常。先保持，不急着加量。" },
                { tint: "coral", title: "恢复信号", text: "走神突然变多、精力连续下降或烦躁，优先检查睡眠、压力与任务难度。" }
            ]
            Item {
                width: column.width
                height: entry.implicitHeight
                Accessible.role: Accessible.StaticText
                Accessible.name: modelData.title + "：" + modelData.text
                Rectangle {
                    width: 4
                    height: parent.height
                    radius: 2
                    color: Theme.palette.tint(modelData.tint)
                }
                Column {
                    id: entry
                    x: 14
                    width: parent.width - 14
                    spacing: 3
                    QuillText {
                        text: modelData.title
                        font.pixelSize: 12
                        font.weight: Font.Bold
                        color: Theme.primaryText
                    }
                    QuillText {
                        width: parent.width
                        text: modelData.text
                        font.pixelSize: 11
                        color: Theme.secondaryText
                        wrapMode: Text.WordWrap
                        lineHeight: 1.15
                    }
                }
            }
        }

        QuillText {
            width: parent.width
            text: "这里是个人训练记录，不是医学诊断。若注意力变化持续影响生活，值得咨询专业人士。"
            font.pixelSize: 10
            color: Theme.secondaryText
            opacity: 0.75
            wrapMode: Text.WordWrap
        }
    }
}
