import QtQuick
import QtQuick.Controls.Basic
import Quillmere

// A plain text field on the neutral fill.
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
    background: Rectangle {
        radius: field.radius
        color: Theme.palette.neutralFill(0.055)
        border.width: 1
        border.color: field.activeFocus ? Theme.alpha(Theme.mint, 0.6) : Theme.hairline
    }
}
