import QtQuick
import Quillmere

// A soft drop shadow behind a rounded shape: concentric rings whose opacity falls off
// smoothly, so the edge fades instead of stepping. Cheap in the software renderer: a few
// rounded rectangles, no offscreen pass. Sits behind its siblings.
Item {
    id: shadow
    property real radius: 22
    // How far the shadow reaches beyond the shape.
    property real spread: 18
    property real offsetY: 6
    // Scales the theme's shadow opacity (1 = the dialogs' shadow).
    property real strength: 1.0
    readonly property int rings: 9
    z: -1

    Repeater {
        model: shadow.rings
        Rectangle {
            required property int index
            // Ring 0 is the outermost and faintest.
            readonly property real inset: shadow.spread * index / shadow.rings
            readonly property real t: (index + 1) / shadow.rings
            x: -shadow.spread + inset
            y: -shadow.spread + inset + shadow.offsetY
            width: shadow.width + 2 * (shadow.spread - inset)
            height: shadow.height + 2 * (shadow.spread - inset)
            radius: shadow.radius + shadow.spread - inset
            antialiasing: true
            // Each ring adds a little; stacked, the opacity rises along a smooth curve.
            color: Theme.alpha(Theme.shadow, shadow.strength * 0.55 * t * t / shadow.rings * 2)
        }
    }
}
