import QtQuick
import QtQuick.Window
import Quillmere

// The tray item's panel: the round at a glance with its main controls, and ambient sound.
Window {
    id: panel
    required property ViewModels models
    readonly property MenuBarViewModel menu: models.menuBar
    // "回到复盘": the main window comes to the front with the review.
    signal reviewWanted()
    flags: Qt.Tool | Qt.FramelessWindowHint | Qt.WindowStaysOnTopHint
    // Set by the tray item: a compositor shows the clear margin that holds the shadow.
    property bool composited: true
    // The window is the rounded panel plus, when composited, a clear margin for its shadow;
    // without a compositor the window is the panel, its corners cut by the tray item's mask.
    readonly property int shadowMargin: composited ? 14 : 0
    readonly property real radius: 14
    width: 270 + 2 * shadowMargin
    height: content.implicitHeight + 32 + 2 * shadowMargin
    visible: false
    color: "transparent"
    // Its own title, which KWin's rule for it matches (the main window's is "Quillmere").
    title: "Quillmere托盘面板"


    Rectangle {
        id: surface
        objectName: "tray.surface"
        anchors.fill: parent
        anchors.margins: panel.shadowMargin
        radius: panel.radius
        color: Theme.background
        border.width: 1
        border.color: Theme.hairline
        SoftShadow {
            visible: panel.composited
            anchors.fill: parent
            radius: parent.radius
            spread: panel.shadowMargin - 2
            offsetY: 4
        }
    }

    Column {
        id: content
        x: 16 + panel.shadowMargin
        y: 16 + panel.shadowMargin
        width: 270 - 32
        spacing: 14

        Row {
            spacing: 8
            SymbolIcon {
                anchors.verticalCenter: parent.verticalCenter
                name: menu.headerSymbol
                size: 15
                color: Theme.mint
            }
            QuillText {
                objectName: "tray.title"
                anchors.verticalCenter: parent.verticalCenter
                text: menu.title
                font.pixelSize: 14
                font.weight: Font.DemiBold
                color: Theme.primaryText
            }
        }

        Column {
            visible: menu.active
            width: parent.width
            spacing: 10
            QuillText {
                objectName: "tray.time"
                text: menu.timeLine
                font.pixelSize: 30
                font.weight: Font.Bold
                color: Theme.primaryText
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            Row {
                spacing: 8
                QuillSecondaryButton {
                    objectName: "tray.skip"
                    visible: menu.microBreak
                    text: "现在继续"
                    onClicked: menu.skipMicroBreak()
                }
                QuillSecondaryButton {
                    objectName: "tray.pause"
                    visible: !menu.microBreak
                    text: menu.pauseTitle
                    onClicked: menu.togglePause()
                }
                QuillSecondaryButton {
                    objectName: "tray.wander"
                    visible: !menu.microBreak
                    text: "我走神了"
                    onClicked: menu.recordMindWander()
                }
            }
        }

        Column {
            visible: menu.reviewPending
            width: parent.width
            spacing: 10
            Text {
                objectName: "tray.reviewCaption"
                width: parent.width
                text: "这一轮还没有复盘。"
                font.pixelSize: 11
                color: Theme.secondaryText
                wrapMode: Text.WordWrap
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            QuillPrimaryButton {
                objectName: "tray.review"
                text: "回到复盘"
                onClicked: panel.reviewWanted()
            }
        }

        Column {
            visible: !menu.active && !menu.reviewPending
            width: parent.width
            spacing: 10
            QuillText {
                width: parent.width
                text: "准备好时，开始一轮安静的专注。"
                font.pixelSize: 11
                color: Theme.secondaryText
                wrapMode: Text.WordWrap
            }
            QuillPrimaryButton {
                objectName: "tray.start"
                text: menu.startTitle
                onClicked: menu.start()
            }
        }

        Rectangle {
            width: parent.width
            height: 1
            color: Theme.hairline
        }

        Item {
            width: parent.width
            height: ambientButton.height
            Row {
                anchors.left: parent.left
                anchors.verticalCenter: parent.verticalCenter
                spacing: 7
                SymbolIcon {
                    anchors.verticalCenter: parent.verticalCenter
                    name: "waveform"
                    size: 14
                    color: Theme.mint
                }
                QuillText {
                    objectName: "tray.ambientLabel"
                    anchors.verticalCenter: parent.verticalCenter
                    text: menu.ambientLabel
                    font.pixelSize: 13
                    color: Theme.primaryText
                }
            }
            QuillSecondaryButton {
                id: ambientButton
                objectName: "tray.ambient"
                anchors.right: parent.right
                text: menu.ambientButtonTitle
                onClicked: menu.toggleAmbient()
            }
        }
    }
}
