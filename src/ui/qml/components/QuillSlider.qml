import QtQuick
import QtQuick.Templates as T
import Quillmere

// A slim 0…1 slider in a tint.
T.Slider {
    id: slider
    property color tint: Theme.mint
    property real trackHeight: 3
    property real handleSize: 12
    from: 0
    to: 1
    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitHandleWidth + leftPadding + rightPadding)
    implicitHeight: handleSize + 6
    padding: 0

    background: Rectangle {
        x: slider.leftPadding
        y: slider.topPadding + slider.availableHeight / 2 - height / 2
        width: slider.availableWidth
        height: slider.trackHeight
        radius: height / 2
        color: Theme.palette.neutralFill(0.09)
        Rectangle {
            width: slider.visualPosition * parent.width
            height: parent.height
            radius: height / 2
            color: slider.tint
        }
    }
    hoverEnabled: true
    handle: Rectangle {
        FocusRing { control: slider; baseRadius: parent.radius }
        x: slider.leftPadding + slider.visualPosition * (slider.availableWidth - width)
        y: slider.topPadding + slider.availableHeight / 2 - height / 2
        width: slider.handleSize
        height: slider.handleSize
        radius: width / 2
        color: "#FFFFFF"
        border.width: slider.hovered || slider.pressed ? 2 : 1
        border.color: Theme.alpha(slider.tint, slider.pressed ? 0.9 : 0.6)
    }
}
