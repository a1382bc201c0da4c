import QtQuick
import Quillmere

// One-click logging of mind-wandering and fatigue while a round runs.
QuillCard {
    id: card
    required property FocusViewModel vm
    padding: 20
    implicitHeight: body.implicitHeight + 2 * padding

    Column {
        id: body
        width: parent.width
        spacing: 14

        Column {
            spacing: 4
            QuillText {
                text: "注意力掉线了？"
                font.pixelSize: 15
                font.weight: Font.DemiBold
                color: Theme.primaryText
            }
            QuillText {
                text: "点一下即可，不评价自己。越诚实的数据，越能看清你的节律。"
                font.pixelSize: 11
                color: Theme.secondaryText
            }
        }
        Row {
            width: parent.width
            spacing: 12
            LiveSignalButton {
                objectName: "focus.signal.wander"
                width: (parent.width - parent.spacing) / 2
                text: "我走神了"
                countText: card.vm.wanderCountText
                symbol: "scope"
                tint: Theme.coral
                enabled: card.vm.signalsEnabled
                onClicked: card.vm.recordMindWander()
            }
            LiveSignalButton {
                objectName: "focus.signal.fatigue"
                width: (parent.width - parent.spacing) / 2
                text: "我开始累了"
                countText: card.vm.fatigueCountText
                symbol: "battery.25"
                tint: Theme.amber
                enabled: card.vm.signalsEnabled
                onClicked: card.vm.recordFatigue()
            }
        }
    }
}
