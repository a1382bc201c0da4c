import QtQuick
import QtQuick.Templates as T
import Quillmere

// A small switch with its title at the left.
T.Switch {
    id: control
    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             implicitContentHeight + topPadding + bottomPadding,
                             implicitIndicatorHeight + topPadding + bottomPadding)
    spacing: 6
    padding: 0
    Accessible.name: text
    // A screen reader's "press" or "toggle", and Return, flip it as a click does.
    Accessible.onPressAction: flip()
    Accessible.onToggleAction: flip()
    Keys.onReturnPressed: flip()
    Keys.onEnterPressed: flip()
    function flip() {
        if (!enabled)
            return
        toggle()
        toggled()
        clicked()
    }
    // Controls start from the platform's font, not the app's.
    font.family: Qt.application.font.family
    font.pixelSize: 11
    font.weight: Font.Medium

    hoverEnabled: true
    indicator: Rectangle {
        FocusRing { control: control; baseRadius: parent.radius }
        x: control.width - width
        anchors.verticalCenter: parent.verticalCenter
        width: 30
        height: 17
        radius: height / 2
        // Off, the track is a faint fill; its outline keeps the control at 3:1 on any card.
        border.width: control.checked ? 0 : 1
        border.color: Theme.secondaryText
        color: control.checked ? (control.hovered ? Qt.lighter(Theme.mint, 1.06) : Theme.mint)
                               : Theme.palette.neutralFill(control.hovered ? 0.22 : 0.16)
        Behavior on color { ColorAnimation { duration: 120 * Theme.motion } }
        Rectangle {
            x: control.checked ? parent.width - width - 2 : 2
            anchors.verticalCenter: parent.verticalCenter
            width: 13
            height: 13
            radius: width / 2
            color: "#FFFFFF"
            Behavior on x { NumberAnimation { duration: 120 * Theme.motion; easing.type: Easing.OutQuad } }
        }
    }
    contentItem: QuillText {
        rightPadding: control.indicator.width + control.spacing
        text: control.text
        font: control.font
        color: Theme.primaryText
        verticalAlignment: Text.AlignVCenter
    }
}
