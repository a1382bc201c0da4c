import QtQuick
import Quillmere

// A modal confirmation over a screen: scrim, icon, title, message and two buttons, the
// confirming one destructive. The owner decides what `shown` follows. While shown it holds
// the keyboard; Escape cancels.
Item {
    id: layer
    property bool shown: false
    property string title
    property string message
    property string confirmText
    property string cancelText: "取消"
    property string symbol: "trash.fill"
    signal confirmed()
    signal cancelled()

    anchors.fill: parent
    z: 60
    opacity: shown ? 1 : 0
    visible: shown || opacity > 0
    enabled: shown
    Behavior on opacity { NumberAnimation { duration: 180 * Theme.motion; easing.type: Easing.OutQuad } }

    // Keyboard stays inside while shown; Escape is the cancel button, as in any alert.
    FocusTrap {
        scope: layer
        active: layer.shown
        initialFocus: cancelButton
        onEscapePressed: layer.cancelled()
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.alpha("#000000", 0.28)
        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.AllButtons
            hoverEnabled: true
            onWheel: (wheel) => wheel.accepted = true
        }
    }

    DialogPanel {
        objectName: layer.objectName + ".panel"
        anchors.centerIn: parent
        width: 390
        height: implicitHeight
        padding: 24
        scale: layer.shown ? 1.0 : 0.96
        Behavior on scale { NumberAnimation { duration: 180 * Theme.motion; easing.type: Easing.OutQuad } }

        Column {
            width: parent.width
            spacing: 16

            Rectangle {
                width: 40
                height: 40
                radius: 20
                color: Theme.alpha(Theme.coral, 0.12)
                SymbolIcon {
                    anchors.centerIn: parent
                    name: layer.symbol
                    size: 18
                    color: Theme.coral
                }
            }
            Column {
                width: parent.width
                spacing: 5
                QuillText {
                    width: parent.width
                    text: layer.title
                    font.pixelSize: 20
                    font.weight: Font.Bold
                    color: Theme.primaryText
                    wrapMode: Text.WordWrap
                }
                QuillText {
                    width: parent.width
                    text: layer.message
                    visible: text.length > 0
                    font.pixelSize: 11
                    color: Theme.secondaryText
                    wrapMode: Text.WordWrap
                }
            }
            Row {
                width: parent.width
                spacing: 10
                QuillSecondaryButton {
                    id: cancelButton
                    objectName: layer.objectName + ".cancel"
                    width: (parent.width - parent.spacing) / 2
                    text: layer.cancelText
                    onClicked: layer.cancelled()
                }
                QuillDestructiveButton {
                    objectName: layer.objectName + ".confirm"
                    width: (parent.width - parent.spacing) / 2
                    text: layer.confirmText
                    symbol: layer.symbol
                    onClicked: layer.confirmed()
                }
            }
        }
    }
}
