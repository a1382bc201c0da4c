import QtQuick
import Quillmere

// One of the timer card's metrics: symbol, title and value.
Row {
    id: metric
    property string symbol
    property string title
    property string caption
    spacing: 8
    Accessible.role: Accessible.StaticText
    Accessible.name: title + " " + caption

    SymbolIcon {
        anchors.verticalCenter: parent.verticalCenter
        name: metric.symbol
        size: 15
        color: Theme.secondaryText
    }
    Column {
        anchors.verticalCenter: parent.verticalCenter
        spacing: 1
        QuillText {
            text: metric.title
            font.pixelSize: Math.max(10, Theme.smallTextMinimum)
            font.weight: Font.Medium
            color: Theme.secondaryText
        }
        QuillText {
            objectName: metric.objectName + ".value"
            text: metric.caption
            font.pixelSize: 13
            font.weight: Font.DemiBold
            color: Theme.primaryText
        }
    }
}
