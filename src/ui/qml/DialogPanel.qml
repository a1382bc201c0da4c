import QtQuick
import Quillmere

// The material-like panel of the dialogs: near-opaque background, hairline, soft shadow.
Item {
    id: panel
    property real padding: 26
    property real radius: 22
    default property alias content: inner.data
    implicitHeight: inner.childrenRect.height + 2 * padding

    Rectangle {
        // Soft shadow: a few widening, fading outlines under the panel.
        anchors.fill: parent
        anchors.margins: -6
        anchors.topMargin: 2
        radius: panel.radius + 6
        color: Theme.alpha("#000000", 0.08)
    }
    Rectangle {
        anchors.fill: parent
        anchors.margins: -2
        anchors.topMargin: 4
        radius: panel.radius + 2
        color: Theme.alpha("#000000", 0.14)
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
