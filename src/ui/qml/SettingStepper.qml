import QtQuick
import Quillmere

// A stepper labelled with its value ("3 分钟"), 150 points wide.
Item {
    id: control
    property int value
    property int from
    property int to
    property string label
    property string accessibleName
    signal stepped(int newValue)
    width: 150
    height: 26

    QuillText {
        objectName: control.objectName + ".label"
        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        text: control.label
        font.pixelSize: 12
        font.weight: Font.DemiBold
        color: Theme.primaryText
    }
    QuillStepper {
        objectName: control.objectName + ".stepper"
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        value: control.value
        from: control.from
        to: control.to
        accessibleName: control.accessibleName
        onStepped: (newValue) => control.stepped(newValue)
    }
}
