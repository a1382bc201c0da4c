import QtQuick
import Quillmere

// Eyebrow in capitals, large title, optional subtitle.
Column {
    id: heading
    property string eyebrow
    property string title
    property string subtitle: ""
    spacing: 4

    QuillText {
        objectName: heading.objectName + ".eyebrow"
        text: heading.eyebrow
        font.capitalization: Font.AllUppercase
        font.pixelSize: 11
        font.weight: Font.Bold
        font.letterSpacing: 1.4
        color: Theme.mint
    }
    QuillText {
        objectName: heading.objectName + ".title"
        text: heading.title
        font.pixelSize: 28
        font.weight: Font.Bold
        color: Theme.primaryText
    }
    QuillText {
        objectName: heading.objectName + ".subtitle"
        visible: heading.subtitle !== ""
        text: heading.subtitle
        font.pixelSize: 13
        color: Theme.secondaryText
    }
}
