import QtQuick
import QtQuick.Templates as T
import Quillmere

// The task picker: the chosen entry on the neutral fill, the list in a themed popup.
T.ComboBox {
    id: box
    implicitWidth: Math.max(implicitBackgroundWidth + leftInset + rightInset,
                            implicitContentWidth + leftPadding + rightPadding)
    implicitHeight: 36
    // The chevron's room, kept out of the text's box as well.
    leftPadding: padding + (!mirrored || !indicator || !indicator.visible ? 0 : indicator.width + spacing)
    rightPadding: padding + (mirrored || !indicator || !indicator.visible ? 0 : indicator.width + spacing)
    // Controls start from the platform's font, not the app's.
    font.family: Qt.application.font.family
    font.pixelSize: 13
    opacity: enabled ? 1.0 : 0.45
    Accessible.name: displayText
    // A symbol drawn before an entry, by the entry's text (the random choice's shuffle).
    property var optionSymbols: ({})

    hoverEnabled: true
    background: Rectangle {
        radius: 10
        color: Theme.palette.neutralFill(box.pressed ? 0.09 : box.hovered ? 0.075 : 0.055)
        border.width: 1
        border.color: Theme.hairline
        FocusRing { control: box; baseRadius: 10 }
    }
    contentItem: QuillText {
        leftPadding: 10
        rightPadding: box.indicator.width + 6
        text: box.displayText
        font: box.font
        color: Theme.primaryText
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
    indicator: SymbolIcon {
        x: box.width - width - 8
        anchors.verticalCenter: parent.verticalCenter
        name: "chevron.right"
        rotation: 90
        size: 14
        color: Theme.secondaryText
    }
    delegate: T.ItemDelegate {
        id: option
        required property var modelData
        required property int index
        width: box.width
        height: 32
        highlighted: box.highlightedIndex === index
        padding: 12
        spacing: 8
        Accessible.name: modelData
        contentItem: Row {
            spacing: 6
            SymbolIcon {
                id: optionSymbol
                anchors.verticalCenter: parent.verticalCenter
                visible: name !== ""
                name: box.optionSymbols[option.modelData] || ""
                size: 12
                color: Theme.secondaryText
            }
            QuillText {
                width: parent.width - (optionSymbol.visible ? optionSymbol.width + parent.spacing : 0)
                anchors.verticalCenter: parent.verticalCenter
                text: option.modelData
                font.pixelSize: 13
                color: Theme.primaryText
                elide: Text.ElideRight
            }
        }
        background: Rectangle {
            radius: 7
            color: option.highlighted ? Theme.alpha(Theme.mint, 0.18) : "transparent"
        }
    }
    popup: T.Popup {
        y: box.height + 4
        width: box.width
        implicitHeight: Math.min(list.contentHeight + 12, 260)
        padding: 6
        background: Rectangle {
            radius: 12
            SoftShadow { anchors.fill: parent; radius: parent.radius; spread: 8; offsetY: 3; strength: 0.7 }
            color: Theme.background
            border.width: 1
            border.color: Theme.hairline
        }
        contentItem: ListView {
            id: list
            clip: true
            implicitHeight: contentHeight
            model: box.popup.visible ? box.delegateModel : null
            currentIndex: box.highlightedIndex
        }
    }
}
