import QtQuick
import Quillmere

// The floating panel's small ring: a 5-point track, the arc from 12 o'clock with round
// caps, and the status symbol in its centre.
Item {
    id: ring
    property real progress: 0.02
    property color tint: Theme.mint
    property string symbol: "leaf.fill"

    Canvas {
        id: canvas
        anchors.fill: parent
        onPaint: {
            var ctx = getContext("2d");
            ctx.reset();
            var r = Math.min(width, height) / 2 - 3.5;
            ctx.lineWidth = 5;
            ctx.lineCap = "butt";
            ctx.strokeStyle = Theme.palette.neutralFill(0.09);
            ctx.beginPath();
            ctx.arc(width / 2, height / 2, r, 0, 2 * Math.PI, false);
            ctx.stroke();
            ctx.lineCap = "round";
            ctx.strokeStyle = ring.tint;
            ctx.beginPath();
            ctx.arc(width / 2, height / 2, r, -Math.PI / 2, -Math.PI / 2 + 2 * Math.PI * ring.progress, false);
            ctx.stroke();
        }
    }
    onProgressChanged: canvas.requestPaint()
    onTintChanged: canvas.requestPaint()

    SymbolIcon {
        anchors.centerIn: parent
        name: ring.symbol
        size: 14
        color: ring.tint
    }
}
