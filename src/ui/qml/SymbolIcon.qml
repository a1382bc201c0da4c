import QtQuick
import QtQuick.Window
import Quillmere

// One symbol from the mapping table, drawn with the icon font, or for the few symbols the
// font has no fitting glyph for, from a small drawing in the same box and colour.
Text {
    id: icon
    property string name: ""
    property real size: 13
    readonly property string drawing: Symbols.svg(name, color)
    // A drawn symbol keeps the glyph for its box, painted fully transparent.
    text: drawing === "" ? Symbols.glyph(name)
                         : "<font color=\"#00000000\">" + Symbols.glyph(name) + "</font>"
    textFormat: drawing === "" ? Text.PlainText : Text.StyledText
    font.family: Symbols.fontFamily
    font.pixelSize: size
    color: Theme.primaryText
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
    Accessible.ignored: true

    Image {
        visible: icon.drawing !== ""
        anchors.centerIn: parent
        width: icon.size
        height: icon.size
        sourceSize.width: Math.ceil(icon.size * Screen.devicePixelRatio)
        sourceSize.height: Math.ceil(icon.size * Screen.devicePixelRatio)
        source: visible ? "data:image/svg+xml;utf8," + encodeURIComponent(icon.drawing) : ""
        smooth: true
    }
}
