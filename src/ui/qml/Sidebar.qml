import QtQuick
import Quillmere

// Brand, the four sections, today's figures and the appearance switch.
Rectangle {
    id: sidebar
    required property ShellViewModel shell
    color: Theme.sidebarBackground

    Column {
        anchors.fill: parent
        anchors.margins: 16
        anchors.topMargin: 22
        spacing: 22

        Row {
            spacing: 11
            Rectangle {
                width: 38
                height: 38
                radius: 19
                color: Theme.alpha(Theme.mint, 0.16)
                SymbolIcon {
                    anchors.centerIn: parent
                    name: "leaf.fill"
                    size: 18
                    color: Theme.mint
                }
            }
            Column {
                anchors.verticalCenter: parent.verticalCenter
                QuillText {
                    text: "Quillmere"
                    font.pixelSize: 17
                    font.weight: Font.Bold
                    color: Theme.primaryText
                }
                QuillText {
                    text: "Quillmere"
                    font.pixelSize: Math.max(9, Theme.smallTextMinimum)
                    font.weight: Font.DemiBold
                    font.letterSpacing: 1
                    color: Theme.secondaryText
                }
            }
        }

        Column {
            width: parent.width
            spacing: 4
            Repeater {
                model: sidebar.shell.sections
                delegate: QuillButtonBase {
                    id: row
                    required property var modelData
                    required property int index
                    readonly property bool selected: sidebar.shell.selectedIndex === index
                    objectName: "sidebar.section." + modelData.key
                    width: parent.width
                    height: 44
                    text: modelData.title
                    Accessible.role: Accessible.Button
                    Accessible.name: modelData.title
                    onClicked: sidebar.shell.selectSection(index)
                    // The window opens with the keyboard on the first section, ring shown, so
                    // the first key press lands somewhere the user can see.
                    Component.onCompleted: if (index === 0) forceActiveFocus(Qt.TabFocusReason)
                    hoverEnabled: true
                    background: Rectangle {
                        radius: 13
                        color: row.selected ? Theme.palette.neutralFill(row.pressed ? 0.12 : 0.09)
                             : row.pressed ? Theme.palette.neutralFill(0.08)
                             : row.hovered ? Theme.palette.neutralFill(0.05) : "transparent"
                        FocusRing { control: row; baseRadius: 13; gap: 1 }
                    }
                    contentItem: Item {
                        SymbolIcon {
                            id: sectionIcon
                            x: 6
                            width: 27
                            height: 27
                            anchors.verticalCenter: parent.verticalCenter
                            name: row.modelData.symbol
                            size: 14
                            font.weight: Font.DemiBold
                            color: row.selected ? Theme.primaryText : Theme.secondaryText
                        }
                        QuillText {
                            anchors.left: sectionIcon.right
                            anchors.leftMargin: 8
                            anchors.verticalCenter: parent.verticalCenter
                            text: row.modelData.title
                            font.pixelSize: 14
                            font.weight: Font.DemiBold
                            color: row.selected ? Theme.primaryText : Theme.secondaryText
                        }
                        Rectangle {
                            objectName: "sidebar.activeDot"
                            visible: row.index === 0 && sidebar.shell.sessionActive
                            width: 7
                            height: 7
                            radius: 3.5
                            color: Theme.coral
                            anchors.right: parent.right
                            anchors.rightMargin: 12
                            anchors.verticalCenter: parent.verticalCenter
                        }
                    }
                }
            }
        }
    }

    Column {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: 16
        spacing: 12

        Rectangle {
            objectName: "sidebar.today"
            width: parent.width
            height: todayColumn.implicitHeight + 28
            radius: 12
            color: Theme.palette.neutralFill(0.04)
            Column {
                id: todayColumn
                anchors.fill: parent
                anchors.margins: 14
                spacing: 10
                QuillText {
                    text: "今天"
                    font.pixelSize: Math.max(10, Theme.smallTextMinimum)
                    font.weight: Font.Bold
                    font.letterSpacing: 1.2
                    color: Theme.secondaryText
                }
                Row {
                    spacing: 18
                    Repeater {
                        model: [
                            { name: "todayMinutes", value: sidebar.shell.todayMinutesValue, unit: "分钟" },
                            { name: "todaySessions", value: sidebar.shell.todaySessionsValue, unit: "轮" }
                        ]
                        delegate: Row {
                            id: metric
                            required property var modelData
                            spacing: 3
                            Accessible.role: Accessible.StaticText
                            Accessible.name: modelData.value + " " + modelData.unit
                            QuillText {
                                id: metricValue
                                objectName: "sidebar." + metric.modelData.name
                                text: metric.modelData.value
                                font.pixelSize: 20
                                font.weight: Font.Bold
                                color: Theme.primaryText
                            }
                            QuillText {
                                anchors.baseline: metricValue.baseline
                                text: metric.modelData.unit
                                font.pixelSize: Math.max(10, Theme.smallTextMinimum)
                                font.weight: Font.Medium
                                color: Theme.secondaryText
                            }
                        }
                    }
                }
                Row {
                    spacing: 5
                    SymbolIcon {
                        name: "flame.fill"
                        size: 12
                        color: Theme.amber
                        anchors.verticalCenter: parent.verticalCenter
                    }
                    QuillText {
                        objectName: "sidebar.streak"
                        text: sidebar.shell.streakLine
                        font.pixelSize: 12
                        font.weight: Font.Medium
                        color: Theme.primaryText
                    }
                }
            }
        }

        QuillButtonBase {
            id: appearanceButton
            objectName: "sidebar.appearance"
            width: parent.width
            height: 36
            leftPadding: 4
            text: sidebar.shell.appearanceLabel
            Accessible.role: Accessible.Button
            Accessible.name: text
            onClicked: sidebar.shell.toggleAppearance()
            hoverEnabled: true
            background: Rectangle {
                radius: 10
                color: appearanceButton.pressed ? Theme.palette.neutralFill(0.08)
                     : appearanceButton.hovered ? Theme.palette.neutralFill(0.05) : "transparent"
                FocusRing { control: appearanceButton; baseRadius: 10; gap: 1 }
            }
            contentItem: Row {
                spacing: 9
                Rectangle {
                    width: 27
                    height: 27
                    radius: 13.5
                    anchors.verticalCenter: parent.verticalCenter
                    color: Theme.alpha(Theme.palette.tint(sidebar.shell.appearanceTint), 0.11)
                    SymbolIcon {
                        anchors.centerIn: parent
                        name: sidebar.shell.appearanceSymbol
                        size: 13
                        color: Theme.palette.tint(sidebar.shell.appearanceTint)
                    }
                }
                QuillText {
                    anchors.verticalCenter: parent.verticalCenter
                    text: appearanceButton.text
                    font.pixelSize: 11
                    font.weight: Font.DemiBold
                    color: Theme.primaryText
                }
            }
        }
    }
}
