import QtQuick
import Quillmere

// One symbol from the mapping table, drawn with the icon font, or for the few symbols the
// font has no fitting glyph for, by a drawing in the same box and colour.
Text {
    id: icon
    property string name: ""
    property real size: 13
    readonly property bool drawn: Symbols.isDrawn(name)
    // A drawn symbol keeps the glyph for its box, painted fully transparent.
    text: drawn ? "<font color=\"#00000000\">" + Symbols.glyph(name) + "</font>"
                : Symbols.glyph(name)
    textFormat: drawn ? Text.StyledText : Text.PlainText
    font.family: Symbols.fontFamily
    font.pixelSize: size
    color: Theme.primaryText
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
    Accessible.ignored: true

    Loader {
        active: icon.drawn
        anchors.centerIn: parent
        sourceComponent: SymbolDrawing {
            width: icon.size
            height: icon.size
            name: icon.name
            color: icon.color
        }
    }
}
