import QtQuick
import Quillmere

// The keyboard focus ring, drawn just outside a control while it has visual focus (focus
// that came from the keyboard, not a click). Place it in the control's background.
Rectangle {
    id: ring
    objectName: "focusRing"
    // The control whose focus it shows.
    property Item control: parent
    property real gap: 2
    property real baseRadius: 10
    anchors.fill: parent
    anchors.margins: -(gap + border.width)
    radius: baseRadius + gap + border.width
    color: "transparent"
    border.width: 2
    border.color: Theme.focusRing
    visible: control && control.visualFocus === true
    antialiasing: true
}
