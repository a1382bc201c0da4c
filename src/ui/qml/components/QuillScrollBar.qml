import QtQuick
import QtQuick.Templates as T
import Quillmere

// The screens' vertical scroll bar: a slim rounded handle that shows while the content
// moves or the pointer is on it, then fades.
T.ScrollBar {
    id: control
    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                             implicitContentHeight + topPadding + bottomPadding)
    padding: 2
    policy: T.ScrollBar.AsNeeded
    visible: policy !== T.ScrollBar.AlwaysOff
    minimumSize: orientation === Qt.Horizontal ? height / width : width / height

    contentItem: Rectangle {
        implicitWidth: control.interactive ? 6 : 2
        implicitHeight: control.interactive ? 6 : 2
        radius: width / 2
        color: Theme.palette.neutralFill(control.pressed ? 0.5 : 0.32)
        opacity: 0.0
        states: State {
            name: "Shown"
            when: control.policy === T.ScrollBar.AlwaysOn || (control.active && control.size < 1.0)
            PropertyChanges { target: control.contentItem; opacity: 0.75 }
        }
        transitions: Transition {
            from: "Shown"
            SequentialAnimation {
                PauseAnimation { duration: 450 }
                NumberAnimation { target: control.contentItem; property: "opacity"; to: 0.0; duration: 200 * Theme.motion }
            }
        }
    }
}
