import QtQuick
import QtQuick.Controls.Basic
import Quillmere

// A plain text field on the neutral fill. Focus (from keyboard or click, since typing goes
// there either way) draws the ring colour as its outline.
TextField {
    id: field
    property real radius: 10
    implicitHeight: 36
    font.pixelSize: 13
    color: Theme.primaryText
    placeholderTextColor: Theme.secondaryText
    selectionColor: Theme.alpha(Theme.mint, 0.4)
    selectedTextColor: Theme.primaryText
    leftPadding: 10
    rightPadding: 10
    Accessible.name: placeholderText
    // Locked fields fade like the other locked controls and drop their outline.
    opacity: enabled ? 1.0 : 0.45
    hoverEnabled: true
    background: Rectangle {
        radius: field.radius
        color: Theme.palette.neutralFill(field.enabled ? (field.hovered && !field.activeFocus ? 0.075 : 0.055)
                                                       : 0.03)
        border.width: field.activeFocus ? 2 : 1
        border.color: field.activeFocus ? Theme.focusRing
                    : field.enabled ? Theme.hairline : "transparent"
    }
}
