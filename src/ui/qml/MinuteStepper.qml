import QtQuick
import Quillmere

// A titled minute value with its stepper, for the reminder range.
Column {
    id: block
    property string title
    property int value
    property int from: 1
    property int to: 60
    signal stepped(int newValue)
    spacing: 4

    QuillText {
        text: block.title
        font.pixelSize: Math.max(9, Theme.smallTextMinimum)
        font.weight: Font.DemiBold
        color: Theme.secondaryText
    }
    Row {
        spacing: 8
        Row {
            anchors.verticalCenter: parent.verticalCenter
            spacing: 2
            QuillText {
                id: valueText
                objectName: block.objectName + ".value"
                text: block.value
                font.pixelSize: 18
                font.weight: Font.DemiBold
                color: Theme.primaryText
            }
            QuillText {
                anchors.baseline: valueText.baseline
                text: "分"
                font.pixelSize: 11
                color: Theme.secondaryText
            }
        }
        QuillStepper {
            objectName: block.objectName + ".stepper"
            anchors.verticalCenter: parent.verticalCenter
            accessibleName: block.title
            value: block.value
            from: block.from
            to: block.to
            onStepped: (newValue) => block.stepped(newValue)
        }
    }
}
