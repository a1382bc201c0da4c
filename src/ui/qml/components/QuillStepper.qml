import QtQuick
import Quillmere

// A compact − / + pair over a range; reports the value it steps to.
Row {
    id: stepper
    property int value
    property int from: 1
    property int to: 100
    property string accessibleName
    signal stepped(int newValue)
    spacing: 2
    opacity: enabled ? 1.0 : 0.45

    Repeater {
        model: [
            { symbol: "minus", delta: -1, name: "减少" },
            { symbol: "plus", delta: 1, name: "增加" }
        ]
        delegate: QuillButtonBase {
            id: step
            required property var modelData
            objectName: stepper.objectName + (modelData.delta < 0 ? ".down" : ".up")
            width: 24
            height: 24
            enabled: modelData.delta < 0 ? stepper.value > stepper.from : stepper.value < stepper.to
            autoRepeat: true
            Accessible.role: Accessible.Button
            Accessible.name: stepper.accessibleName + modelData.name
            onClicked: stepper.stepped(Math.max(stepper.from, Math.min(stepper.to, stepper.value + modelData.delta)))
            hoverEnabled: true
            background: Rectangle {
                radius: 7
                color: Theme.palette.neutralFill(step.pressed ? 0.13 : step.hovered ? 0.1 : 0.07)
                border.width: 1
                border.color: Theme.hairline
                FocusRing { control: step; baseRadius: 7 }
            }
            contentItem: SymbolIcon {
                name: step.modelData.symbol
                size: 13
                color: step.enabled ? Theme.primaryText : Theme.secondaryText
            }
        }
    }
}
