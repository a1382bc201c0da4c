import QtQuick
import Quillmere

// The shared card: padded content on the panel fill, radius 22, a hairline outline.
Rectangle {
    id: card
    property real padding: 18
    property bool strong: false
    default property alias content: inner.data
    implicitWidth: inner.childrenRect.width + 2 * padding
    implicitHeight: inner.childrenRect.height + 2 * padding
    radius: 22
    color: strong ? Theme.panelStrong : Theme.panel
    border.width: 1
    border.color: Theme.hairline

    Item {
        id: inner
        anchors.fill: parent
        anchors.margins: card.padding
    }
}
