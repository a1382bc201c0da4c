import QtQuick
import Quillmere

// One sound: the clickable first row toggles it in the mix; the slider sets its volume.
Rectangle {
    id: tile
    required property AmbientCardViewModel card
    required property string raw
    required property string title
    required property string subtitle
    required property string symbol
    required property string tint
    required property bool selected
    required property real volume
    required property string help
    readonly property color tintColor: Theme.palette.tint(tint)
    objectName: "ambient.tile." + raw
    implicitHeight: column.implicitHeight + 24
    radius: 14
    color: selected ? Theme.alpha(tintColor, 0.09)
                    : Theme.palette.adaptive(0xFFFFFF, 0x14211C, 0.035, 0.02975)
    border.width: 1
    border.color: selected ? Theme.alpha(tintColor, 0.35) : Theme.hairline
    Behavior on color { ColorAnimation { duration: 150 * Theme.motion; easing.type: Easing.OutQuad } }
    Behavior on border.color { ColorAnimation { duration: 150 * Theme.motion; easing.type: Easing.OutQuad } }

    Column {
        id: column
        x: 12
        y: 12
        width: parent.width - 24
        spacing: 10

        QuillButtonBase {
            id: toggle
            objectName: tile.objectName + ".toggle"
            width: parent.width
            height: top.implicitHeight
            Accessible.role: Accessible.Button
            Accessible.name: tile.title + "，" + tile.help
            Accessible.description: tile.subtitle
            // Four tiles to a row leave the subtitle one short line; the tooltip on hover reads
            // it in full. Keyboard focus shows none: it would cover the tiles below, and the
            // full subtitle is the control's description.
            QuillToolTip {
                text: tile.title + " · " + tile.subtitle + "\n" + tile.help
                shown: toggle.hovered
            }
            hoverEnabled: true
            onClicked: tile.card.toggleSound(tile.raw)
            background: Item {
                FocusRing { control: toggle; baseRadius: 10; gap: 3 }
            }
            // Narrow tiles stack the symbol above the texts; the check sits in the corner.
            contentItem: Column {
                id: top
                spacing: 6
                Item {
                    width: parent.width
                    height: 30
                    Rectangle {
                        width: 30
                        height: 30
                        radius: 15
                        color: tile.selected ? Theme.alpha(tile.tintColor, toggle.hovered ? 0.24 : 0.16)
                                             : Theme.alpha(Theme.secondaryText, toggle.hovered ? 0.14 : 0.08)
                        SymbolIcon {
                            anchors.centerIn: parent
                            name: tile.symbol
                            size: 13
                            font.weight: Font.DemiBold
                            color: tile.selected ? tile.tintColor : Theme.secondaryText
                        }
                    }
                    SymbolIcon {
                        objectName: tile.objectName + ".check"
                        anchors.right: parent.right
                        anchors.top: parent.top
                        visible: tile.selected
                        name: "checkmark.circle.fill"
                        size: 12
                        color: tile.tintColor
                    }
                }
                QuillText {
                    width: parent.width
                    text: tile.title
                    font.pixelSize: 12
                    font.weight: Font.DemiBold
                    color: Theme.primaryText
                    elide: Text.ElideRight
                }
                QuillText {
                    objectName: tile.objectName + ".subtitle"
                    width: parent.width
                    text: tile.subtitle
                    font.pixelSize: Math.max(9, Theme.smallTextMinimum)
                    color: Theme.secondaryText
                    elide: Text.ElideRight
                    maximumLineCount: 1
                }
            }
        }

        QuillSlider {
            objectName: tile.objectName + ".volume"
            width: parent.width
            tint: tile.tintColor
            trackHeight: 2
            handleSize: 10
            value: tile.volume
            enabled: tile.selected
            opacity: tile.selected ? 1.0 : 0.35
            Accessible.name: tile.title + "音量"
            onMoved: tile.card.setVolume(tile.raw, value)
        }
    }
}
