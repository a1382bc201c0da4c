import QtQuick
import Quillmere

// One stored round in the history: date block, length with task chip and status badge,
// start time, four small figures and the note. A right click asks for its context menu.
Rectangle {
    id: card
    required property int index
    required property string day
    required property string month
    required property string title
    required property string task
    required property bool uncategorized
    required property string status
    required property bool completed
    required property string time
    required property string rating
    required property string wanders
    required property string energy
    required property string reminder
    required property string note
    required property bool noteEmpty
    required property string accessibleText
    property bool current: false
    /// The context menu is asked for at this point of the card.
    signal menuRequested(real x, real y)

    implicitHeight: layout.implicitHeight + 32
    radius: 18
    color: Theme.panel
    border.width: current ? 2 : 1
    border.color: current ? Theme.alpha(Theme.mint, 0.7) : Theme.hairline
    Accessible.role: Accessible.ListItem
    Accessible.name: accessibleText

    function openMenu(x, y) {
        menuRequested(x, y);
    }

    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: (point) => card.openMenu(point.position.x, point.position.y)
    }

    Row {
        id: layout
        x: 16
        y: 16
        width: parent.width - 32
        spacing: 16

        Column {
            id: dateBlock
            width: 40
            QuillText {
                anchors.horizontalCenter: parent.horizontalCenter
                text: card.day
                font.pixelSize: 20
                font.weight: Font.Bold
                color: Theme.primaryText
            }
            QuillText {
                anchors.horizontalCenter: parent.horizontalCenter
                text: card.month
                font.pixelSize: 9
                color: Theme.secondaryText
            }
        }

        Column {
            width: layout.width - dateBlock.width - metrics.width - 2 * layout.spacing
            spacing: 6

            Row {
                width: parent.width
                spacing: 8
                QuillText {
                    id: titleText
                    objectName: "history.card." + card.index + ".title"
                    anchors.verticalCenter: parent.verticalCenter
                    text: card.title
                    font.pixelSize: 14
                    font.weight: Font.DemiBold
                    color: Theme.primaryText
                }
                Rectangle {
                    id: chip
                    anchors.verticalCenter: parent.verticalCenter
                    readonly property color tint: card.uncategorized ? Theme.secondaryText : Theme.blue
                    // Icon, gap and padding around the name; a long name is cut, never the badge.
                    width: Math.min(taskText.implicitWidth + 27,
                                    parent.width - titleText.width - badge.width - 2 * parent.spacing)
                    height: 20
                    radius: 10
                    color: Theme.alpha(tint, 0.09)
                    Row {
                        id: chipRow
                        x: 7
                        anchors.verticalCenter: parent.verticalCenter
                        spacing: 4
                        SymbolIcon {
                            anchors.verticalCenter: parent.verticalCenter
                            name: "tag.fill"
                            size: 9
                            color: chip.tint
                        }
                        QuillText {
                            id: taskText
                            objectName: "history.card." + card.index + ".task"
                            anchors.verticalCenter: parent.verticalCenter
                            width: chip.width - 27
                            text: card.task
                            font.pixelSize: 9
                            color: chip.tint
                            elide: Text.ElideRight
                        }
                    }
                }
                Rectangle {
                    id: badge
                    anchors.verticalCenter: parent.verticalCenter
                    readonly property color tint: card.completed ? Theme.mint : Theme.amber
                    width: badgeText.implicitWidth + 14
                    height: 20
                    radius: 10
                    color: Theme.alpha(tint, 0.1)
                    QuillText {
                        id: badgeText
                        anchors.centerIn: parent
                        text: card.status
                        font.pixelSize: 9
                        font.weight: Font.Medium
                        // The light tints are too pale for 9-point text on their own wash;
                        // a deeper shade of the same hue reads at 4.5:1.
                        color: Theme.dark ? badge.tint : Qt.darker(badge.tint, 1.4)
                    }
                }
            }
            QuillText {
                text: card.time
                font.pixelSize: 11
                color: Theme.secondaryText
            }
            QuillText {
                objectName: "history.card." + card.index + ".note"
                width: parent.width
                text: card.note
                font.pixelSize: 10
                color: card.noteEmpty ? Theme.secondaryText : Theme.primaryText
                wrapMode: Text.Wrap
                maximumLineCount: 3
                elide: Text.ElideRight
            }
        }

        Row {
            id: metrics
            spacing: 18
            Repeater {
                model: [
                    { value: card.rating, label: "专注" },
                    { value: card.wanders, label: "走神" },
                    { value: card.energy, label: "精力" },
                    { value: card.reminder, label: "提示/分" }
                ]
                Column {
                    spacing: 2
                    QuillText {
                        anchors.horizontalCenter: parent.horizontalCenter
                        text: modelData.value
                        font.pixelSize: 12
                        font.weight: Font.DemiBold
                        color: Theme.primaryText
                    }
                    QuillText {
                        anchors.horizontalCenter: parent.horizontalCenter
                        text: modelData.label
                        font.pixelSize: 8
                        color: Theme.secondaryText
                    }
                }
            }
        }
    }
}
