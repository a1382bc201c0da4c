import QtQuick
import QtQuick.Templates as T
import Quillmere

// The themed tooltip: a small rounded label that appears after the usual hover delay and
// sits below its control (above it near the window's bottom), so it never covers the
// control it describes. Use as `ToolTip` replacement: QuillToolTip { text: ...; shown: hovered }.
// A screen holds dozens and most are never hovered, so each is built the first time it is
// shown; until then it is an empty, invisible item that takes no place in a row.
Loader {
    id: lazy
    property string text
    property bool shown: false
    // The usual hover delay; none where frames are checked one by one.
    property int delay: Theme.motion > 0 ? 700 : 0
    // Below the control, or above it where what lies below is what the control is about.
    property bool above: false
    readonly property Item control: parent
    visible: false
    width: 0
    height: 0
    active: (shown && text !== "") || status !== Loader.Null

    sourceComponent: T.ToolTip {
        id: tip
        parent: lazy.control
        text: lazy.text
        // Made hidden and then bound, so the first showing waits out the delay as well.
        visible: false
        Component.onCompleted: visible = Qt.binding(() => lazy.shown && lazy.text !== "")
        delay: lazy.delay
        timeout: 8000
        // A small gap from the control; ToolTip flips it inside the window if needed.
        x: parent ? (parent.width - width) / 2 : 0
        y: !parent ? 0 : lazy.above ? -height - 6 : parent.height + 6
        implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                                contentWidth + leftPadding + rightPadding)
        implicitHeight: Math.max(implicitBackgroundHeight + topInset + bottomInset,
                                 contentHeight + topPadding + bottomPadding)
        width: Math.min(implicitWidth, 300)
        closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
                     | T.Popup.CloseOnReleaseOutsideParent
        margins: 6
        padding: 0
        topPadding: 6
        bottomPadding: 6
        leftPadding: 10
        rightPadding: 10
        // Controls start from the platform's font, not the app's.
        font.family: Qt.application.font.family
        font.pixelSize: 12

        contentItem: QuillText {
            text: tip.text
            font: tip.font
            color: Theme.primaryText
            wrapMode: Text.WordWrap
        }
        background: Rectangle {
            radius: 8
            color: Theme.floatingFill
            border.width: 1
            border.color: Theme.hairline
            SoftShadow {
                anchors.fill: parent
                radius: parent.radius
                spread: 6
                offsetY: 2
                strength: 0.6
            }
        }
        enter: Transition {
            NumberAnimation { property: "opacity"; from: 0; to: 1; duration: 120 * Theme.motion }
        }
        exit: Transition {
            NumberAnimation { property: "opacity"; from: 1; to: 0; duration: 90 * Theme.motion }
        }
    }
}
