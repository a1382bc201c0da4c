import QtQuick
import QtQuick.Window
import Quillmere

// The countdown ring: a hairline track, a faint glow of the phase tint and the gradient arc
// from 12 o'clock. Repainted only when the arc's end moves by a device pixel or a colour
// changes: in a 50-minute round that is every few seconds, not at every step. Each repaint
// strokes the whole ring and its glow, which is most of a shown round's cost.
Canvas {
    id: ring
    property real progress: 1.0
    readonly property real radius: Math.min(width, height) / 2 - lineWidth / 2 - 12
    readonly property real drawnProgress: {
        var steps = Math.max(1, Math.round(2 * Math.PI * radius * Screen.devicePixelRatio));
        return Math.round(Math.max(0, Math.min(1, progress)) * steps) / steps;
    }
    property real lineWidth: 17
    property color glowTint: Theme.mint
    property color trackColor: Theme.hairline
    property color startColor: Theme.mint
    property color middleColor: Theme.mintBright
    property color endColor: Theme.blue

    onDrawnProgressChanged: requestPaint()
    onGlowTintChanged: requestPaint()
    onTrackColorChanged: requestPaint()
    onStartColorChanged: requestPaint()
    onWidthChanged: requestPaint()
    onHeightChanged: requestPaint()

    onPaint: {
        var ctx = getContext("2d");
        ctx.reset();
        var cx = width / 2, cy = height / 2;
        var r = radius;
        var start = -Math.PI / 2;
        var end = start + 2 * Math.PI * drawnProgress;

        ctx.lineWidth = lineWidth;
        ctx.lineCap = "butt";
        ctx.strokeStyle = trackColor;
        ctx.beginPath();
        ctx.arc(cx, cy, r, 0, 2 * Math.PI, false);
        ctx.stroke();

        // The glow: faint strokes, each 6 px wider than the last, add up to a soft edge that
        // fades over the 12 px left around the ring. A canvas shadow blur looks the same but
        // blurs the whole canvas at every repaint: most of the first frame's time, and again
        // every second of a round.
        ctx.lineCap = "round";
        ctx.strokeStyle = Theme.alpha(glowTint, 0.03);
        for (var spread = 12; spread > 0; spread -= 3) {
            ctx.lineWidth = lineWidth + 2 * spread;
            ctx.beginPath();
            ctx.arc(cx, cy, r, start, end, false);
            ctx.stroke();
        }
        ctx.lineWidth = lineWidth;

        // The conical gradient runs counter-clockwise, so its stops are listed in reverse
        // to read mint → bright mint → blue clockwise from the top. Its seam sits a little
        // left of the top so the round cap at the start is drawn in the start colour.
        var gradient = ctx.createConicalGradient(cx, cy, Math.PI / 2 + 0.12);
        gradient.addColorStop(0.0, endColor);
        gradient.addColorStop(0.5, middleColor);
        gradient.addColorStop(1.0, startColor);
        ctx.lineCap = "round";
        ctx.strokeStyle = gradient;
        ctx.beginPath();
        ctx.arc(cx, cy, r, start, end, false);
        ctx.stroke();
    }
}
