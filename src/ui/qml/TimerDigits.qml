import QtQuick

// Text whose digits each sit in a cell as wide as the widest digit, so a counting
// timer never shifts sideways; this Qt has no font-feature switch for tabular figures.
Row {
    id: digits
    property string text
    property int pixelSize: 55
    property int weight: Font.Bold
    property color color
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    FontMetrics {
        id: metrics
        font.pixelSize: digits.pixelSize
        font.weight: digits.weight
    }
    readonly property real cellWidth: {
        let widest = 0;
        for (let d = 0; d < 10; ++d)
            widest = Math.max(widest, metrics.advanceWidth(String(d)));
        return Math.ceil(widest);
    }

    Repeater {
        // Keyed by length, so a tick only rebinds the characters that changed.
        model: digits.text.length
        QuillText {
            readonly property string glyph: digits.text.charAt(index)
            text: glyph
            width: glyph >= "0" && glyph <= "9" ? digits.cellWidth : implicitWidth
            horizontalAlignment: Text.AlignHCenter
            font.pixelSize: digits.pixelSize
            font.weight: digits.weight
            color: digits.color
            Accessible.ignored: true
        }
    }
}
