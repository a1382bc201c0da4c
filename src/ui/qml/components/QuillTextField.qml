import QtQuick
import QtQuick.Templates as T
import Quillmere

// A plain text field on the neutral fill. Focus (from keyboard or click, since typing goes
// there either way) draws the ring colour as its outline.
T.TextField {
    id: field
    property real radius: 10
    implicitWidth: implicitBackgroundWidth + leftInset + rightInset
                   || Math.max(contentWidth, placeholder.implicitWidth) + leftPadding + rightPadding
    implicitHeight: 36
    padding: 6
    verticalAlignment: TextInput.AlignVCenter
    // Controls start from the platform's font, not the app's.
    font.family: Qt.application.font.family
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
    Text {
        id: placeholder
        x: field.leftPadding
        y: field.topPadding
        width: field.width - (field.leftPadding + field.rightPadding)
        height: field.height - (field.topPadding + field.bottomPadding)
        text: field.placeholderText
        font: field.font
        color: field.placeholderTextColor
        verticalAlignment: field.verticalAlignment
        elide: Text.ElideRight
        visible: !field.length && !field.preeditText
                 && (!field.activeFocus || field.horizontalAlignment !== Qt.AlignHCenter)
        Accessible.ignored: true
    }
    background: Rectangle {
        radius: field.radius
        color: Theme.palette.neutralFill(field.enabled ? (field.hovered && !field.activeFocus ? 0.075 : 0.055)
                                                       : 0.03)
        border.width: field.activeFocus ? 2 : 1
        border.color: field.activeFocus ? Theme.focusRing
                    : field.enabled ? Theme.hairline : "transparent"
    }
}
