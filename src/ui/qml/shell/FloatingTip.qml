import QtQuick
import QtQuick.Window
import Quillmere

// The tip of a floating-panel button, in a small window of its own just outside the panel:
// the panel holds nothing but the countdown and its buttons, so a tip inside it would cover
// one of them. Below the panel, or above it where the screen ends. Built when first wanted.
Loader {
    id: lazy
    property string text
    property bool shown: false
    required property Item owner
    property int delay: Theme.motion > 0 ? 600 : 0
    visible: false
    width: 0
    height: 0
    active: (shown && text !== "") || status !== Loader.Null

    sourceComponent: Window {
        id: tip
        objectName: lazy.owner.objectName + ".tip"
        flags: Qt.ToolTip | Qt.FramelessWindowHint | Qt.WindowDoesNotAcceptFocus
        transientParent: lazy.owner.Window.window
        color: "transparent"
        width: label.width + 20
        height: label.implicitHeight + 12
        visible: false

        function place() {
            // The panel's window keeps a margin for its shadow around the visible body.
            const panel = lazy.owner.Window.window;
            const margin = panel.margin || 0;
            const below = panel.y + panel.height - margin + 6;
            const at = lazy.owner.mapToGlobal(0, 0);
            x = Math.round(Math.max(Screen.virtualX, at.x + (lazy.owner.width - width) / 2));
            y = below + height <= Screen.virtualY + Screen.height ? below
                                                                    : panel.y + margin - height - 6;
            visible = true;
        }
        function update() {
            wait.stop();
            if (!lazy.shown || lazy.text === "")
                visible = false;
            else if (lazy.delay > 0)
                wait.start();
            else
                place();
        }
        Component.onCompleted: update()
        Connections {
            target: lazy
            function onShownChanged() { tip.update() }
        }
        Timer { id: wait; interval: lazy.delay; onTriggered: tip.place() }

        Rectangle {
            anchors.fill: parent
            radius: 8
            color: Theme.floatingFill
            border.width: 1
            border.color: Theme.hairline
            QuillText {
                id: label
                anchors.centerIn: parent
                width: Math.min(implicitWidth, 280)
                text: lazy.text
                font.pixelSize: 12
                color: Theme.primaryText
                wrapMode: Text.WordWrap
            }
        }
    }
}
