import QtQuick
import QtQuick.Shapes
import Quillmere

// The ring with the time, the round's metrics and the phase's controls.
QuillCard {
    id: card
    required property FocusViewModel vm
    objectName: "focus.timerCard"
    padding: 24
    implicitHeight: body.implicitHeight + 2 * padding
    readonly property color tint: Theme.palette.tint(vm.phaseTint)

    Shape {
        // A soft radial glow of the phase tint behind the ring.
        x: -card.padding
        y: -card.padding
        width: card.width
        height: card.height
        ShapePath {
            strokeWidth: -1
            fillGradient: RadialGradient {
                centerX: card.width / 2; centerY: card.padding + ringBox.height / 2
                focalX: centerX; focalY: centerY
                centerRadius: 300; focalRadius: 20
                GradientStop { position: 0.0; color: Theme.alpha(card.tint, 0.08) }
                GradientStop { position: 1.0; color: Theme.alpha(card.tint, 0.0) }
            }
            startX: 22; startY: 0
            PathLine { x: card.width - 22; y: 0 }
            PathArc { x: card.width; y: 22; radiusX: 22; radiusY: 22 }
            PathLine { x: card.width; y: card.height - 22 }
            PathArc { x: card.width - 22; y: card.height; radiusX: 22; radiusY: 22 }
            PathLine { x: 22; y: card.height }
            PathArc { x: 0; y: card.height - 22; radiusX: 22; radiusY: 22 }
            PathLine { x: 0; y: 22 }
            PathArc { x: 22; y: 0; radiusX: 22; radiusY: 22 }
        }
    }

    Column {
        id: body
        width: parent.width
        spacing: 20

        Item {
            id: ringBox
            width: parent.width
            height: 316

            ProgressRing {
                id: ring
                objectName: "focus.ring"
                anchors.centerIn: parent
                width: 316
                height: 316
                progress: card.vm.progress
                glowTint: card.tint
            }
            Column {
                anchors.centerIn: parent
                spacing: 4
                SymbolIcon {
                    objectName: "focus.phaseSymbol"
                    anchors.horizontalCenter: parent.horizontalCenter
                    name: card.vm.phaseSymbol
                    size: 18
                    color: card.tint
                }
                TimerDigits {
                    objectName: "focus.timerText"
                    anchors.horizontalCenter: parent.horizontalCenter
                    text: card.vm.timerText
                    pixelSize: 55
                    weight: Font.Bold
                    color: Theme.primaryText
                }
                QuillText {
                    objectName: "focus.timerCaption"
                    anchors.horizontalCenter: parent.horizontalCenter
                    width: Math.min(implicitWidth, 220)
                    horizontalAlignment: Text.AlignHCenter
                    elide: Text.ElideRight
                    text: card.vm.timerCaption
                    font.pixelSize: 12
                    font.weight: Font.DemiBold
                    font.letterSpacing: 1
                    color: Theme.secondaryText
                }
            }
        }

        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 28
            TimerMetric {
                objectName: "focus.metric.duration"
                symbol: "hourglass"
                title: "本轮目标"
                caption: card.vm.durationMetric
            }
            TimerMetric {
                objectName: "focus.metric.reminder"
                symbol: "bell.badge"
                title: "随机提示"
                caption: card.vm.reminderMetric
            }
            TimerMetric {
                objectName: "focus.metric.next"
                visible: card.vm.nextReminderVisible
                symbol: "eye"
                title: "下次提示"
                caption: card.vm.nextReminderText
            }
        }

        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 12
            QuillPrimaryButton {
                objectName: "focus.primary"
                width: Math.max(implicitWidth, 180)
                text: card.vm.primaryTitle
                symbol: card.vm.primarySymbol
                tint: Theme.mint
                onClicked: card.vm.primaryAction()
                onHoveredChanged: if (hovered) card.vm.preparePrimaryAction()
                onActiveFocusChanged: if (activeFocus) card.vm.preparePrimaryAction()
            }
            QuillSecondaryButton {
                objectName: "focus.end"
                visible: card.vm.endAvailable
                anchors.verticalCenter: parent.verticalCenter
                text: "结束"
                symbol: "stop.fill"
                onClicked: card.vm.requestEnd()
            }
        }
    }
}
