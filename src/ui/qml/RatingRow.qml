import QtQuick
import Quillmere

// A 1–5 rating as five segments between a low and a high label.
Column {
    id: row
    property string title
    property int value: 1
    property string low
    property string high
    property color tint: Theme.mint
    signal chosen(int newValue)
    // The segment of the shown rating: where the keyboard starts, so a reflexive Space
    // keeps what is shown.
    readonly property Item chosenSegment: segments.count === 5 ? segments.itemAt(value - 1) : null
    spacing: 8

    QuillText {
        text: row.title
        font.pixelSize: 12
        font.weight: Font.DemiBold
        color: Theme.primaryText
    }
    Item {
        width: parent.width
        height: 28
        QuillText {
            id: lowLabel
            anchors.left: parent.left
            anchors.verticalCenter: parent.verticalCenter
            width: 30
            text: row.low
            font.pixelSize: Math.max(9, Theme.smallTextMinimum)
            color: Theme.secondaryText
        }
        Row {
            anchors.left: lowLabel.right
            anchors.leftMargin: 8
            anchors.right: highLabel.left
            anchors.rightMargin: 8
            height: parent.height
            spacing: 6
            Repeater {
                id: segments
                model: 5
                delegate: QuillButtonBase {
                    id: segment
                    required property int index
                    readonly property int level: index + 1
                    objectName: row.objectName + "." + level
                    width: (parent.width - 4 * parent.spacing) / 5
                    height: parent.height
                    Accessible.role: Accessible.Button
                    Accessible.name: row.title + " " + level
                    onClicked: row.chosen(level)
                    hoverEnabled: true
                    background: Rectangle {
                        radius: 8
                        color: segment.level <= row.value
                               ? (segment.pressed ? Theme.alpha(row.tint, 0.78) : row.tint)
                               : Theme.palette.neutralFill(segment.pressed ? 0.13
                                                           : segment.hovered ? 0.11 : 0.07)
                        Behavior on color { ColorAnimation { duration: 120 * Theme.motion } }
                        FocusRing { control: segment; baseRadius: 8 }
                    }
                }
            }
        }
        QuillText {
            id: highLabel
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            width: 30
            horizontalAlignment: Text.AlignRight
            text: row.high
            font.pixelSize: Math.max(9, Theme.smallTextMinimum)
            color: Theme.secondaryText
        }
    }
}
