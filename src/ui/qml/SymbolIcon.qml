import QtQuick
import Quillmere

// One symbol from the mapping table, drawn with the icon font.
Text {
    id: icon
    property string name: ""
    property real size: 13
    text: Symbols.glyph(name)
    font.family: Symbols.fontFamily
    font.pixelSize: size
    color: Theme.primaryText
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
    Accessible.ignored: true
}
