import QtQuick
import Quillmere

// The material-like panel of the dialogs: near-opaque background, hairline, soft shadow.
Item {
    id: panel
    property real padding: 26
    property real radius: 22
    default property alias content: inner.data
    implicitHeight: inner.childrenRect.height + 2 * padding

    // A soft, graded shadow (opacity 0.22 in light windows, deeper in dark ones).
    SoftShadow {
        anchors.fill: parent
        radius: panel.radius
    }
    Rectangle {
        anchors.fill: parent
        radius: panel.radius
        color: Theme.background
        border.width: 1
        border.color: Theme.hairline
        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: Theme.panel
        }
    }
    MouseArea {
        // Clicks on the panel itself never reach the scrim beneath it.
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
    }
    Item {
        id: inner
        anchors.fill: parent
        anchors.margins: panel.padding
    }
}
