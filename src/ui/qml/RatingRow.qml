import QtQuick
import QtQuick.Controls.Basic
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
    spacing: 8

    Text {
        text: row.title
        font.pixelSize: 12
        font.weight: Font.DemiBold
        color: Theme.primaryText
    }
    Item {
        width: parent.width
        height: 28
        Text {
            id: lowLabel
            anchors.left: parent.left
            anchors.verticalCenter: parent.verticalCenter
            width: 30
            text: row.low
            font.pixelSize: 9
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
                model: 5
                delegate: AbstractButton {
                    id: segment
                    required property int index
                    readonly property int level: index + 1
                    objectName: row.objectName + "." + level
                    width: (parent.width - 4 * parent.spacing) / 5
                    height: parent.height
                    Accessible.role: Accessible.Button
                    Accessible.name: row.title + " " + level
                    onClicked: row.chosen(level)
                    background: Rectangle {
                        radius: 8
                        color: segment.level <= row.value ? row.tint : Theme.palette.neutralFill(0.07)
                        Behavior on color { ColorAnimation { duration: 120 * Theme.motion } }
                    }
                }
            }
        }
        Text {
            id: highLabel
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            width: 30
            horizontalAlignment: Text.AlignRight
            text: row.high
            font.pixelSize: 9
            color: Theme.secondaryText
        }
    }
}
