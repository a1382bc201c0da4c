import QtQuick
import QtQuick.Window
import Quillmere

// The floating countdown: a borderless panel above other windows while the main window is
// minimised during a round. FloatingTimerController builds, shows and destroys it.
Window {
    id: panel
    required property ViewModels models
    readonly property FloatingTimerViewModel vm: models.floatingTimer
    required property FloatingTimerController controller
    // Read by the controller for the corner mask when no compositor runs.
    readonly property real radius: vm.cornerRadius
    readonly property int margin: controller && controller.composited ? 32 : 0

    objectName: "floatingTimer"
    title: "Quillmere倒计时"
    flags: Qt.Tool | Qt.FramelessWindowHint | Qt.WindowStaysOnTopHint
    color: "transparent"
    width: vm.panelWidth + 2 * margin
    height: vm.panelHeight + 2 * margin
    visible: false


    // The panel's own shadow, a few soft rounded layers (no effect module needed).
    Repeater {
        model: panel.margin > 0 ? 6 : 0
        Rectangle {
            required property int index
            readonly property real spread: vm.shadowRadius * (index + 1) / 6
            x: panel.margin - spread
            y: panel.margin - spread + vm.shadowOffset
            width: vm.panelWidth + 2 * spread
            height: vm.panelHeight + 2 * spread
            radius: vm.cornerRadius + spread
            color: Theme.alpha(vm.shadowColor, vm.shadowColor.a / 6 * (1 - index / 6))
        }
    }

    Rectangle {
        id: body
        objectName: "floatingTimer.body"
        x: panel.margin
        y: panel.margin
        width: vm.panelWidth
        height: vm.panelHeight
        radius: vm.cornerRadius
        color: vm.backgroundColor
        clip: true

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            gradient: Gradient {
                GradientStop { position: 0.0; color: Theme.alpha(Theme.mint, vm.mintWashOpacity) }
                GradientStop { position: 0.5; color: Theme.alpha(Theme.blue, 0.04) }
                GradientStop { position: 1.0; color: "transparent" }
            }
        }

        // Dragging the background moves the window through the window system.
        MouseArea {
            objectName: "floatingTimer.drag"
            anchors.fill: parent
            onPressed: panel.controller.startMove()
        }

        Item {
            id: countdown
            objectName: "floatingTimer.countdown"
            visible: vm.countdownShown
            x: 16
            width: parent.width - 32
            height: vm.signalsShown ? 104 : parent.height

            FloatingRing {
                id: ring
                objectName: "floatingTimer.ring"
                anchors.verticalCenter: parent.verticalCenter
                width: 50
                height: 50
                progress: vm.ringProgress
                tint: Theme.palette.tint(vm.statusTint)
                symbol: vm.statusSymbol
            }
            Column {
                anchors.left: ring.right
                anchors.leftMargin: 14
                anchors.verticalCenter: parent.verticalCenter
                spacing: 0
                QuillText {
                    objectName: "floatingTimer.status"
                    text: vm.statusWord
                    font.pixelSize: 10
                    font.weight: Font.DemiBold
                    color: Theme.palette.tint(vm.statusTint)
                }
                QuillText {
                    objectName: "floatingTimer.time"
                    text: vm.timeText
                    font.pixelSize: 29
                    font.weight: Font.Bold
                    color: Theme.primaryText
                }
            }
            Row {
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                spacing: 8
                FloatingIconButton {
                    objectName: "floatingTimer.round"
                    symbol: vm.roundSymbol
                    help: vm.roundHelp
                    onClicked: vm.roundAction()
                }
                FloatingIconButton {
                    objectName: "floatingTimer.restore"
                    symbol: "arrow.up.left.and.arrow.down.right"
                    help: "返回主窗口"
                    onClicked: panel.controller.restoreMainWindow()
                }
            }
        }

        Row {
            objectName: "floatingTimer.signals"
            visible: vm.signalsShown
            x: 12
            y: vm.countdownShown ? countdown.height : 0
            width: parent.width - 24
            height: 70 - (vm.countdownShown ? 12 : 0)
            spacing: 8
            FloatingSignalButton {
                objectName: "floatingTimer.wander"
                anchors.verticalCenter: parent.verticalCenter
                width: (parent.width - parent.spacing) / 2
                title: "我走神了"
                count: vm.wanderCount
                symbol: "scope"
                tint: Theme.coral
                help: vm.wanderHelp
                enabled: vm.signalsEnabled
                onClicked: vm.recordMindWander()
            }
            FloatingSignalButton {
                objectName: "floatingTimer.fatigue"
                anchors.verticalCenter: parent.verticalCenter
                width: (parent.width - parent.spacing) / 2
                title: "我开始累了"
                count: vm.fatigueCount
                symbol: "battery.25"
                tint: Theme.amber
                help: vm.fatigueHelp
                enabled: vm.signalsEnabled
                onClicked: vm.recordFatigue()
            }
        }
    }

    Rectangle {
        // The outline above the content, so nothing covers it.
        x: panel.margin
        y: panel.margin
        width: vm.panelWidth
        height: vm.panelHeight
        radius: vm.cornerRadius
        color: "transparent"
        border.width: 1
        border.color: vm.outlineColor
    }
}
