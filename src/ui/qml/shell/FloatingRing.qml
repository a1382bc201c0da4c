import QtQuick
import QtQuick.Window
import Quillmere

// The floating panel's small ring: a 5-point track, the arc from 12 o'clock with round
// caps, and the status symbol in its centre. Like the main ring, it repaints only when the
// arc's end moves by a device pixel or a colour changes, not at every step.
Item {
    id: ring
    property real progress: 0.02
    property color tint: Theme.mint
    property string symbol: "leaf.fill"
    readonly property color trackColor: Theme.palette.neutralFill(0.09)
    readonly property real radius: Math.min(width, height) / 2 - 3.5
    readonly property real drawnProgress: {
        var steps = Math.max(1, Math.round(2 * Math.PI * radius * Screen.devicePixelRatio));
        return Math.round(Math.max(0, Math.min(1, progress)) * steps) / steps;
    }

    Canvas {
        id: canvas
        anchors.fill: parent
        onPaint: {
            var ctx = getContext("2d");
            ctx.reset();
            var r = ring.radius;
            ctx.lineWidth = 5;
            ctx.lineCap = "butt";
            ctx.strokeStyle = ring.trackColor;
            ctx.beginPath();
            ctx.arc(width / 2, height / 2, r, 0, 2 * Math.PI, false);
            ctx.stroke();
            ctx.lineCap = "round";
            ctx.strokeStyle = ring.tint;
            ctx.beginPath();
            ctx.arc(width / 2, height / 2, r, -Math.PI / 2, -Math.PI / 2 + 2 * Math.PI * ring.drawnProgress, false);
            ctx.stroke();
        }
    }
    onDrawnProgressChanged: canvas.requestPaint()
    onTintChanged: canvas.requestPaint()
    onTrackColorChanged: canvas.requestPaint()
    onRadiusChanged: canvas.requestPaint()

    SymbolIcon {
        anchors.centerIn: parent
        name: ring.symbol
        size: 14
        color: ring.tint
    }
}
