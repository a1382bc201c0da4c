import QtQuick
import Quillmere

// Mixes the ambient sounds: status, follow-focus switch, master volume, play/pause, tiles.
QuillCard {
    id: card
    required property ViewModels models
    readonly property SettingsBridge settings: models.settingsBridge
    objectName: "ambient.card"
    padding: 18
    implicitHeight: body.implicitHeight + 2 * padding

    readonly property AmbientCardViewModel ambient: models.ambientCard
    WindowShown { id: windowShown; window: card.Window.window }
    // The play button and every tile can start the sound.
    HoverHandler { onHoveredChanged: if (hovered) ambient.prepare() }

    Column {
        id: body
        width: parent.width
        spacing: 16

        // The header is split over two lines: a 350-point column cannot hold it in one.
        Column {
            width: parent.width
            spacing: 12
            Item {
                width: parent.width
                height: 42
                Rectangle {
                    id: badge
                    width: 42
                    height: 42
                    radius: 21
                    color: Theme.alpha(Theme.mint, 0.12)
                    SymbolIcon {
                        id: wave
                        objectName: "ambient.waveform"
                        anchors.centerIn: parent
                        name: "waveform"
                        size: 17
                        font.weight: Font.DemiBold
                        color: Theme.mint
                        // Stepped brightness stands in for the iterative variable-colour
                        // effect while playing: a few repaints a second of a small glyph, not a
                        // 60 fps animation (which cost 6 % of a core in the software renderer).
                        // Only while someone can see it: a minimised or covered window
                        // draws nothing, and the timer would still wake the app.
                        property bool pulsing: ambient.playing && card.visible && windowShown.shown
                        property int pulseStep: 0
                        opacity: ambient.playing ? [1.0, 0.72, 0.45, 0.72][pulseStep] : 1.0
                        Timer {
                            interval: 280
                            repeat: true
                            running: wave.pulsing && Theme.motion > 0
                            onTriggered: wave.pulseStep = (wave.pulseStep + 1) % 4
                            onRunningChanged: wave.pulseStep = 0
                        }
                    }
                }
                Column {
                    anchors.left: badge.right
                    anchors.leftMargin: 14
                    anchors.right: playButton.left
                    anchors.rightMargin: 10
                    anchors.verticalCenter: parent.verticalCenter
                    spacing: 4
                    QuillText {
                        text: "环境音"
                        font.pixelSize: 15
                        font.weight: Font.Bold
                        color: Theme.primaryText
                    }
                    QuillText {
                        id: ambientStatus
                        objectName: "ambient.status"
                        width: parent.width
                        text: ambient.statusText
                        font.pixelSize: 11
                        color: Theme.secondaryText
                        elide: Text.ElideRight
                        maximumLineCount: 1
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                        // Cut to one line; hovering it shows the whole line.
                        HoverHandler { id: statusHover; enabled: ambientStatus.truncated }
                        QuillToolTip { text: ambientStatus.text; shown: statusHover.hovered }
                    }
                }
                QuillSecondaryButton {
                    id: playButton
                    objectName: "ambient.play"
                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    width: Math.max(implicitWidth, 62)
                    text: ambient.playTitle
                    symbol: ambient.playSymbol
                    onClicked: ambient.togglePlayback()
                    onActiveFocusChanged: if (activeFocus) ambient.prepare()
                }
            }
            Item {
                width: parent.width
                height: 20
                QuillSwitch {
                    objectName: "ambient.follow"
                    anchors.left: parent.left
                    anchors.verticalCenter: parent.verticalCenter
                    text: "随专注播放"
                    checked: card.settings.ambientFollowsFocus
                    onToggled: card.settings.ambientFollowsFocus = checked
                    QuillToolTip {
                        text: "开始专注时自动播放，暂停、结束或放弃时自动停下"
                        shown: parent.hovered
                    }
                }
                Row {
                    id: masterGroup
                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    spacing: 6
                    HoverHandler { id: masterHover }
                    QuillToolTip { text: "环境音总音量"; shown: masterHover.hovered }
                    SymbolIcon {
                        anchors.verticalCenter: parent.verticalCenter
                        name: "speaker.fill"
                        size: 9
                        color: Theme.secondaryText
                    }
                    QuillSlider {
                        objectName: "ambient.master"
                        width: 92
                        anchors.verticalCenter: parent.verticalCenter
                        value: card.settings.ambientMasterVolume
                        Accessible.name: "环境音总音量"
                        onMoved: card.settings.ambientMasterVolume = value
                    }
                    SymbolIcon {
                        anchors.verticalCenter: parent.verticalCenter
                        name: "speaker.wave.2.fill"
                        size: 9
                        color: Theme.secondaryText
                    }
                }
            }
        }

        Grid {
            id: grid
            width: parent.width
            columns: 4
            columnSpacing: 10
            rowSpacing: 10
            Repeater {
                model: ambient.tiles
                delegate: AmbientTile {
                    width: (grid.width - 3 * grid.columnSpacing) / 4
                    card: ambient
                }
            }
        }
    }
}
