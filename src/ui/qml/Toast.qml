import QtQuick
import Quillmere

// The one transient message: a capsule that slides in from the top edge and fades.
Rectangle {
    id: toast
    required property ShellViewModel shell
    readonly property bool shown: shell.toastVisible
    y: shown ? 12 : -height - 4
    opacity: shown ? 1 : 0
    visible: shown || opacity > 0
    width: row.implicitWidth + 32
    height: row.implicitHeight + 22
    radius: height / 2
    // Opaque: the message reads the same over any screen.
    color: Theme.floatingFill
    border.width: 1
    border.color: Theme.hairline
    Accessible.role: Accessible.AlertMessage
    Accessible.name: shell.toastText

    Behavior on y { NumberAnimation { duration: 220 * Theme.motion; easing.type: Easing.InOutQuad } }
    Behavior on opacity { NumberAnimation { duration: 220 * Theme.motion; easing.type: Easing.InOutQuad } }

    SoftShadow {
        anchors.fill: parent
        radius: parent.radius
        spread: 10
        offsetY: 3
        strength: 0.7
    }

    Row {
        id: row
        anchors.centerIn: parent
        spacing: 9
        SymbolIcon {
            name: "checkmark.circle.fill"
            size: 14
            color: Theme.mint
            anchors.verticalCenter: parent.verticalCenter
        }
        QuillText {
            objectName: "toast.text"
            text: toast.shell.toastText
            font.pixelSize: 13
            font.weight: Font.Medium
            color: Theme.primaryText
            anchors.verticalCenter: parent.verticalCenter
        }
    }
}
